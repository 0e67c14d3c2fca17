// Shapes the two other looks: slim bones between balls, and joints alone.
import { Vector3 } from "three";
import { MeshBuilder, type Ring, type Shape } from "./mesh_builder";
import { boneLengths, placeOf, type Skeleton } from "./rig";
import { FIGURE_SIZE } from "./space";

const LARGEST_BALL = 0.0125 * FIGURE_SIZE;

/** Joints that lie close together, as those of fingers and faces do, get small balls. */
function ballRadius(skeleton: Skeleton, lengths: readonly number[], joint: number): number {
  const near = [lengths[joint], ...skeleton.children[joint].map((child) => lengths[child])].filter((length) => length > 1e-6);
  if (near.length === 0) return skeleton.isEnd[joint] ? 0.3 * LARGEST_BALL : LARGEST_BALL;
  const shortest = near.reduce((sum, length) => sum + length, 0) / near.length;
  const radius = Math.min(Math.max(0.16 * shortest, 0.18 * LARGEST_BALL), LARGEST_BALL);
  return skeleton.isEnd[joint] ? 0.65 * radius : radius;
}

function addBall(builder: MeshBuilder, skeleton: Skeleton, pose: Float64Array, joint: number, radius: number): void {
  builder.ball(
    placeOf(pose, joint),
    [new Vector3(radius, 0, 0), new Vector3(0, 0, radius), new Vector3(0, -radius, 0)],
    joint,
    skeleton.sides[joint],
    12,
  );
}

// Position along a bone and thickness, of the ball's radius at its beginning.
const BONE = [
  [0, 0.62],
  [0.1, 0.8],
  [0.22, 0.86],
  [0.45, 0.66],
  [0.75, 0.44],
  [1, 0.3],
];

function addBone(builder: MeshBuilder, skeleton: Skeleton, pose: Float64Array, joint: number, radius: number): void {
  const parent = skeleton.parents[joint];
  const from = placeOf(pose, parent);
  const along = placeOf(pose, joint).sub(from);
  if (along.length() < 1e-6) return;
  const direction = along.clone().normalize();
  const x = new Vector3(Math.abs(direction.x) > 0.9 ? 0 : 1, Math.abs(direction.x) > 0.9 ? 1 : 0, 0);
  x.cross(direction).normalize();
  const y = direction.clone().cross(x);
  const rings: Ring[] = BONE.map(([part, thickness]) => ({
    centre: from.clone().addScaledVector(along, part),
    x: x.clone().multiplyScalar(radius * thickness),
    y: y.clone().multiplyScalar(radius * thickness),
    joint: parent,
    second: joint,
    // Only the far end follows the child, so that a bone grows with its length.
    weight: part < 1 ? 0 : 1,
  }));
  builder.tube(rings, { side: skeleton.sides[joint], segments: 8, bulge: [0, 0] });
}

export function shapeBones(skeleton: Skeleton): Shape {
  const builder = new MeshBuilder();
  const lengths = boneLengths(skeleton);
  const pose = skeleton.poses[1] ?? skeleton.poses[0];
  skeleton.parents.forEach((parent, joint) => {
    const radius = ballRadius(skeleton, lengths, joint);
    addBall(builder, skeleton, pose, joint, 0.85 * radius);
    if (parent >= 0) addBone(builder, skeleton, pose, joint, Math.min(0.13 * lengths[joint], 1.25 * LARGEST_BALL));
  });
  return { geometry: builder.build(), pose };
}

export function shapeJoints(skeleton: Skeleton): Shape {
  const builder = new MeshBuilder();
  const lengths = boneLengths(skeleton);
  const pose = skeleton.poses[1] ?? skeleton.poses[0];
  skeleton.parents.forEach((parent, joint) => {
    addBall(builder, skeleton, pose, joint, 1.25 * ballRadius(skeleton, lengths, joint));
    // Threads show which joints belong together.
    if (parent >= 0) addBone(builder, skeleton, pose, joint, Math.min(0.01 * lengths[joint], 0.0022 * FIGURE_SIZE));
  });
  return { geometry: builder.build(), pose };
}
