// The curves of a joint over all frames.
import assert from "node:assert/strict";
import test from "node:test";
import { load } from "./bundle.mjs";
import { makeTake } from "./ui_takes.mjs";

const { computeTrack, speedsOf, Tracks } = await load("data/track.ts");
const { Pose, TRANSFORM } = await load("data/pose.ts");

const near = (actual, expected, what) => {
  assert.equal(actual.length, expected.length, what);
  expected.forEach((value, index) => assert.ok(Math.abs(actual[index] - value) < 1e-5, `${what}: ${[...actual]}`));
};

/** An arm of two bones beside a leg; the hips move along x and turn about z. */
function arm() {
  const values = new Array(24).fill(0);
  values[6] = 1; // the elbow is 1 away from the hips, along x
  values[12] = 5; // the leg is not on the way to the hand
  values[18] = 2; // the hand is 2 away from the elbow
  return makeTake({
    joints: [
      ["Hips", -1],
      ["Elbow", 0],
      ["Leg", 0],
      ["Hand", 1],
    ],
    frames: 3,
    values,
    curves: { 0: [0, 10, 20], 5: [0, 90, 0], 11: [0, 0, 90] },
  });
}

test("a joint's place follows from the joints above it", () => {
  const { place, angles } = computeTrack(arm(), 3);
  near(place[0], [3, 10, 21], "x");
  near(place[1], [0, 3, 2], "y");
  near(place[2], [0, 0, 0], "z");
  near(angles[2], [0, 0, 0], "angles of the hand");
  near(computeTrack(arm(), 1).angles[2], [0, 0, 90], "angles of the elbow");
});

test("the places are those of the whole pose", () => {
  const take = arm();
  const pose = new Pose(take);
  take.joints.forEach((joint) => {
    const { place } = computeTrack(take, joint.index);
    for (let row = 0; row < take.frames; ++row)
      for (let axis = 0; axis < 3; ++axis)
        assert.ok(Math.abs(place[axis][row] - pose.at(row)[TRANSFORM * joint.index + 4 * axis + 3]) < 1e-5);
  });
});

test("the speed is measured over the frames before and after", () => {
  const along = (...values) => [
    Float32Array.from(values),
    new Float32Array(values.length),
    new Float32Array(values.length),
  ];
  for (const [places, fps, expected] of [
    [along(0, 1, 2, 3), 10, [10, 10, 10, 10]],
    [along(0, 0, 4), 10, [0, 20, 40]],
    [along(0, -3), 2, [6, 6]],
    [along(7), 0, [0]],
  ])
    near(speedsOf(places, fps), expected, `${[...places[0]]}`);
});

test("the curves that were asked for last are kept while they fit", () => {
  const take = arm();
  const bytes = 7 * 4 * take.frames;
  for (const [mostBytes, isKept] of [
    [2 * bytes, [true, true, false]],
    [3 * bytes - 1, [true, true, false]],
    [3 * bytes, [true, true, true]],
    [0, [true, false, false]],
  ]) {
    // The first joint that is asked for again is the one that was asked for last.
    const tracks = new Tracks(mostBytes);
    const first = [0, 1, 2].map((joint) => tracks.of(take, 0, joint));
    const again = isKept.map((_, back) => tracks.of(take, 0, 2 - back) === first[2 - back]);
    assert.deepEqual(again, isKept, `${mostBytes} bytes`);
  }
});

test("curves that were computed are kept", () => {
  const tracks = new Tracks();
  const take = arm();
  assert.equal(tracks.of(take, 0, 3), tracks.of(take, 0, 3));
  assert.notEqual(tracks.of(take, 0, 3), tracks.of(take, 1, 3));
});
