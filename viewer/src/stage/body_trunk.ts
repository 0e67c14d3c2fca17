// Shapes the trunk, from the crotch to the base of the neck, and the shoulders.
import type { BodyFrame } from "./bind_pose";
import type { BodyPlan, Limb } from "./body_plan";
import { interpolate, type Influence } from "./chain";
import type { MeshBuilder, Ring } from "./mesh_builder";
import { placeOf } from "./rig";

// Height (0 between the hips, 1 between the shoulders), half of the width and of the depth as parts of
// the body's height, how far the middle is in front, and how much the width follows the joints'
// distance: at the hips (1), at the shoulders partly (2) or wholly (3), or at neither (0).
const TRUNK = [
  [-0.2, 0.03, 0.036, -0.004, 0],
  [-0.13, 0.062, 0.053, -0.004, 1],
  [-0.04, 0.087, 0.063, -0.005, 1],
  [0.08, 0.093, 0.0645, -0.004, 1],
  [0.2, 0.087, 0.06, 0, 1],
  [0.34, 0.077, 0.0525, 0.003, 0],
  [0.46, 0.0745, 0.051, 0.003, 0],
  [0.6, 0.083, 0.057, 0.003, 2],
  [0.74, 0.094, 0.063, 0.004, 2],
  [0.86, 0.0985, 0.062, 0.001, 3],
  [0.96, 0.099, 0.054, -0.003, 3],
  [1.03, 0.086, 0.045, -0.006, 3],
  [1.09, 0.059, 0.038, -0.008, 2],
  [1.13, 0.039, 0.034, -0.008, 0],
];
const HIP_WIDTH = 0.1;
const SHOULDER_WIDTH = 0.2;

/** How the width of the joints differs from the usual one, within what looks natural. */
function widening(width: number, usual: number): number {
  return Math.min(Math.max(0.5 + (0.5 * width) / usual, 0.8), 1.2);
}

/** The joints that move a height of the trunk. */
function influences(plan: BodyPlan, frame: BodyFrame): (height: number) => Influence {
  const joints = plan.trunk.map((joint) => ({
    joint,
    height: placeOf(frame.pose, joint).sub(frame.hips).dot(frame.up),
  }));
  const blend = 0.035 * frame.height;
  return (height) => {
    let joint = joints[0].joint;
    for (let index = 1; index < joints.length; ++index) {
      // A bone that leads down from a top joint does not bend the trunk above it.
      const part = (height - joints[index].height + blend) / (2 * blend);
      if (part <= 0) break;
      if (part < 1) return { joint, second: joints[index].joint, weight: part * part * (3 - 2 * part) };
      joint = joints[index].joint;
    }
    return { joint };
  };
}

function addShoulder(builder: MeshBuilder, frame: BodyFrame, plan: BodyPlan, arm: Limb): void {
  const shoulder = placeOf(frame.pose, arm.path[0]);
  const inner = frame.shoulders.clone().addScaledVector(frame.up, 0.014 * frame.height);
  inner.addScaledVector(frame.forward, -0.006 * frame.height).lerp(shoulder, 0.2);
  const along = shoulder.clone().sub(inner);
  if (along.lengthSq() < 1e-8) return;
  const y = frame.up.clone().addScaledVector(along, -frame.up.dot(along) / along.lengthSq()).normalize();
  const x = along.clone().normalize().cross(y);
  const collar = arm.girdle[arm.girdle.length - 1] ?? plan.chest;
  const rings: Ring[] = [0, 0.35, 0.7, 1].map((part) => ({
    centre: inner.clone().lerp(shoulder, part),
    x: x.clone().multiplyScalar(frame.height * (0.033 - 0.003 * part)),
    y: y.clone().multiplyScalar(frame.height * (0.031 - 0.0005 * part)),
    joint: plan.chest,
    second: collar,
    weight: Math.min(1, 0.2 + part),
  }));
  builder.tube(rings, { side: "middle", segments: 14 });
}

export function addTrunk(builder: MeshBuilder, frame: BodyFrame, plan: BodyPlan): void {
  const length = frame.shoulders.distanceTo(frame.hips);
  const factors = [
    1,
    widening(frame.hipWidth / frame.height, HIP_WIDTH),
    widening(frame.shoulderWidth / frame.height, SHOULDER_WIDTH),
    Math.min(Math.max(frame.shoulderWidth / frame.height / SHOULDER_WIDTH, 0.7), 1.3),
  ];
  const widths = TRUNK.map(([position, width, , , follows]) => [position, width * factors[follows]]);
  const influence = influences(plan, frame);
  const rings: Ring[] = [];
  for (let step = 0; step <= 20; ++step) {
    const position = -0.2 + (1.33 * step) / 20;
    const x = frame.hipsLeft.clone().lerp(frame.left, Math.min(Math.max(position, 0), 1)).normalize();
    const forward = x.clone().cross(frame.up).normalize();
    rings.push({
      centre: frame.hips
        .clone()
        .addScaledVector(frame.up, position * length)
        .addScaledVector(forward, frame.height * interpolate(TRUNK, position, 3)),
      x: x.clone().multiplyScalar(frame.height * interpolate(widths, position)),
      y: forward.multiplyScalar(frame.height * interpolate(TRUNK, position, 2)),
      power: 2.35,
      ...influence(position * length),
    });
  }
  builder.tube(rings, { side: "middle", segments: 28, bulge: [0.5, 0.7] });
  for (const arm of plan.arms) addShoulder(builder, frame, plan, arm);
}
