// What needs no picture: where the camera stands, what is under the pointer, where the ground is.
import { strict as assert } from "node:assert";
import { test } from "node:test";
import { load } from "./bundle.mjs";

const names = ["framing", "picking", "space", "scenery", "ground", "labels", "quality", "chain"];
const stage = Object.assign({}, ...(await Promise.all(names.map((name) => load(`stage/${name}.ts`)))));

const dot = (a, b) => a[0] * b[0] + a[1] * b[1] + a[2] * b[2];
const cloud = Array.from({ length: 60 }, (_, at) => Math.sin(at * at) * (1 + (at % 3)));
const aims = [
  ["from the front", { azimuth: 0, elevation: 0 }],
  ["from the side", { azimuth: -Math.PI / 2, elevation: 0.1 }],
  ["from above", { azimuth: 2, elevation: 1.57 }],
  ["as at first", { azimuth: 0.6, elevation: 0.24 }],
];
const lenses = [
  ["a wide picture", { tanX: 0.5, tanY: 0.25 }],
  ["a phone", { tanX: 0.12, tanY: 0.25 }],
];
for (const [view, aim] of aims)
  for (const [what, lens] of lenses)
    test(`${what} ${view} shows all points, and no more`, () => {
      const { place } = stage.frame(cloud, aim, lens);
      const axes = stage.cameraAxes(aim);
      let fullest = 0;
      for (let at = 0; at < cloud.length; at += 3) {
        const away = [0, 1, 2].map((axis) => cloud[at + axis] - place[axis]);
        const [x, y, z] = axes.map((axis) => dot(axis, away));
        assert.ok(z < 1e-9);
        const [across, along] = [Math.abs(x) / -z / lens.tanX, Math.abs(y) / -z / lens.tanY];
        assert.ok(across < 1 + 1e-9 && along < 1 + 1e-9);
        fullest = Math.max(fullest, across, along);
      }
      assert.ok(fullest > 1 - 1e-9);
    });

test("the axes of a camera are a right-handed frame", () => {
  const [x, y, z] = stage.cameraAxes({ azimuth: 0.7, elevation: 0.3 });
  for (const [a, b] of [[x, y], [y, z], [z, x]]) assert.ok(Math.abs(dot(a, b)) < 1e-12);
  const cross = [x[1] * y[2] - x[2] * y[1], x[2] * y[0] - x[0] * y[2], x[0] * y[1] - x[1] * y[0]];
  cross.forEach((value, axis) => assert.ok(Math.abs(value - z[axis]) < 1e-12));
});

// A shoulder, an elbow and a hand with its end site; a joint of another figure, which is farther away; and a joint that
// the camera does not see, because the camera looks away from it.
const arm = { parents: [-1, 0, 1, 2], isEnd: [false, false, false, true], screen: [100, 100, 5, 200, 100, 5, 300, 100, 5, 340, 100, 5], thickness: 50 };
const behind = { parents: [-1, 0], isEnd: [false, false], screen: [100, 104, 9, 200, 160, 9], thickness: 50 };
const unseen = { parents: [-1], isEnd: [false], screen: [50, 50, -2], thickness: 50 };
const clicks = [
  ["on a joint", [200, 100], { target: 0, joint: 1 }],
  ["near the first half of a bone", [130, 108], { target: 0, joint: 0 }],
  ["near its second half", [170, 108], { target: 0, joint: 1 }],
  ["on an end site", [340, 100], { target: 0, joint: 2 }],
  ["on the figure behind", [195, 158], { target: 1, joint: 1 }],
  ["on nothing", [250, 300], null],
  ["where a joint is behind the camera", [50, 50], null],
];
for (const [what, [x, y], expected] of clicks)
  test(`a click ${what}`, () => assert.deepEqual(stage.pick([arm, behind, unseen], x, y, 9), expected));

// The take's own up direction points up in the picture, and the turn is no mirror.
for (const up of ["x", "y", "z"])
  test(`${up} points up`, () => {
    const space = stage.spaceOf({ up }, 2);
    const world = Float64Array.from([1, 0, 0, 3, 0, 1, 0, 4, 0, 0, 1, 5]);
    const out = new Float64Array(12);
    stage.placeInSpace(space, world, 0, out, 0);
    assert.equal(out[7], 2 * { x: 3, y: 4, z: 5 }[up]);
    const column = (at) => [out[at], out[4 + at], out[8 + at]];
    const [a, b, c] = [0, 1, 2].map(column);
    assert.equal(dot([a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]], c), 1);
  });

const grounds = [
  ["feet at 0", [0.01, 0.02, 0.03], 0],
  ["feet a little below 0", [-0.05, 0, 0], 0],
  ["a stage above 0", [1, 1.1, 1.05], 1],
  ["one frame far below", [0, -9, ...Array(20).fill(0.01)], 0],
];
for (const [what, lowest, expected] of grounds)
  test(`the ground with ${what}`, () => assert.equal(stage.groundHeight(lowest, 1.75), expected));

for (const [numbers, expected] of [[[], 0], [[3], 3], [[10, 9, 2], 9], [[4, 1, 2, 3], 3]])
  test(`the median of ${numbers.join(" ") || "nothing"}`, () => assert.equal(stage.median(numbers), expected));

const cells = [
  ["no unit", 0, 0],
  ["a person in metres", 1, 1],
  ["a mouse", 17, 0.1],
  ["a tower", 0.017, 100],
];
for (const [what, metre, expected] of cells)
  test(`cells of the grid for ${what}`, () => {
    const { cell, metres } = stage.gridCell(metre);
    assert.ok(Math.abs(metres - expected) < 1e-12);
    assert.ok(cell > 0.25 && cell < 4.5);
  });

