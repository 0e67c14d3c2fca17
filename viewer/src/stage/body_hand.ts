// Shapes hands: a palm, and fingers where the skeleton has them; otherwise a hand as in a mitten.
import { Vector3 } from "three";
import { isBelow, type BodyFrame } from "./bind_pose";
import type { Limb } from "./body_plan";
import { Chain, interpolate } from "./chain";
import type { MeshBuilder, Ring } from "./mesh_builder";
import { placeOf, type Side, type Skeleton } from "./rig";

const HAND_LENGTH = 0.105;
// Position (0 at the wrist, 1 at the fingertips), half of the width and of the thickness.
const MITTEN = [
  [0, 0.0145, 0.0125],
  [0.15, 0.0185, 0.0125],
  [0.4, 0.0235, 0.0115],
  [0.6, 0.0235, 0.0098],
  [0.8, 0.0205, 0.0082],
  [0.95, 0.0145, 0.0068],
  [1, 0.0095, 0.006],
];
// The same for a palm, which ends at the knuckles; the width there is that of the knuckles.
const PALM = [
  [0, 0.0145, 0.0125],
  [0.3, 0.0195, 0.0122],
  [0.7, 0.0235, 0.0105],
  [1, 0.0235, 0.0085],
];
const THUMB = /thumb|finger1\D/i;

interface HandFrame {
  wrist: number;
  place: Vector3;
  along: Vector3;
  /** Across the palm, towards the thumb if that is known. */
  across: Vector3;
  normal: Vector3;
}

/** The first joints of the fingers: where each way below the hand begins for good. */
function fingersOf(skeleton: Skeleton, frame: BodyFrame, wrist: number): number[][] {
  const fingers: number[][] = [];
  const leaves = skeleton.names
    .map((_, joint) => joint)
    .filter((joint) => isBelow(skeleton, joint, wrist) && skeleton.children[joint].length === 0);
  for (const leaf of leaves) {
    // What several ways share is above their fork.
    const path = [leaf];
    for (let at = skeleton.parents[leaf]; at !== wrist && skeleton.children[at].length === 1; at = skeleton.parents[at])
      path.push(at);
    path.reverse();
    // A metacarpal bone lies in the palm.
    while (path.length > 3 && placeOf(frame.pose, path[0]).distanceTo(placeOf(frame.pose, wrist)) < 0.022 * frame.height)
      path.shift();
    if (path.length > 1) fingers.push(path);
  }
  return fingers;
}

const isThumb = (skeleton: Skeleton, finger: readonly number[]): boolean =>
  finger.some((joint) => THUMB.test(skeleton.names[joint]));

function handFrame(skeleton: Skeleton, frame: BodyFrame, arm: Limb, fingers: readonly number[][]): HandFrame {
  const wrist = arm.path[arm.path.length - 1];
  const place = placeOf(frame.pose, wrist);
  const others = fingers.filter((finger) => !isThumb(skeleton, finger));
  const along = new Vector3();
  for (const finger of others) along.add(placeOf(frame.pose, finger[0])).sub(place);
  if (along.length() < 0.03 * frame.height)
    for (let joint = wrist + 1; joint < skeleton.names.length; ++joint)
      if (isBelow(skeleton, joint, wrist)) along.add(placeOf(frame.pose, joint)).sub(place);
  if (along.length() < 0.005 * frame.height)
    along.copy(place).sub(placeOf(frame.pose, arm.path[Math.max(0, arm.path.length - 2)]));
  along.normalize();
  const across = new Vector3();
  const thumb = fingers.find((finger) => isThumb(skeleton, finger));
  if (others.length > 1)
    across.copy(placeOf(frame.pose, others[0][0])).sub(placeOf(frame.pose, others[others.length - 1][0]));
  if (thumb) {
    const towards = placeOf(frame.pose, thumb[thumb.length - 1]).sub(place);
    if (across.lengthSq() < 1e-8) across.copy(towards);
    else if (across.dot(towards) < 0) across.negate();
  }
  across.addScaledVector(along, -across.dot(along));
  if (across.length() < 0.004 * frame.height) {
    // In a pose with spread arms the palms face down. In one with lowered arms they face the body.
    across.copy(frame.forward).addScaledVector(along, -frame.forward.dot(along));
    if (across.lengthSq() < 0.05) across.copy(frame.up).addScaledVector(along, -frame.up.dot(along));
  }
  across.normalize();
  return { wrist, place, along, across, normal: along.clone().cross(across) };
}

function addFinger(builder: MeshBuilder, frame: BodyFrame, from: HandFrame, path: number[], side: Side, thick: number): void {
  const chain = new Chain(frame.pose, path);
  if (chain.length < 0.004 * frame.height) return;
  const rings: Ring[] = [];
  for (let step = 0; step <= 6; ++step) {
    const distance = (chain.length * step) / 6;
    const radius = thick * frame.height * (1 - 0.25 * (step / 6));
    const ahead = chain.at(Math.min(distance + 1e-3, chain.length)).sub(chain.at(distance - 1e-3)).normalize();
    const x = from.normal.clone().cross(ahead);
    if (x.lengthSq() < 1e-4) x.copy(from.across);
    x.normalize();
    rings.push({
      centre: chain.at(distance),
      x: x.clone().multiplyScalar(radius),
      y: ahead.cross(x).normalize().multiplyScalar(radius),
      ...chain.influence(distance, thick * frame.height * 0.9),
    });
  }
  builder.tube(rings, { side, segments: 8 });
}

