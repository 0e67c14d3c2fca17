// Shapes a body: a person where the joints make one, rounded limbs along the bones otherwise.
import { Vector3 } from "three";
import { addFoot } from "./body_foot";
import { addHand } from "./body_hand";
import { addHead } from "./body_head";
import { addArm, addLeg } from "./body_limbs";
import { isHeadName, type BodyPlan } from "./body_plan";
import { addTrunk } from "./body_trunk";
import { frameOf, isBelow } from "./bind_pose";
import { MeshBuilder, type Ring, type Shape } from "./mesh_builder";
import { placeOf, type Skeleton } from "./rig";
import { FIGURE_SIZE } from "./space";

/** The joints that the parts of a person cover, so that their bones need no shape of their own. */
function coveredJoints(skeleton: Skeleton, plan: BodyPlan): boolean[] {
  const covered = skeleton.names.map(() => false);
  const head = plan.neck[plan.neck.length - 1] ?? -1;
  const wrists = [...plan.legs, ...plan.arms].map((limb) => limb.path[limb.path.length - 1]);
  for (const joint of [...plan.trunk, ...plan.neck, ...[...plan.legs, ...plan.arms].flatMap((limb) => [...limb.girdle, ...limb.path])])
    covered[joint] = true;
  for (let joint = 0; joint < covered.length; ++joint) {
    if (head >= 0 && isBelow(skeleton, joint, head)) covered[joint] = true;
    if (wrists.some((wrist) => isBelow(skeleton, joint, wrist))) covered[joint] = true;
  }
  return covered;
}

/** A bone as a tube that is thicker at its beginning. Its ends follow their joints, so that it can grow. */
function addBone(builder: MeshBuilder, skeleton: Skeleton, pose: Float64Array, joint: number, radius: number): void {
  const parent = skeleton.parents[joint];
  const from = placeOf(pose, parent);
  const to = placeOf(pose, joint);
  const along = to.clone().sub(from);
  const length = along.length();
  if (length < 1e-6) return;
  along.divideScalar(length);
  const x = new Vector3(Math.abs(along.x) > 0.9 ? 0 : 1, Math.abs(along.x) > 0.9 ? 1 : 0, 0).cross(along).normalize();
  const y = along.clone().cross(x);
  const rings: Ring[] = [0, 0.2, 0.4, 0.6, 0.8, 1].map((part) => {
    const size = Math.min(radius, 0.45 * length) * (1 - 0.35 * part);
    return {
      centre: from.clone().addScaledVector(along, part * length),
      x: x.clone().multiplyScalar(size),
      y: y.clone().multiplyScalar(size),
      joint: parent,
      second: joint,
      weight: part < 0.5 ? 0 : part === 1 ? 0.5 : (part - 0.5) * 0.8,
    };
  });
  builder.tube(rings, { side: skeleton.sides[joint], segments: 14 });
}

function ballAt(builder: MeshBuilder, pose: Float64Array, skeleton: Skeleton, joint: number, radius: number): void {
  const axes: [Vector3, Vector3, Vector3] = [new Vector3(radius, 0, 0), new Vector3(0, 0, radius), new Vector3(0, -radius, 0)];
  builder.ball(placeOf(pose, joint), axes, joint, skeleton.sides[joint], 18);
}

function shapeCreature(skeleton: Skeleton): Shape {
  const builder = new MeshBuilder();
  const pose = skeleton.poses[1] ?? skeleton.poses[0];
  let bones = 0;
  skeleton.parents.forEach((parent, joint) => {
    if (parent < 0) return;
    const length = placeOf(pose, joint).distanceTo(placeOf(pose, parent));
    const isHead = isHeadName(skeleton.names[parent]) && skeleton.isEnd[joint];
    const radius = Math.min(Math.max((isHead ? 0.4 : 0.17) * length, 0.004 * FIGURE_SIZE), 0.045 * FIGURE_SIZE);
    if (length > 1e-6) ++bones;
    addBone(builder, skeleton, pose, joint, radius);
  });
  if (bones === 0) skeleton.names.forEach((_, joint) => ballAt(builder, pose, skeleton, joint, 0.06 * FIGURE_SIZE));
  return { geometry: builder.build(), pose };
}

/** The joints whose branches lead well away from the trunk. */
function farJoints(skeleton: Skeleton, pose: Float64Array, centre: Vector3, height: number): boolean[] {
  const far = skeleton.names.map((_, joint) => placeOf(pose, joint).distanceTo(centre) > 0.3 * height);
  for (let joint = far.length - 1; joint >= 0; --joint)
    if (far[joint] && skeleton.parents[joint] >= 0) far[skeleton.parents[joint]] = true;
  return far;
}

export function shapeBody(skeleton: Skeleton, plan: BodyPlan | null): Shape {
  if (!plan) return shapeCreature(skeleton);
  const frame = frameOf(skeleton, plan);
  if (!(frame.height > 1e-3) || !(frame.hips.distanceTo(frame.shoulders) > 1e-3)) return shapeCreature(skeleton);
  const builder = new MeshBuilder();
  addTrunk(builder, frame, plan);
  addHead(builder, skeleton, frame, plan);
  for (const leg of plan.legs) {
    addLeg(builder, frame, leg);
    addFoot(builder, skeleton, frame, leg);
  }
  for (const arm of plan.arms) {
    addArm(builder, frame, arm);
    addHand(builder, skeleton, frame, arm);
  }
  const covered = coveredJoints(skeleton, plan);
  const centre = frame.hips.clone().lerp(frame.shoulders, 0.5);
  const far = farJoints(skeleton, frame.pose, centre, frame.height);
  skeleton.parents.forEach((parent, joint) => {
    if (parent < 0 || covered[joint]) return;
    // Other branches of the trunk, such as a tail, are shown as far as they are outside of it.
    const away = placeOf(frame.pose, joint).distanceTo(centre);
    if (away < 0.62 * frame.hips.distanceTo(frame.shoulders) || !far[joint]) return;
    const length = placeOf(frame.pose, joint).distanceTo(placeOf(frame.pose, parent));
    addBone(builder, skeleton, frame.pose, joint, Math.min(0.13 * length, 0.025 * frame.height));
  });
  return { geometry: builder.build(), pose: frame.pose };
}