for (const [count, expected] of [[3, 1], [14, 1], [20, 2], [60, 5], [130, 10], [1000, 100]])
  test(`${count} cells have a number at each ${expected}`, () => assert.equal(stage.labelStep(count), expected));

for (const count of [Infinity, NaN]) test(`${count} cells have numbers too`, () => assert.equal(stage.labelStep(count), 1));

const numbered = [
  ["each cell", [-1, 2, 0, 1], [-1, 0, 1, 2]],
  ["each second cell", [-3, 3, 0, 2], [-2, 0, 2]],
  ["an origin elsewhere", [-3, 12, 7, 5], [-2, 3, 8]],
  ["an origin far away", [-1, 12, 1e12, 5], [0, 5, 10]],
  ["an origin where numbers are not exact", [-1, 12, 1e300, 5], []],
  ["no finite cells", [NaN, 1, 0, 1], []],
];
for (const [what, region, expected] of numbered)
  test(`numbers of the grid with ${what}`, () => assert.deepEqual(stage.numberedCells(...region), expected));

// Figures of several sizes, in metres, that begin somewhere: the picture's origin is where lines of the grid cross.
const beginnings = [
  ["a person", 1.75, 3.3, 3],
  ["a tower", 40, 237, 24],
  ["a mouse", 0.1, 0.237, 2],
  ["figures without a unit", 1.75, 3.3, 8, 0],
];
for (const [what, height, x, cells, unit = 1] of beginnings)
  test(`whole cells of the grid move ${what} into the picture`, () => {
    const joint = (index, model = 0) => ({ index, model, parent: index - 1 });
    const take = { joints: [joint(0), joint(1)], models: ["figure"], unit, up: "y" };
    const world = new Float64Array(24);
    for (const at of [3, 15]) world[at] = x;
    world[19] = height;
    const { origin, spaces, grid } = stage.arrange([take], [{ rows: [0], worlds: [world] }]);
    assert.deepEqual(origin, [cells, 0]);
    assert.ok(Math.abs(spaces[0].offset[0] + cells * grid.cell) < 1e-9);
    assert.ok(Math.abs(spaces[0].scale * x + spaces[0].offset[0]) <= grid.cell / 2 + 1e-9);
  });

test("the lines of the grid end on a circle", () => {
  const points = stage.gridLines(4);
  for (let at = 0; at < points.length; at += 3) assert.ok(Math.abs(Math.hypot(points[at], points[at + 2]) - 4) < 1e-5);
});

test("the numbers lie around what happens", () =>
  assert.deepEqual(stage.regionOf([-0.5, 0, 0.2, 3.1, 1, 2.5], 1), { minX: -1, maxX: 3, minZ: 0, maxZ: 3 }));

const remote = [
  ["a place very far away", [1e12, 0, -1e12]],
  ["a place that is no number", [NaN, 0, 1]],
  ["a place without end", [0, 0, Infinity]],
];
for (const [what, place] of remote)
  test(`the numbers leave out ${what}`, () => {
    assert.deepEqual(stage.regionOf([0.2, 0, 0.2, ...place, 3.1, 1, 2.5], 1), { minX: 0, maxX: 3, minZ: 0, maxZ: 3 });
    assert.deepEqual(stage.regionOf(place, 1), { minX: 0, maxX: 1, minZ: 0, maxZ: 1 });
  });

// Each picture: milliseconds since the one before it, and how long it was wanted; 0 if it is not measured.
const steady = (count, gap) => Array(count).fill([gap, gap]);
const histories = [
  ["quick pictures", steady(40, 16), 0],
  ["four slow pictures in a row", [...steady(9, 16), ...steady(4, 60), ...steady(1, 16), ...steady(4, 60), ...steady(1, 16)], 0],
  ["the first pictures, which may be slow", [[500, 500], [400, 400], [300, 300], ...steady(9, 16)], 0],
  ["five slow pictures", [...steady(5, 16), ...steady(5, 60)], 1],
  ["five very slow pictures", [...steady(5, 16), ...steady(5, 3000)], 1],
  ["slow pictures that go on", steady(40, 60), 2],
  ["pictures now and then", Array(40).fill([400, 0]), 0],
  ["a drag with rests of the hand", Array(40).fill([400, 16]), 0],
  ["a slow drag", [...steady(5, 16), ...Array(5).fill([70, 55])], 1],
  ["moves from before the last picture", Array(40).fill([40, 70]), 0],
];
for (const [what, pictures, expected] of histories)
  test(`quality after ${what}`, () => {
    const quality = new stage.Quality();
    let now = 0;
    quality.note(now);
    for (const [gap, wanted] of pictures) {
      now += gap;
      if (wanted > 0) quality.want(now - wanted);
      quality.note(now);
    }
    assert.equal(quality.simplification, expected);
  });

test("a page that was hidden is not slow", () => {
  const quality = new stage.Quality();
  for (let now = 0; now < 200000; now += 5000) {
    quality.note(now);
    quality.want(now);
    quality.forget();
  }
  assert.equal(quality.simplification, 0);
});

test("the first of several moves counts", () => {
  const quality = new stage.Quality();
  for (let now = 0; now < 800; now += 80) {
    quality.note(now);
    quality.want(now + 10);
    quality.want(now + 70);
  }
  assert.equal(quality.simplification, 1);
});

test("a table is a curve through its rows", () => {
  const table = [[0, 1], [0.5, 3], [1, 2]];
  for (const [at, value] of table) assert.ok(Math.abs(stage.interpolate(table, at) - value) < 1e-12);
  assert.equal(stage.interpolate(table, 9), 2);
});
