// Shapes feet: a wedge from heel to toes, flat below.
import { Vector3 } from "three";
import { TRANSFORM } from "../data/pose";
import { isBelow, type BodyFrame } from "./bind_pose";
import type { Limb } from "./body_plan";
import { interpolate, type Influence } from "./chain";
import type { MeshBuilder, Ring } from "./mesh_builder";
import { placeOf, type Side, type Skeleton } from "./rig";

/** The sole is this much below the lowest joint, as a part of the body's height. */
const SOLE = 0.012;
const FOOT_LENGTH = 0.15;
/** The part of a foot that is behind the ankle. */
const HEEL = 0.25;
// Position (0 at the heel, 1 at the toes), half of the width, height above the sole (of the ankle's).
const FOOT = [
  [0, 0.012, 0.62],
  [0.04, 0.0165, 0.82],
  [0.14, 0.0195, 1.1],
  [0.26, 0.0205, 1.22],
  [0.4, 0.0215, 1.02],
  [0.55, 0.0245, 0.76],
  [0.7, 0.0275, 0.58],
  [0.82, 0.0275, 0.47],
  [0.92, 0.0235, 0.4],
  [1, 0.013, 0.32],
];

const axis = new Vector3();

/** Brings a direction of the picture from a pose into the pose in which the body is shaped. */
function carry(direction: Vector3, joint: number, from: Float64Array, to: Float64Array): Vector3 {
  const at = TRANSFORM * joint;
  const result = new Vector3();
  for (let column = 0; column < 3; ++column) {
    axis.set(from[at + column], from[at + 4 + column], from[at + 8 + column]);
    const part = axis.dot(direction);
    result.add(axis.set(to[at + column], to[at + 4 + column], to[at + 8 + column]).multiplyScalar(part));
  }
  return result;
}

/** What is up for a foot while it stands, as a direction in the pose in which the body is shaped. */
function soleNormal(skeleton: Skeleton, frame: BodyFrame, ankle: number): Vector3 {
  const poses = skeleton.poses.length > 2 ? skeleton.poses.slice(1) : [skeleton.poses[0]];
  const heights = poses.map((pose) => placeOf(pose, ankle).y);
  const limit = [...heights].sort((a, b) => a - b)[Math.floor(0.25 * (heights.length - 1))];
  const sum = new Vector3();
  const up = new Vector3(0, 1, 0);
  poses.forEach((pose, index) => {
    if (heights[index] <= limit) sum.add(carry(up, ankle, pose, frame.pose));
  });
  const normal = sum.lengthSq() > 0.01 ? sum.normalize() : frame.up.clone();
  // A foot that never stands, or whose joint turns in an unusual way.
  const shin = frame.up;
  return normal.dot(shin) > 0.35 ? normal : shin.clone();
}

interface FootFrame {
  ankle: number;
  heel: Vector3;
  heading: Vector3;
  up: Vector3;
  length: number;
  ankleHeight: number;
  /** Where the toes bend, from the heel, and the joint that bends them; -1 for none. */
  toe: number;
  ball: number;
}

function footFrame(skeleton: Skeleton, frame: BodyFrame, leg: Limb): FootFrame {
  const ankle = leg.path[leg.path.length - 1];
  const place = placeOf(frame.pose, ankle);
  const up = soleNormal(skeleton, frame, ankle);
  const below = skeleton.names.map((_, joint) => joint).filter((joint) => isBelow(skeleton, joint, ankle));
  let lowest = 0;
  let tip = new Vector3();
  for (const joint of below) {
    const bone = placeOf(frame.pose, joint).sub(place);
    lowest = Math.min(lowest, bone.dot(up));
    const flat = bone.addScaledVector(up, -bone.dot(up));
    if (flat.length() > tip.length()) tip = flat;
  }
  const hasTip = tip.length() > 0.03 * frame.height;
  const forward = frame.forward.clone().addScaledVector(up, -frame.forward.dot(up)).normalize();
  const heading = hasTip ? tip.clone().normalize() : forward;
  const toe = below.find((joint) => !skeleton.isEnd[joint] && skeleton.children[joint].length > 0) ?? -1;
  const hasWholeFoot = toe >= 0 && tip.length() > 0.09 * frame.height;
  const usual = FOOT_LENGTH * frame.height;
  const length = Math.min(Math.max(hasTip ? tip.length() / (hasWholeFoot ? 0.75 : 0.7) : usual, 0.85 * usual), 1.2 * usual);
  const ankleHeight = Math.min(Math.max(-lowest + SOLE * frame.height, 0.04 * frame.height), 0.065 * frame.height);
  const heel = place.clone().addScaledVector(up, -Math.max(ankleHeight, -lowest + SOLE * frame.height));
  heel.addScaledVector(heading, -HEEL * length);
  const ball = toe < 0 ? 1 : placeOf(frame.pose, toe).sub(heel).dot(heading) / length;
  return { ankle, heel, heading, up, length, ankleHeight: Math.max(ankleHeight, -lowest + SOLE * frame.height), toe, ball };
}

/** What lies between the end of the shin and the foot. */
function addAnkle(builder: MeshBuilder, frame: BodyFrame, foot: FootFrame, place: Vector3, side: Side): void {
  const height = frame.height;
  const to = foot.heel.clone().addScaledVector(foot.heading, (HEEL + 0.02) * foot.length).addScaledVector(foot.up, 0.028 * height);
  const across = foot.up.clone().cross(foot.heading).normalize();
  const rings: Ring[] = [0, 0.5, 1].map((part) => ({
    centre: place.clone().lerp(to, part),
    x: across.clone().multiplyScalar(height * (0.0193 + 0.0015 * part)),
    y: foot.heading.clone().multiplyScalar(height * (0.0196 + 0.006 * part)),
    joint: foot.ankle,
  }));
  if (place.distanceTo(to) > 1e-4 * height) builder.tube(rings, { side, segments: 12 });
}

export function addFoot(builder: MeshBuilder, skeleton: Skeleton, frame: BodyFrame, leg: Limb): void {
  const foot = footFrame(skeleton, frame, leg);
  const across = foot.up.clone().cross(foot.heading).normalize();
  const top = Math.min(foot.ankleHeight, 0.06 * frame.height);
  const influence = (position: number): Influence => {
    const part = (position - foot.ball + 0.06) / 0.12;
    if (foot.toe < 0 || foot.ball < 0.4 || part <= 0) return { joint: foot.ankle };
    return { joint: foot.ankle, second: foot.toe, weight: Math.min(part, 1) };
  };
  const rings: Ring[] = [];
  for (let step = 0; step <= 12; ++step) {
    const position = step / 12;
    const half = (top * interpolate(FOOT, position, 2)) / 2;
    rings.push({
      centre: foot.heel.clone().addScaledVector(foot.heading, position * foot.length).addScaledVector(foot.up, half),
      x: across.clone().multiplyScalar(frame.height * interpolate(FOOT, position, 1)),
      y: foot.up.clone().multiplyScalar(half),
      power: 2.6,
      ...influence(position),
    });
  }
  builder.tube(rings, { side: leg.side, segments: 14, bulge: [0.5, 0.5] });
  addAnkle(builder, frame, foot, placeOf(frame.pose, foot.ankle), leg.side);
}
