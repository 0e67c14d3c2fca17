// What a plot shows of curves with many values.
import assert from "node:assert/strict";
import test from "node:test";
import { load } from "./bundle.mjs";

const { columnsOf, plotRange, rangeOf } = await load("ui/columns.ts");
const curve = (...values) => Float32Array.from(values);

test("the range covers all finite values", () => {
  for (const [curves, expected] of [
    [[curve(1, 3, -2)], { low: -2, high: 3 }],
    [[curve(1), curve(5, NaN), curve(-Infinity, 0)], { low: 0, high: 5 }],
    [[curve()], null],
    [[curve(NaN)], null],
  ])
    assert.deepEqual(rangeOf(curves), expected);
});

test("a still curve is drawn in the middle", () => {
  assert.deepEqual(plotRange({ low: 3, high: 3 }, 1), { low: 2.5, high: 3.5 });
  assert.deepEqual(plotRange({ low: 0, high: 4 }, 1), { low: 0, high: 4 });
});

test("each column has the lowest and the highest value", () => {
  const { low, high } = columnsOf(curve(0, 9, 2, 3, -4, 5, 6, 7), 4);
  // A column begins with the last value of the one before it.
  assert.deepEqual([...low], [0, 2, -4, 5]);
  assert.deepEqual([...high], [9, 9, 5, 7]);
});

test("no value of a long curve is lost", () => {
  const values = Float32Array.from({ length: 10007 }, (_, row) => (row === 6789 ? 100 : row === 10006 ? -100 : 0));
  for (const count of [1, 7, 244, 5000]) {
    const { low, high } = columnsOf(values, count);
    assert.equal(Math.max(...high), 100, `${count}`);
    assert.equal(Math.min(...low), -100, `${count}`);
  }
});
