// Figures of thousands of joints, which must not keep the page waiting.
import { strict as assert } from "node:assert";
import { test } from "node:test";
import { load } from "./bundle.mjs";
import { PERSON, poseOf, skeletonOf } from "./skeletons.mjs";

const { planBody, isLarge } = await load("stage/body_plan.ts");
const { shapeBody } = await load("stage/body_mesh.ts");
const { shapeSticks } = await load("stage/sticks_mesh.ts");

const LOOKS = ["body", "bones", "joints"];

function tree(count, parentOf, placeOf = (joint) => [joint % 7, joint % 11, joint % 13]) {
  const all = Array.from({ length: count }, (_, joint) => joint);
  const parents = all.map((joint) => (joint === 0 ? -1 : parentOf(joint)));
  const children = all.map(() => []);
  parents.forEach((parent, joint) => parent >= 0 && children[parent].push(joint));
  const pose = poseOf(all.map(placeOf));
  return {
    names: all.map((joint) => `foot${joint}`),
    parents,
    children,
    isEnd: all.map(() => false),
    sides: all.map((joint) => ["middle", "left", "right"][joint % 3]),
    poses: [pose, pose],
  };
}

const trees = [
  ["a chain", tree(5000, (joint) => joint - 1)],
  ["a star", tree(5000, () => 0)],
  ["a bush", tree(5000, (joint) => (joint - 1) >> 1)],
  ["single joints", tree(5000, () => -1)],
  ["joints in one place", tree(5000, () => 0, () => [1, 1, 1])],
  ["more joints than 16 bits count", tree(70000, () => 0)],
];
for (const [what, skeleton] of trees)
  test(`a large figure: ${what}`, () => {
    assert.ok(isLarge(skeleton));
    assert.equal(planBody(skeleton), null);
    for (const look of LOOKS) {
      const { geometry } = shapeSticks(skeleton, look);
      const position = geometry.getAttribute("position");
      assert.ok(position.count > 0 && position.count < 60 * skeleton.names.length, `${position.count} corners`);
      assert.ok(position.array.every(Number.isFinite));
      const joints = geometry.getAttribute("skinIndex").array;
      assert.equal(joints.reduce((most, joint) => Math.max(most, joint), 0), skeleton.names.length - 1);
    }
  });

test("a person is not large", () => assert.ok(!isLarge(skeletonOf(PERSON))));

// Each hand and a tail have hundreds of joints, in ways that fork and in one long way.
test("a person with very many joints has a plan and a shape", () => {
  const rows = [...PERSON];
  for (const hand of ["Lhand", "Rhand"])
    for (let finger = 0; finger < 150; ++finger) {
      const x = (hand === "Lhand" ? 1 : -1) * 0.8;
      rows.push([`${hand}a${finger}`, hand, [x, 1.4, finger / 3000]]);
      rows.push([`${hand}b${finger}`, `${hand}a${finger}`, [1.05 * x, 1.4, finger / 3000]]);
      rows.push([`${hand}c${finger}`, `${hand}b${finger}`, [1.1 * x, 1.4, finger / 3000]]);
    }
  for (let joint = 0; joint < 900; ++joint)
    rows.push([`tail${joint}`, joint === 0 ? "hips" : `tail${joint - 1}`, [0, 0.95, -joint / 900]]);
  const skeleton = skeletonOf(rows, { rename: (name) => `joint ${rows.findIndex(([row]) => row === name)}` });
  const plan = planBody(skeleton);
  assert.deepEqual(plan && [plan.pelvis, plan.chest].map((joint) => rows[joint][0]), ["hips", "chest"]);
  const { geometry } = shapeBody(skeleton, plan);
  geometry.computeBoundingBox();
  assert.ok(geometry.boundingBox.min.z < -0.9, "the tail is shown as far as it goes");
});
