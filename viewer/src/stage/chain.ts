// A way along joints: where a part of it lies, and which joints move that part.
import { Vector3 } from "three";
import { placeOf } from "./rig";

export interface Influence {
  joint: number;
  second?: number;
  weight?: number;
}

export class Chain {
  readonly length: number;
  private readonly joints: readonly number[];
  private readonly places: readonly Vector3[];
  /** The distance of each joint from the first one, along the way. */
  private readonly reaches: number[];

  constructor(pose: ArrayLike<number>, joints: readonly number[]) {
    this.joints = joints;
    this.places = joints.map((joint) => placeOf(pose, joint));
    this.reaches = [0];
    for (let index = 1; index < joints.length; ++index)
      this.reaches.push(this.reaches[index - 1] + this.places[index].distanceTo(this.places[index - 1]));
    this.length = this.reaches[joints.length - 1];
  }

  reach(index: number): number {
    return this.reaches[index];
  }

  /** The place at a distance from the first joint. */
  at(distance: number): Vector3 {
    let index = 0;
    while (index + 2 < this.joints.length && this.reaches[index + 1] < distance) ++index;
    if (index + 1 >= this.joints.length) return this.places[0].clone();
    const bone = this.reaches[index + 1] - this.reaches[index];
    const part = bone > 0 ? (distance - this.reaches[index]) / bone : 0;
    return this.places[index].clone().lerp(this.places[index + 1], part);
  }

  /** The joints that move what is at a distance; near a joint, its bend is shared within `blend`. */
  influence(distance: number, blend: number): Influence {
    let joint = 0;
    for (let index = 1; index < this.joints.length; ++index) {
      const from = this.reaches[index] - blend;
      const part = (distance - from) / (2 * blend);
      if (part <= 0) break;
      if (part < 1)
        return { joint: this.joints[joint], second: this.joints[index], weight: part * part * (3 - 2 * part) };
      joint = index;
    }
    return { joint: this.joints[joint] };
  }
}

/** The value of a table of [position, value, ...] rows at a position, by a smooth curve through the rows. */
export function interpolate(table: readonly (readonly number[])[], position: number, column = 1): number {
  let index = 0;
  while (index + 2 < table.length && table[index + 1][0] < position) ++index;
  const a = table[index];
  const b = table[index + 1] ?? a;
  const width = b[0] - a[0];
  if (!(width > 0)) return a[column];
  const before = table[index - 1] ?? a;
  const after = table[index + 2] ?? b;
  const part = Math.min(Math.max((position - a[0]) / width, 0), 1);
  const startSlope = ((b[column] - before[column]) / (b[0] - before[0])) * width;
  const endSlope = ((after[column] - a[column]) / (after[0] - a[0])) * width;
  const square = part * part;
  const cube = square * part;
  return (
    (2 * cube - 3 * square + 1) * a[column] +
    (cube - 2 * square + part) * startSlope +
    (3 * square - 2 * cube) * b[column] +
    (cube - square) * endSlope
  );
}
