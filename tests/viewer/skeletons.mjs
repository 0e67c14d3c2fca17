// Skeletons for tests: a person of 1.7 metres in several namings.

// Joint, parent, place. "L" and "R" begin the names of sides.
const PERSON = [
  ["hips", null, [0, 0.95, 0]],
  ["LhipJoint", "hips", [0, 0.95, 0]],
  ["Lthigh", "LhipJoint", [0.09, 0.91, 0]],
  ["Lshin", "Lthigh", [0.09, 0.49, 0.01]],
  ["Lfoot", "Lshin", [0.09, 0.08, 0]],
  ["Ltoe", "Lfoot", [0.09, 0.02, 0.13]],
  ["LtoeEnd", "Ltoe", [0.09, 0.02, 0.19]],
  ["RhipJoint", "hips", [0, 0.95, 0]],
  ["Rthigh", "RhipJoint", [-0.09, 0.91, 0]],
  ["Rshin", "Rthigh", [-0.09, 0.49, 0.01]],
  ["Rfoot", "Rshin", [-0.09, 0.08, 0]],
  ["Rtoe", "Rfoot", [-0.09, 0.02, 0.13]],
  ["RtoeEnd", "Rtoe", [-0.09, 0.02, 0.19]],
  ["spine", "hips", [0, 1.05, -0.01]],
  ["chest", "spine", [0, 1.25, -0.01]],
  ["neck", "chest", [0, 1.46, 0]],
  ["head", "neck", [0, 1.54, 0.01]],
  ["headEnd", "head", [0, 1.7, 0.01]],
  ["Lcollar", "chest", [0.03, 1.4, 0]],
  ["Lupper", "Lcollar", [0.17, 1.4, 0]],
  ["Lfore", "Lupper", [0.45, 1.4, 0]],
  ["Lhand", "Lfore", [0.71, 1.4, 0]],
  ["LhandEnd", "Lhand", [0.88, 1.4, 0]],
  ["Rcollar", "chest", [-0.03, 1.4, 0]],
  ["Rupper", "Rcollar", [-0.17, 1.4, 0]],
  ["Rfore", "Rupper", [-0.45, 1.4, 0]],
  ["Rhand", "Rfore", [-0.71, 1.4, 0]],
  ["RhandEnd", "Rhand", [-0.88, 1.4, 0]],
];

/** The pose with these places; no joint is turned. */
export function poseOf(places) {
  const pose = new Float64Array(12 * places.length);
  places.forEach(([x, y, z], joint) => pose.set([1, 0, 0, x, 0, 1, 0, y, 0, 0, 1, z], 12 * joint));
  return pose;
}

/** A skeleton of rows [name, parent, place]. `rename` gives the names that the file has. */
export function skeletonOf(rows, { rename = (name) => name, sideOf = () => "middle" } = {}) {
  const index = new Map(rows.map(([name], joint) => [name, joint]));
  const parents = rows.map(([, parent]) => (parent === null ? -1 : index.get(parent)));
  const pose = poseOf(rows.map(([, , place]) => place));
  return {
    names: rows.map(([name]) => rename(name)),
    parents,
    children: rows.map((_, joint) => parents.flatMap((parent, child) => (parent === joint ? [child] : []))),
    isEnd: rows.map(([name]) => /End$/.test(name)),
    sides: rows.map(([name]) => sideOf(name)),
    poses: [pose, pose.slice(), pose.slice()],
  };
}

const sideOf = (name) => (name.startsWith("L") ? "left" : name.startsWith("R") ? "right" : "middle");
const word = (name) => (name.startsWith("L") ? "Left" : name.startsWith("R") ? "Right" : "");
const part = (name) => name.replace(/^[LR]/, "");

const named = (words) => (name) => (/End$/.test(name) ? `${name}_End` : words(part(name), word(name)));

const PLAIN = { hipJoint: "HipJoint", thigh: "UpLeg", shin: "Leg", foot: "Foot", toe: "ToeBase", collar: "Shoulder", upper: "Arm", fore: "ForeArm", hand: "Hand" };
const JOINTS = { hipJoint: "Hip0", thigh: "Hip", shin: "Knee", foot: "Ankle", toe: "Toe", collar: "Collar", upper: "Shoulder", fore: "Elbow", hand: "Wrist" };
const BONES = { hips: "root", hipJoint: "hipjoint", thigh: "femur", shin: "tibia", foot: "foot", toe: "toes", spine: "lowerback", chest: "thorax", neck: "lowerneck", head: "head", collar: "clavicle", upper: "humerus", fore: "radius", hand: "wrist" };
const SUFFIX = { thigh: "upperleg", shin: "lowerleg", foot: "foot", collar: "clavicle", upper: "upperarm", fore: "lowerarm", hand: "hand" };

/** The person in several namings: [name of the naming, skeleton]. */
export function people() {
  const make = (rename, sides = sideOf) => skeletonOf(PERSON, { rename, sideOf: sides });
  let count = 0;
  return [
    ["words for bones", make(named((name, side) => side + (PLAIN[name] ?? name)))],
    ["words for joints", make(named((name, side) => side + (JOINTS[name] ?? name)))],
    ["anatomy", make(named((name, side) => (side ? side[0].toLowerCase() : "") + (BONES[name] ?? name)))],
    ["sides at the end", make(named((name, side) => (SUFFIX[name] ?? name) + (side ? `_${side[0]}` : "")))],
    ["a prefix", make(named((name, side) => `rig:${side}${PLAIN[name] ?? name}`))],
    ["no known names", make(() => `joint_${count++}`, () => "middle")],
  ];
}

export { PERSON };
