// Chooses the pose in which the body is shaped, and measures the body in it. The trunk keeps the pose
// that looks most like a person who stands; arms and legs are stretched.
import { Quaternion, Vector3 } from "three";
import { TRANSFORM } from "../data/pose";
import type { BodyPlan, Limb } from "./body_plan";
import { placeOf, type Skeleton } from "./rig";
import { median } from "./space";

export interface BodyFrame {
  /** Transforms of the joints, as in Skeleton.poses. */
  readonly pose: Float64Array;
  /** Where the trunk begins and ends: between the hips and between the shoulders. */
  readonly hips: Vector3;
  readonly shoulders: Vector3;
  readonly up: Vector3;
  /** To the left of the body, at the hips and at the shoulders. */
  readonly hipsLeft: Vector3;
  readonly left: Vector3;
  readonly forward: Vector3;
  readonly hipWidth: number;
  readonly shoulderWidth: number;
  /** About the height of the body when it stands. */
  readonly height: number;
}

const first = (limb: Limb): number => limb.path[0];
const last = (limb: Limb): number => limb.path[limb.path.length - 1];

function middleOf(pose: Float64Array, limbs: readonly [Limb, Limb]): Vector3 {
  return placeOf(pose, first(limbs[0])).add(placeOf(pose, first(limbs[1]))).multiplyScalar(0.5);
}

function between(pose: Float64Array, limbs: readonly [Limb, Limb]): Vector3 {
  return placeOf(pose, first(limbs[0])).sub(placeOf(pose, first(limbs[1])));
}

/** How much the trunk of a pose is upright, straight and not twisted. */
function uprightness(pose: Float64Array, plan: BodyPlan): number {
  const hips = middleOf(pose, plan.legs);
  const shoulders = middleOf(pose, plan.arms);
  const up = shoulders.clone().sub(hips);
  const length = up.length();
  let way = 0;
  const joints = plan.trunk.map((joint) => placeOf(pose, joint));
  const points = [hips, ...joints.slice(1, -1), shoulders];
  for (let index = 1; index < points.length; ++index) way += points[index].distanceTo(points[index - 1]);
  up.normalize();
  const turn = Math.abs(between(pose, plan.legs).normalize().dot(between(pose, plan.arms).normalize()));
  let legs = 0;
  for (const leg of plan.legs)
    legs -= placeOf(pose, last(leg)).sub(placeOf(pose, first(leg))).normalize().dot(up);
  return length / (way || 1) + 0.5 * turn + 0.25 * up.y + 0.15 * legs;
}

/** Whether the base pose has about the widths that the frames have; in some files it is a heap of bones. */
function isTidy(skeleton: Skeleton, plan: BodyPlan): boolean {
  const measures = [
    (pose: Float64Array) => between(pose, plan.legs).length(),
    (pose: Float64Array) => between(pose, plan.arms).length(),
    (pose: Float64Array) => middleOf(pose, plan.arms).distanceTo(middleOf(pose, plan.legs)),
  ];
  return measures.every((measure) => {
    const usual = median(skeleton.poses.slice(1).map(measure));
    return Math.abs(measure(skeleton.poses[0]) - usual) < 0.25 * usual;
  });
}

function choosePose(skeleton: Skeleton, plan: BodyPlan): Float64Array {
  const tidy = isTidy(skeleton, plan);
  let best = skeleton.poses[0];
  let bestScore = -Infinity;
  skeleton.poses.forEach((pose, index) => {
    if (index === 0 && !tidy) return;
    const score = uprightness(pose, plan) + (index === 0 ? 0.35 : 0);
    if (score > bestScore) {
      bestScore = score;
      best = pose;
    }
  });
  return best.slice();
}

const turned = new Vector3();

/** Turns a joint and all joints under it about the joint's place. */
function turnBranch(skeleton: Skeleton, pose: Float64Array, top: number, turn: Quaternion): void {
  const centre = placeOf(pose, top);
  const inBranch = skeleton.names.map(() => false);
  for (let joint = top; joint < skeleton.names.length; ++joint) {
    inBranch[joint] = joint === top || (skeleton.parents[joint] >= 0 && inBranch[skeleton.parents[joint]]);
    if (!inBranch[joint]) continue;
    const at = TRANSFORM * joint;
    for (let column = 0; column < 4; ++column) {
      turned.set(pose[at + column], pose[at + 4 + column], pose[at + 8 + column]);
      if (column === 3) turned.sub(centre);
      turned.applyQuaternion(turn);
      if (column === 3) turned.add(centre);
      pose[at + column] = turned.x;
      pose[at + 4 + column] = turned.y;
      pose[at + 8 + column] = turned.z;
    }
  }
}