function addPalm(builder: MeshBuilder, frame: BodyFrame, hand: HandFrame, knuckles: Vector3[], side: Side): void {
  const centre = new Vector3();
  for (const knuckle of knuckles) centre.add(knuckle);
  centre.divideScalar(knuckles.length);
  const reaches = knuckles.map((knuckle) => knuckle.clone().sub(centre).dot(hand.across));
  const half = Math.max(...reaches, ...reaches.map((reach) => -reach)) / frame.height + 0.006;
  const rings: Ring[] = [];
  for (let step = 0; step <= 5; ++step) {
    const position = step / 5;
    const usual = interpolate(PALM, position, 1);
    const width = usual + (Math.min(Math.max(half, 0.016), 0.034) - 0.0235) * position;
    rings.push({
      centre: hand.place.clone().lerp(centre, position),
      x: hand.across.clone().multiplyScalar(frame.height * width),
      y: hand.normal.clone().multiplyScalar(frame.height * interpolate(PALM, position, 2)),
      power: 2.5,
      joint: hand.wrist,
    });
  }
  builder.tube(rings, { side, segments: 12, bulge: [0.6, 0.4] });
}

function addMitten(builder: MeshBuilder, skeleton: Skeleton, frame: BodyFrame, hand: HandFrame, side: Side): void {
  let tip = 0;
  let path: number[] = [];
  for (let joint = hand.wrist + 1; joint < skeleton.names.length; ++joint) {
    if (!isBelow(skeleton, joint, hand.wrist)) continue;
    const reach = placeOf(frame.pose, joint).sub(hand.place).dot(hand.along);
    if (reach <= tip || THUMB.test(skeleton.names[joint])) continue;
    tip = reach;
    path = [];
    for (let at = joint; at >= hand.wrist; at = skeleton.parents[at]) path.unshift(at);
  }
  const usual = HAND_LENGTH * frame.height;
  const length = Math.min(Math.max(tip, 0.9 * usual), 1.15 * usual);
  const chain = new Chain(frame.pose, path.length > 1 ? path : [hand.wrist]);
  const rings: Ring[] = [];
  for (let step = 0; step <= 9; ++step) {
    const position = step / 9;
    rings.push({
      centre: hand.place.clone().addScaledVector(hand.along, position * length),
      x: hand.across.clone().multiplyScalar(frame.height * interpolate(MITTEN, position, 1)),
      y: hand.normal.clone().multiplyScalar(frame.height * interpolate(MITTEN, position, 2)),
      power: 2.4,
      ...chain.influence(position * length, 0.012 * frame.height),
    });
  }
  builder.tube(rings, { side, segments: 12, bulge: [0.6, 0.7] });
}

/** A thumb for a hand whose skeleton has none. */
function addThumb(builder: MeshBuilder, frame: BodyFrame, hand: HandFrame, side: Side): void {
  const root = hand.place.clone().addScaledVector(hand.along, 0.022 * frame.height).addScaledVector(hand.across, 0.012 * frame.height);
  const ahead = hand.along.clone().addScaledVector(hand.across, 0.75).normalize();
  const x = hand.normal.clone().cross(ahead).normalize();
  const rings: Ring[] = [0, 0.5, 1].map((part) => ({
    centre: root.clone().addScaledVector(ahead, 0.034 * part * frame.height),
    x: x.clone().multiplyScalar(frame.height * (0.0088 - 0.002 * part)),
    y: hand.normal.clone().multiplyScalar(frame.height * (0.0088 - 0.002 * part)),
    joint: hand.wrist,
  }));
  builder.tube(rings, { side, segments: 8 });
}

export function addHand(builder: MeshBuilder, skeleton: Skeleton, frame: BodyFrame, arm: Limb): void {
  const wrist = arm.path[arm.path.length - 1];
  const fingers = fingersOf(skeleton, frame, wrist);
  const hand = handFrame(skeleton, frame, arm, fingers);
  const thumbs = fingers.filter((finger) => isThumb(skeleton, finger));
  const others = fingers.filter((finger) => !isThumb(skeleton, finger));
  if (others.length >= 2) {
    addPalm(builder, frame, hand, others.map((finger) => placeOf(frame.pose, finger[0])), arm.side);
    for (const finger of others) addFinger(builder, frame, hand, finger, arm.side, 0.0068);
  } else {
    addMitten(builder, skeleton, frame, hand, arm.side);
    if (thumbs.length === 0) addThumb(builder, frame, hand, arm.side);
  }
  for (const thumb of thumbs) {
    const path = placeOf(frame.pose, thumb[0]).distanceTo(hand.place) < 1e-4 ? thumb : [wrist, ...thumb];
    addFinger(builder, frame, hand, path, arm.side, 0.0078);
  }
}
