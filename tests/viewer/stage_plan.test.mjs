// Finds the parts of a body whatever its joints are called, and shapes it.
import { strict as assert } from "node:assert";
import { test } from "node:test";
import { load } from "./bundle.mjs";
import { PERSON, people, poseOf, skeletonOf } from "./skeletons.mjs";

const { planBody, divide } = await load("stage/body_plan.ts");
const { frameOf } = await load("stage/bind_pose.ts");
const { shapeBody } = await load("stage/body_mesh.ts");
const { shapeBones, shapeJoints } = await load("stage/bones_mesh.ts");

const index = (name) => PERSON.findIndex(([joint]) => joint === name);

for (const [naming, skeleton] of people()) {
  test(`plan of a person with ${naming}`, () => {
    const plan = planBody(skeleton);
    assert.ok(plan, "a person");
    assert.equal(plan.pelvis, index("hips"));
    assert.equal(plan.chest, index("chest"));
    assert.deepEqual(plan.trunk, ["hips", "spine", "chest"].map(index));
    assert.deepEqual(plan.neck, ["neck", "head"].map(index));
    const paths = (limbs) => limbs.map((limb) => limb.path).sort((a, b) => a[0] - b[0]);
    assert.deepEqual(paths(plan.legs), [["Lthigh", "Lshin", "Lfoot"], ["Rthigh", "Rshin", "Rfoot"]].map((way) => way.map(index)));
    assert.deepEqual(paths(plan.arms), [["Lupper", "Lfore", "Lhand"], ["Rupper", "Rfore", "Rhand"]].map((way) => way.map(index)));
  });

  test(`measures of a person with ${naming}`, () => {
    const frame = frameOf(skeleton, planBody(skeleton));
    assert.ok(Math.abs(frame.height - 1.7) < 0.1, `height ${frame.height}`);
    // The toes point along z, so that left is x.
    assert.ok(frame.forward.z > 0.99 && frame.left.x > 0.99 && frame.up.y > 0.99);
    assert.ok(Math.abs(frame.shoulderWidth - 0.34) < 1e-6 && Math.abs(frame.hipWidth - 0.18) < 1e-6);
  });

  test(`shapes of a person with ${naming}`, () => {
    const plan = planBody(skeleton);
    for (const shape of [shapeBody(skeleton, plan), shapeBones(skeleton), shapeJoints(skeleton)]) checkShape(skeleton, shape);
    const { geometry } = shapeBody(skeleton, plan);
    geometry.computeBoundingBox();
    const { min, max } = geometry.boundingBox;
    assert.ok(Math.abs(min.y) < 0.03, `stands at ${min.y}`);
    assert.ok(max.y > 1.66 && max.y < 1.78, `is ${max.y} tall`);
    assert.ok(max.x > 0.8 && min.x < -0.8, "its hands are spread");
  });
}

function checkShape(skeleton, { geometry }) {
  for (const name of ["position", "normal", "skinWeight"])
    assert.ok(geometry.getAttribute(name).array.every(Number.isFinite), `${name} has numbers only`);
  const joints = geometry.getAttribute("skinIndex");
  const weights = geometry.getAttribute("skinWeight");
  for (let vertex = 0; vertex < joints.count; ++vertex) {
    assert.ok(joints.getX(vertex) < skeleton.names.length && joints.getY(vertex) < skeleton.names.length);
    assert.ok(Math.abs(weights.getX(vertex) + weights.getY(vertex) - 1) < 1e-6);
  }
}

