// Computes where the joints are in the world.
import { CHANNELS } from "./record";
import type { Joint, Take } from "./take";

/** Numbers of a transform: three rows of four, for column vectors; the fourth column is the place. */
export const TRANSFORM = 12;

const RADIANS = Math.PI / 180;

/**
 * Computes the world transform of each joint from six numbers a joint (see TakeRecord). A local
 * rotation is Rz * Ry * Rx, so that x turns first.
 */
export function computeWorld(joints: readonly Joint[], locals: Float64Array, world: Float64Array): void {
  for (let joint = 0; joint < joints.length; ++joint) {
    const channel = CHANNELS * joint;
    const px = locals[channel];
    const py = locals[channel + 1];
    const pz = locals[channel + 2];
    const cx = Math.cos(locals[channel + 3] * RADIANS);
    const sx = Math.sin(locals[channel + 3] * RADIANS);
    const cy = Math.cos(locals[channel + 4] * RADIANS);
    const sy = Math.sin(locals[channel + 4] * RADIANS);
    const cz = Math.cos(locals[channel + 5] * RADIANS);
    const sz = Math.sin(locals[channel + 5] * RADIANS);
    const m00 = cz * cy;
    const m01 = cz * sy * sx - sz * cx;
    const m02 = cz * sy * cx + sz * sx;
    const m10 = sz * cy;
    const m11 = sz * sy * sx + cz * cx;
    const m12 = sz * sy * cx - cz * sx;
    const m20 = -sy;
    const m21 = cy * sx;
    const m22 = cy * cx;
    const at = TRANSFORM * joint;
    const parent = joints[joint].parent;
    if (parent < 0) {
      world[at] = m00;
      world[at + 1] = m01;
      world[at + 2] = m02;
      world[at + 3] = px;
      world[at + 4] = m10;
      world[at + 5] = m11;
      world[at + 6] = m12;
      world[at + 7] = py;
      world[at + 8] = m20;
      world[at + 9] = m21;
      world[at + 10] = m22;
      world[at + 11] = pz;
      continue;
    }
    for (let row = 0; row < 3; ++row) {
      const from = TRANSFORM * parent + 4 * row;
      const a = world[from];
      const b = world[from + 1];
      const c = world[from + 2];
      const to = at + 4 * row;
      world[to] = a * m00 + b * m10 + c * m20;
      world[to + 1] = a * m01 + b * m11 + c * m21;
      world[to + 2] = a * m02 + b * m12 + c * m22;
      world[to + 3] = a * px + b * py + c * pz + world[from + 3];
    }
  }
}

/** The pose of a take, evaluated when it is asked for and kept until another frame is asked for. */
export class Pose {
  readonly take: Take;
  private readonly locals: Float64Array;
  private readonly world: Float64Array;
  private row = -1;

  constructor(take: Take) {
    this.take = take;
    this.locals = new Float64Array(CHANNELS * take.joints.length);
    this.world = new Float64Array(TRANSFORM * take.joints.length);
  }

  /** The world transforms in a frame, TRANSFORM numbers a joint. Valid until the next call. */
  at(row: number): Float64Array {
    if (row !== this.row) {
      this.take.readRow(row, this.locals);
      computeWorld(this.take.joints, this.locals, this.world);
      this.row = row;
    }
    return this.world;
  }

  /** The world transforms of the base pose, in an array of their own. */
  static rest(take: Take): Float64Array {
    const world = new Float64Array(TRANSFORM * take.joints.length);
    computeWorld(take.joints, take.rest, world);
    return world;
  }
}
