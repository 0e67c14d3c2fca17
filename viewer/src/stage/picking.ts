// Finds the joint under the pointer, from where the joints are in the picture.
import { Vector3, type PerspectiveCamera } from "three";
import { TRANSFORM } from "../data/pose";
import type { Figure } from "./figure";

/** Places of joints in pixels: x, y, and the depth, which is negative behind the camera. */
export const SCREEN = 3;

export interface Target {
  readonly parents: readonly number[];
  readonly isEnd: readonly boolean[];
  /** SCREEN numbers a joint. */
  readonly screen: ArrayLike<number>;
  /** How thick bones look: pixels at depth 1. */
  readonly thickness: number;
}

export interface Hit {
  target: number;
  joint: number;
}

/** The part of the way from a to b that is nearest to a point, from 0 to 1. */
function nearestPart(x: number, y: number, ax: number, ay: number, bx: number, by: number): number {
  const dx = bx - ax;
  const dy = by - ay;
  const square = dx * dx + dy * dy;
  return square > 0 ? Math.min(Math.max(((x - ax) * dx + (y - ay) * dy) / square, 0), 1) : 0;
}

/**
 * Returns the joint that is meant by a point of the picture: an end of the bone under it, or of a
 * bone within `reach` pixels. Nearer figures win.
 */
export function pick(targets: readonly Target[], x: number, y: number, reach: number): Hit | null {
  let best: Hit | null = null;
  let bestScore = Infinity;
  targets.forEach((target, index) => {
    const { screen, parents } = target;
    for (let joint = 0; joint < parents.length; ++joint) {
      const parent = parents[joint] >= 0 ? parents[joint] : joint;
      const [a, b] = [SCREEN * parent, SCREEN * joint];
      if (screen[a + 2] <= 0 || screen[b + 2] <= 0) continue;
      const part = nearestPart(x, y, screen[a], screen[a + 1], screen[b], screen[b + 1]);
      const depth = screen[a + 2] + part * (screen[b + 2] - screen[a + 2]);
      const away = Math.hypot(
        x - screen[a] - part * (screen[b] - screen[a]),
        y - screen[a + 1] - part * (screen[b + 1] - screen[a + 1]),
      );
      const outside = Math.max(away - target.thickness / depth, 0);
      if (outside > reach) continue;
      const chosen = part < 0.5 || target.isEnd[joint] ? parent : joint;
      const toJoint = Math.hypot(x - screen[SCREEN * chosen], y - screen[SCREEN * chosen + 1]);
      // Of the bones under the pointer, the nearest one to the camera and to its middle line.
      const score = outside + 0.15 * away + 0.05 * toJoint + 20 * depth;
      if (score < bestScore) {
        bestScore = score;
        best = { target: index, joint: chosen };
      }
    }
  });
  return best;
}

const place = new Vector3();

/** Projects the joints of a figure into a picture of the given size. */
export function project(figure: Figure, camera: PerspectiveCamera, width: number, height: number, out: Float32Array): void {
  for (let joint = 0; joint < figure.rig.joints.length; ++joint) {
    const at = TRANSFORM * joint;
    place.set(figure.pose[at + 3], figure.pose[at + 7], figure.pose[at + 11]).applyMatrix4(camera.matrixWorldInverse);
    out[SCREEN * joint + 2] = -place.z;
    place.applyMatrix4(camera.projectionMatrix);
    out[SCREEN * joint] = (place.x * 0.5 + 0.5) * width;
    out[SCREEN * joint + 1] = (0.5 - place.y * 0.5) * height;
  }
}
