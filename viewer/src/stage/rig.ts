// The joints of one figure, with the poses from which its shape is found.
import { Vector3 } from "three";
import { Pose, TRANSFORM } from "../data/pose";
import type { Take } from "../data/take";
import { median, placeInSpace, type Samples, type Space } from "./space";

export type Side = "middle" | "left" | "right";

/** Joints are counted within the figure here; parents come before their children. */
export interface Skeleton {
  readonly names: readonly string[];
  readonly parents: readonly number[];
  readonly children: readonly (readonly number[])[];
  readonly isEnd: readonly boolean[];
  readonly sides: readonly Side[];
  /** Transforms in the picture, TRANSFORM numbers a joint: the base pose first, then frames of the take. */
  readonly poses: readonly Float64Array[];
}

export interface Rig extends Skeleton {
  readonly take: Take;
  readonly takeIndex: number;
  /** The joints of the figure as indices of the take's joints. */
  readonly joints: readonly number[];
}

export function placeOf(pose: ArrayLike<number>, joint: number, out = new Vector3()): Vector3 {
  const at = TRANSFORM * joint;
  return out.set(pose[at + 3], pose[at + 7], pose[at + 11]);
}

/** Copies the transforms of some joints into the picture's space. */
export function readPose(joints: readonly number[], space: Space, world: ArrayLike<number>, out: Float64Array): void {
  for (let index = 0; index < joints.length; ++index)
    placeInSpace(space, world, TRANSFORM * joints[index], out, TRANSFORM * index);
}

export function rigOf(take: Take, takeIndex: number, model: number, space: Space, samples: Samples): Rig {
  const joints = take.joints.filter((joint) => joint.model === model).map((joint) => joint.index);
  const own = new Map(joints.map((joint, index) => [joint, index]));
  const parents = joints.map((joint) => own.get(take.joints[joint].parent) ?? -1);
  const children: number[][] = joints.map(() => []);
  parents.forEach((parent, joint) => {
    if (parent >= 0) children[parent].push(joint);
  });
  const poses = [Pose.rest(take), ...samples.worlds].map((world) => {
    const pose = new Float64Array(TRANSFORM * joints.length);
    readPose(joints, space, world, pose);
    return pose;
  });
  return {
    take,
    takeIndex,
    joints,
    names: joints.map((joint) => take.joints[joint].sourceName || take.joints[joint].name),
    parents,
    children,
    isEnd: joints.map((joint) => take.joints[joint].isEnd),
    sides: joints.map((joint) => take.joints[joint].side),
    poses,
  };
}

/** The length of the bone that ends at each joint, the median over the poses. */
export function boneLengths(skeleton: Skeleton): number[] {
  const a = new Vector3();
  const b = new Vector3();
  return skeleton.parents.map((parent, joint) => {
    if (parent < 0) return 0;
    return median(skeleton.poses.map((pose) => placeOf(pose, joint, a).distanceTo(placeOf(pose, parent, b))));
  });
}
