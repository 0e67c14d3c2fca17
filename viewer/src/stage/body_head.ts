// Shapes neck and head. A nose shows which way the face looks.
import { Vector3 } from "three";
import type { BodyFrame } from "./bind_pose";
import type { BodyPlan } from "./body_plan";
import { Chain, interpolate } from "./chain";
import type { MeshBuilder, Ring } from "./mesh_builder";
import { placeOf, type Skeleton } from "./rig";

const HEAD_HEIGHT = 0.132;
// Height (0 at the chin, 1 at the crown), half of the width and of the depth, and how far it is in front.
const HEAD = [
  [0.0, 0.0185, 0.016, 0.021],
  [0.05, 0.0265, 0.026, 0.0185],
  [0.14, 0.033, 0.0365, 0.0125],
  [0.26, 0.0375, 0.0435, 0.0065],
  [0.42, 0.041, 0.0487, 0.0015],
  [0.58, 0.043, 0.0525, -0.0015],
  [0.7, 0.0438, 0.0533, -0.003],
  [0.82, 0.0402, 0.0488, -0.0035],
  [0.91, 0.0313, 0.038, -0.004],
  [0.97, 0.0191, 0.0232, -0.004],
  [0.993, 0.0095, 0.0115, -0.004],
  [1.0, 0.004, 0.005, -0.004],
];

interface HeadFrame {
  joint: number;
  top: Vector3;
  up: Vector3;
  forward: Vector3;
  left: Vector3;
}

/** Where the crown of the head is: at the end of the head's bone, if that has a likely length. */
function headFrame(skeleton: Skeleton, frame: BodyFrame, joint: number): HeadFrame {
  const place = placeOf(frame.pose, joint);
  let up = frame.up.clone();
  let reach = 0.112 * frame.height;
  for (const child of skeleton.children[joint]) {
    const bone = placeOf(frame.pose, child).sub(place);
    const length = bone.length() / frame.height;
    if (!skeleton.isEnd[child] || length < 0.03 || length > 0.2 || bone.normalize().dot(frame.up) < 0.5) continue;
    up = bone;
    reach = frame.height * Math.min(Math.max(length, 0.085), 0.145);
  }
  const forward = frame.forward.clone().addScaledVector(up, -frame.forward.dot(up)).normalize();
  return { joint, top: place.addScaledVector(up, reach), up, forward, left: up.clone().cross(forward) };
}

function addNeck(builder: MeshBuilder, frame: BodyFrame, plan: BodyPlan, head: HeadFrame): void {
  const height = frame.height;
  const from = frame.shoulders.clone().addScaledVector(frame.up, 0.03 * height).addScaledVector(frame.forward, -0.006 * height);
  const to = head.top
    .clone()
    .addScaledVector(head.up, -0.68 * HEAD_HEIGHT * height)
    .addScaledVector(head.forward, -0.004 * height);
  const chain = new Chain(frame.pose, [plan.chest, ...plan.neck]);
  const rings: Ring[] = [];
  for (let step = 0; step <= 4; ++step) {
    const centre = from.clone().lerp(to, step / 4);
    const radius = height * (0.0345 - 0.0035 * (step / 4));
    rings.push({
      centre,
      x: frame.left.clone().multiplyScalar(radius),
      y: frame.forward.clone().multiplyScalar(radius),
      ...chain.influence((chain.length * (step - 0.4)) / 3.6, 0.3 * chain.length),
    });
  }
  builder.tube(rings, { side: "middle", segments: 14, bulge: [0.3, 0.3] });
}

function addFace(builder: MeshBuilder, height: number, head: HeadFrame): void {
  const at = (up: number, forward: number): Vector3 =>
    head.top
      .clone()
      .addScaledVector(head.up, (up - 1) * HEAD_HEIGHT * height)
      .addScaledVector(head.forward, forward * height);
  const nose: Ring[] = [
    [0.57, 0.047, 0.003],
    [0.47, 0.0515, 0.005],
    [0.38, 0.0555, 0.0068],
    [0.345, 0.0535, 0.0062],
  ].map(([up, forward, radius]) => ({
    centre: at(up, forward),
    x: head.left.clone().multiplyScalar(radius * height),
    y: head.forward.clone().multiplyScalar(radius * height),
    joint: head.joint,
  }));
  builder.tube(nose, { side: "middle", segments: 8, bulge: [0.8, 0.8] });
}

export function addHead(builder: MeshBuilder, skeleton: Skeleton, frame: BodyFrame, plan: BodyPlan): void {
  if (plan.neck.length === 0) return;
  const head = headFrame(skeleton, frame, plan.neck[plan.neck.length - 1]);
  addNeck(builder, frame, plan, head);
  const rings: Ring[] = [];
  for (let step = 0; step <= 18; ++step) {
    // Rings are closer at the ends, where the head is round.
    const position = 0.5 - 0.5 * Math.cos((Math.PI * step) / 18);
    rings.push({
      centre: head.top
        .clone()
        .addScaledVector(head.up, (position - 1) * HEAD_HEIGHT * frame.height)
        .addScaledVector(head.forward, frame.height * interpolate(HEAD, position, 3)),
      x: head.left.clone().multiplyScalar(frame.height * interpolate(HEAD, position, 1)),
      y: head.forward.clone().multiplyScalar(frame.height * interpolate(HEAD, position, 2)),
      power: 2.1,
      joint: head.joint,
    });
  }
  builder.tube(rings, { side: "middle", segments: 22, bulge: [0.45, 0.2] });
  addFace(builder, frame.height, head);
}
