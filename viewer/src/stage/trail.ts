// The way of a joint through a whole take.
import { TRANSFORM, computeWorld } from "../data/pose";
import { CHANNELS } from "../data/record";
import type { Joint, Take } from "../data/take";
import { placeInSpace, type Space } from "./space";

/** A line has at most this many points; longer takes are shown by every second frame, or third, ... */
const MOST_POINTS = 4000;

/** The joint with all joints above it, as a skeleton of its own. */
function ancestry(take: Take, joint: number): { joints: Joint[]; sources: number[] } {
  const sources: number[] = [];
  for (let at = joint; at >= 0; at = take.joints[at].parent) sources.push(at);
  sources.reverse();
  return { sources, joints: sources.map((source, index) => ({ ...take.joints[source], index, parent: index - 1 })) };
}

/** The frames from one point of a trail to the next. */
export function trailStep(take: Take, most = MOST_POINTS): number {
  return Math.max(1, Math.ceil(take.frames / most));
}

/** The places of a joint in the picture, three numbers a frame. */
export function trailOf(take: Take, joint: number, space: Space, most = MOST_POINTS): Float32Array {
  const { joints, sources } = ancestry(take, joint);
  const step = trailStep(take, most);
  const count = Math.ceil(take.frames / step);
  const points = new Float32Array(3 * count);
  const locals = new Float64Array(CHANNELS * joints.length);
  const world = new Float64Array(TRANSFORM * joints.length);
  const place = new Float64Array(TRANSFORM);
  for (let index = 0; index < count; ++index) {
    const row = Math.min(index * step, take.frames - 1);
    for (let at = 0; at < joints.length; ++at)
      for (let channel = 0; channel < CHANNELS; ++channel)
        locals[CHANNELS * at + channel] = take.value(CHANNELS * sources[at] + channel, row);
    computeWorld(joints, locals, world);
    placeInSpace(space, world, TRANSFORM * (joints.length - 1), place, 0);
    points[3 * index] = place[3];
    points[3 * index + 1] = place[7];
    points[3 * index + 2] = place[11];
  }
  return points;
}

/** The same way as it looks on the ground. */
export function onGround(points: Float32Array): Float32Array {
  const flat = points.slice();
  for (let at = 1; at < flat.length; at += 3) flat[at] = 0.002;
  return flat;
}
