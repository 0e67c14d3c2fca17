// Shapes arms and legs: tubes that swell and narrow as muscles do. Lengths are parts of the body's height.
import { Vector3 } from "three";
import type { BodyFrame } from "./bind_pose";
import type { Limb } from "./body_plan";
import { Chain, interpolate } from "./chain";
import type { MeshBuilder, Ring } from "./mesh_builder";

// Position (0 at the hip, 1 at the knee, 2 at the ankle), radius, and how far it swells forward.
const LEG = [
  [0, 0.049, 0],
  [0.15, 0.0505, 0.002],
  [0.4, 0.046, 0.005],
  [0.7, 0.038, 0.004],
  [0.92, 0.032, 0.002],
  [1.0, 0.031, 0.002],
  [1.1, 0.0295, 0],
  [1.3, 0.0325, -0.006],
  [1.5, 0.0295, -0.005],
  [1.75, 0.022, -0.002],
  [2, 0.0195, 0],
];
const ARM = [
  [0, 0.0315, 0],
  [0.2, 0.032, 0],
  [0.5, 0.0275, 0.001],
  [0.85, 0.0232, 0],
  [1.0, 0.0225, 0],
  [1.2, 0.0238, 0],
  [1.45, 0.021, 0],
  [1.8, 0.0158, 0],
  [2, 0.0145, 0],
];
// Rings are close where a limb bends.
const POSITIONS = [0, 0.12, 0.3, 0.5, 0.7, 0.84, 0.92, 0.97, 1, 1.03, 1.08, 1.16, 1.3, 1.5, 1.75, 1.92, 2];

function across(direction: Vector3, forward: Vector3, left: Vector3): [Vector3, Vector3] {
  const y = forward.clone().addScaledVector(direction, -forward.dot(direction));
  // An arm may point forward.
  if (y.lengthSq() < 0.05) y.copy(left).addScaledVector(direction, -left.dot(direction));
  y.normalize();
  return [y.clone().cross(direction).normalize(), y];
}

function addLimb(builder: MeshBuilder, frame: BodyFrame, limb: Limb, table: number[][]): void {
  const chain = new Chain(frame.pose, limb.path);
  if (chain.length < 1e-6) return;
  const middle = limb.middle > 0 ? chain.reach(limb.middle) : chain.length / 2;
  const direction = chain.at(chain.length).sub(chain.at(0)).normalize();
  const [x, y] = across(direction, frame.forward, frame.left);
  const rings: Ring[] = [];
  const blend = 0.75 * frame.height * interpolate(table, 1);
  for (const position of POSITIONS) {
    const distance = position <= 1 ? position * middle : middle + (position - 1) * (chain.length - middle);
    const radius = frame.height * interpolate(table, position);
    rings.push({
      centre: chain.at(distance).addScaledVector(y, frame.height * interpolate(table, position, 2)),
      x: x.clone().multiplyScalar(radius),
      y: y.clone().multiplyScalar(radius),
      ...chain.influence(distance, blend),
    });
  }
  builder.tube(rings, { side: limb.side, segments: 16, bulge: [0.9, 0.8] });
}

export function addLeg(builder: MeshBuilder, frame: BodyFrame, leg: Limb): void {
  addLimb(builder, frame, leg, LEG);
}

export function addArm(builder: MeshBuilder, frame: BodyFrame, arm: Limb): void {
  addLimb(builder, frame, arm, ARM);
}