/** Turns each bone of a chain into the direction of the first one. */
function stretch(skeleton: Skeleton, pose: Float64Array, path: readonly number[]): void {
  let direction: Vector3 | null = null;
  const turn = new Quaternion();
  for (let index = 0; index + 1 < path.length; ++index) {
    const bone = placeOf(pose, path[index + 1]).sub(placeOf(pose, path[index]));
    if (bone.lengthSq() < 1e-12) continue;
    bone.normalize();
    if (direction) turnBranch(skeleton, pose, path[index], turn.setFromUnitVectors(bone, direction));
    else direction = bone;
  }
}

/** The direction in which the toes point, if the legs have any. */
function toesForward(skeleton: Skeleton, pose: Float64Array, plan: BodyPlan, up: Vector3): Vector3 {
  const sum = new Vector3();
  for (const leg of plan.legs) {
    const ankle = last(leg);
    for (let joint = ankle + 1; joint < skeleton.names.length; ++joint)
      if (skeleton.parents[joint] >= ankle && placeOf(pose, joint).distanceTo(placeOf(pose, ankle)) > 0)
        if (isBelow(skeleton, joint, ankle)) sum.add(placeOf(pose, joint).sub(placeOf(pose, ankle)));
  }
  return sum.addScaledVector(up, -sum.dot(up));
}

export function isBelow(skeleton: Skeleton, joint: number, ancestor: number): boolean {
  let at = skeleton.parents[joint];
  while (at > ancestor) at = skeleton.parents[at];
  return at === ancestor;
}

function orthogonal(vector: Vector3, to: Vector3, otherwise: Vector3): Vector3 {
  const result = vector.clone().addScaledVector(to, -vector.dot(to));
  if (result.lengthSq() < 1e-10) result.copy(otherwise).addScaledVector(to, -otherwise.dot(to));
  return result.normalize();
}

function limbLength(pose: Float64Array, limb: Limb): number {
  let length = 0;
  for (let index = 1; index < limb.path.length; ++index)
    length += placeOf(pose, limb.path[index]).distanceTo(placeOf(pose, limb.path[index - 1]));
  return length;
}

export function frameOf(skeleton: Skeleton, plan: BodyPlan): BodyFrame {
  const pose = choosePose(skeleton, plan);
  const hips = middleOf(pose, plan.legs);
  const shoulders = middleOf(pose, plan.arms);
  const up = shoulders.clone().sub(hips);
  const trunk = up.length();
  up.normalize();
  const toes = toesForward(skeleton, pose, plan, up);
  const sideOf = (limbs: readonly [Limb, Limb]): Vector3 => {
    const across = between(pose, limbs);
    if (limbs[0].side === "right" || limbs[1].side === "left") return across.negate();
    if (limbs[0].side === "left" || limbs[1].side === "right") return across;
    // Without names of sides, the toes say where the left is.
    return across.dot(up.clone().cross(toes)) < 0 ? across.negate() : across;
  };
  const left = orthogonal(sideOf(plan.arms), up, new Vector3(1, 0, 0));
  const hipsLeft = orthogonal(sideOf(plan.legs), up, left);
  const legs = (limbLength(pose, plan.legs[0]) + limbLength(pose, plan.legs[1])) / 2;
  const frame: BodyFrame = {
    pose,
    hips,
    shoulders,
    up,
    hipsLeft,
    left,
    forward: left.clone().cross(up).normalize(),
    hipWidth: between(pose, plan.legs).length(),
    shoulderWidth: between(pose, plan.arms).length(),
    height: (0.6 * legs) / 0.485 + (0.4 * trunk) / 0.29,
  };
  for (const limb of [...plan.legs, ...plan.arms]) stretch(skeleton, pose, limb.path);
  return frame;
}