const horse = [
  ["hips", null, [0, 1, 0]],
  ["spine", "hips", [0, 1, 0.8]],
  ["head", "spine", [0, 1.4, 1.2]],
  ...["L", "R"].flatMap((side, at) => [
    [`${side}thigh`, "hips", [0.2 - 0.4 * at, 1, 0]],
    [`${side}foot`, `${side}thigh`, [0.2 - 0.4 * at, 0, 0]],
    [`${side}frontLeg`, "spine", [0.2 - 0.4 * at, 1, 0.8]],
    [`${side}frontFoot`, `${side}frontLeg`, [0.2 - 0.4 * at, 0, 0.8]],
  ]),
];
const others = [
  ["a single joint", [["root", null, [0, 0, 0]]]],
  ["joints in one place", ["a", "b", "c"].map((name, at) => [name, at === 0 ? null : "a", [1, 1, 1]])],
  ["a chain", ["a", "b", "c", "d"].map((name, at, all) => [name, all[at - 1] ?? null, [0, at, 0]])],
  ["an animal", horse],
  ["two trees", [["a", null, [0, 0, 0]], ["b", null, [1, 0, 0]], ["c", "b", [1, 1, 0]]]],
];
for (const [what, rows] of others)
  test(`${what} is no person, but has shapes`, () => {
    const skeleton = skeletonOf(rows, { sideOf: (name) => ({ L: "left", R: "right" })[name[0]] ?? "middle" });
    assert.equal(planBody(skeleton), null);
    for (const shape of [shapeBody(skeleton, null), shapeBones(skeleton), shapeJoints(skeleton)]) {
      checkShape(skeleton, shape);
      assert.ok(shape.geometry.getAttribute("position").count > 0);
    }
  });

test("a base pose that is a heap of bones is not used", () => {
  const [[, skeleton]] = people();
  skeleton.poses[0] = poseOf(PERSON.map((_, joint) => [0, 0.1 * joint, 0]));
  const frame = frameOf(skeleton, planBody(skeleton));
  assert.ok(Math.abs(frame.shoulderWidth - 0.34) < 1e-6);
});

test("a person whose limbs have no length still has numbers only", () => {
  const [[, skeleton]] = people();
  const flat = poseOf(PERSON.map(([name, , place]) => (/hand|fore|shin|foot|toe/.test(name) ? [place[0], 1.2, 0] : place)));
  skeleton.poses = [flat, flat];
  checkShape(skeleton, shapeBody(skeleton, planBody(skeleton)));
});

const divisions = [
  ["upper and lower part", [0, 4, 4], { start: 0, middle: 1 }],
  ["a girdle before them", [0, 1, 4, 4], { start: 1, middle: 2 }],
  ["a long collar", [0, 1.5, 2.8, 2.6], { start: 1, middle: 2 }],
  ["parts of two bones", [0, 2, 2, 2, 2], { start: 0, middle: 2 }],
  ["one bone", [0, 3], { start: 0, middle: -1 }],
];
for (const [what, lengths, expected] of divisions)
  test(`divides a way: ${what}`, () => assert.deepEqual(divide(lengths.map((_, at) => at), lengths), expected));

// Ways to an ankle or wrist with the lengths of their bones, and the upper and lower part that are meant.
const named = [
  ["a null above the thigh", ["__UpLeg_L", "UpLeg_L", "LoLeg_L", "Foot_L"], [0, 1, 4, 4], ["UpLeg_L", "LoLeg_L"]],
  ["long hip joints", ["rhipjoint", "rfemur", "rtibia", "rfoot"], [0, 1, 3.9, 4.4], ["rfemur", "rtibia"]],
  ["a buttock", ["lButtock", "lThigh", "lShin", "lFoot"], [0, 1.2, 3.8, 4.5], ["lThigh", "lShin"]],
  ["halves of bones", ["pelvis.L", "upperleg01.L", "upperleg02.L", "lowerleg01.L", "lowerleg02.L", "foot.L"], [0, 1, 2, 2, 2, 2], ["upperleg01.L", "lowerleg01.L"]],
];
for (const [what, names, lengths, expected] of named)
  test(`divides a leg with ${what}`, () => {
    const places = lengths.map((_, at) => [0.1, 1 - lengths.slice(0, at + 1).reduce((sum, length) => sum + length, 0) / 10, 0]);
    const leg = (mirror) => names.map((name, at) => [mirror + name, at === 0 ? "hips" : mirror + names[at - 1], [mirror ? -places[at][0] : places[at][0], places[at][1], 0]]);
    const rows = [...PERSON.filter(([name]) => !/hipJoint|thigh|shin|foot|toe/.test(name)), ...leg(""), ...leg("+")];
    const sides = (name) => (/^L|^(?!R|\+|hips|spine|chest|neck|head)/.test(name) ? "left" : /^[R+]/.test(name) ? "right" : "middle");
    const skeleton = skeletonOf(rows, { sideOf: sides });
    const { path, middle } = planBody(skeleton).legs[0];
    assert.deepEqual([path[0], path[middle]].map((joint) => skeleton.names[joint].replace("+", "")), expected);
  });
