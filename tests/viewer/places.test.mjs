// Pages have the numbers of .npz.
import { strict as assert } from "node:assert";
import { after, before, test } from "node:test";
import { assertQuiet, openBrowser, openTake } from "./browser.mjs";
import { Captures } from "./captures.mjs";
import { readNpz, textsOf } from "./npz.mjs";

const captures = new Captures(process.env.ZKHOST, process.env.EXAMPLES, process.env.PAGES);
let browser;
before(async () => (browser = await openBrowser()));
after(() => browser.close());

/** The diagonal of the box around all joints in the first frame. */
function sizeOf(positions, joints) {
  const sides = [0, 1, 2].map((axis) => {
    const values = Array.from({ length: joints }, (_, joint) => positions[3 * joint + axis]);
    return Math.max(...values) - Math.min(...values);
  });
  return Math.hypot(...sides);
}

function greatestDifference(a, b) {
  assert.equal(a.length, b.length);
  return a.reduce((worst, value, index) => Math.max(worst, Math.abs(value - b[index])), 0);
}

for (const [name, words] of captures.samples)
  test(`${name} has its positions in 20 frames`, async () => {
    const path = captures.page(name, words, [".npz"]);
    const arrays = readNpz(path.replace(/html$/, "npz"));
    const [frames, joints] = arrays.positions.shape;
    const opened = await openTake(browser, path);
    const facts = await opened.page.evaluate(() => ({ names: take.names, frames: take.frames, fps: take.fps }));
    assert.deepEqual(facts, { names: textsOf(arrays.names), frames, fps: arrays.fps.data[0] });
    const size = sizeOf(arrays.positions.data, joints);
    for (let sample = 0; sample < 20; ++sample) {
      const frame = Math.round((sample * (frames - 1)) / 19);
      const shown = await opened.page.evaluate((each) => (take.goTo(each), [...take.positions()]), frame);
      const wanted = arrays.positions.data.subarray(3 * joints * frame, 3 * joints * (frame + 1));
      assert.ok(greatestDifference(shown, wanted) <= 1e-5 * size, `frame ${frame}`);
    }
    assertQuiet(opened);
    await opened.close();
  });

test("frames outside the take are its first and its last", async () => {
  const opened = await openTake(browser, captures.page("ends", [captures.walk]));
  const at = (frame) => opened.page.evaluate((each) => (take.goTo(each), [...take.positions()]), frame);
  assert.deepEqual(await at(-5), await at(0));
  assert.deepEqual(await at(1e9), await at(256));
  assert.deepEqual(await at(3.4), await at(3));
  assert.deepEqual(await opened.page.evaluate(() => (take.goTo(NaN), [...take.positions()])), await at(0));
  await opened.close();
});

test("takes run in step, by seconds", async () => {
  const page = captures.together([captures.path("fast.bvh"), captures.path("slow.bvh")]);
  const opened = await openTake(browser, page);
  // Both take three seconds. The hip of the first moves by a unit in 0.05 seconds, that of the second in 0.1.
  const hips = await opened.page.evaluate(() => {
    takes[0].goTo(40);
    return takes.map((each) => each.positions()[2]);
  });
  assert.deepEqual(hips, [40, 20]);
  assert.deepEqual(await opened.page.evaluate(() => takes.map((each) => each.frames)), [60, 30]);
  assert.equal(await opened.page.evaluate(() => window.take === window.takes[0]), true);
  assertQuiet(opened);
  await opened.close();
});
