// The space of the picture: y points up, the ground is at 0, and the figure of the first take is
// about as tall as a person in metres, whatever the unit of the file is.
import { Pose, TRANSFORM } from "../data/pose";
import type { Take } from "../data/take";

/** The height that the figure of the first take has in the picture. */
export const FIGURE_SIZE = 1.75;

/** How the numbers of a take become places in the picture: turned, then scaled, then moved. */
export interface Space {
  readonly scale: number;
  /** For each axis of the picture, the axis of the take that it shows, and its sign. */
  readonly axes: readonly [number, number, number];
  readonly signs: readonly [number, number, number];
  readonly offset: [number, number, number];
}

const TURNS = {
  x: { axes: [2, 0, 1], signs: [1, 1, 1] },
  y: { axes: [0, 1, 2], signs: [1, 1, 1] },
  z: { axes: [0, 2, 1], signs: [1, 1, -1] },
} as const;

export function spaceOf(take: { up: "x" | "y" | "z" }, scale: number): Space {
  const turn = TURNS[take.up] ?? TURNS.y;
  return { scale, axes: turn.axes, signs: turn.signs, offset: [0, 0, 0] };
}

/** Writes the transform of one joint in the picture: its turn stays without scale. */
export function placeInSpace(space: Space, world: ArrayLike<number>, from: number, out: Float64Array, to: number): void {
  for (let row = 0; row < 3; ++row) {
    const source = from + 4 * space.axes[row];
    const sign = space.signs[row];
    const target = to + 4 * row;
    out[target] = sign * world[source];
    out[target + 1] = sign * world[source + 1];
    out[target + 2] = sign * world[source + 2];
    out[target + 3] = sign * space.scale * world[source + 3] + space.offset[row];
  }
}

/** The transforms of all joints in some frames that are spread over the take. */
export interface Samples {
  readonly rows: readonly number[];
  readonly worlds: readonly Float64Array[];
}

export function sampleTake(take: Take, most: number): Samples {
  const count = Math.min(most, take.frames);
  const rows = Array.from({ length: count }, (_, index) =>
    count > 1 ? Math.round((index * (take.frames - 1)) / (count - 1)) : 0,
  );
  const pose = new Pose(take);
  return { rows, worlds: rows.map((row) => pose.at(row).slice()) };
}

/** The number in the middle of some numbers; 0 if there are none. */
export function median(numbers: readonly number[]): number {
  const sorted = [...numbers].sort((a, b) => a - b);
  return sorted.length > 0 ? sorted[sorted.length >> 1] : 0;
}

/** The size of the figures of a take in its own unit: the largest side of the box around the tallest one. */
function figureSize(take: Take, samples: Samples): number {
  const models = Math.max(take.models.length, 1);
  const extents = samples.worlds.map((world) => {
    let largest = 0;
    for (let axis = 0; axis < 3; ++axis) {
      const low = new Float64Array(models).fill(Infinity);
      const high = new Float64Array(models).fill(-Infinity);
      for (const { index, model } of take.joints) {
        const value = world[TRANSFORM * index + 4 * axis + 3];
        low[model] = Math.min(low[model], value);
        high[model] = Math.max(high[model], value);
      }
      for (let model = 0; model < models; ++model) largest = Math.max(largest, high[model] - low[model]);
    }
    return largest;
  });
  const size = median(extents);
  return size > 0 && Number.isFinite(size) ? size : 0;
}

/** The height of the ground: where the lowest joints are, or 0 if the takes stand there. */
export function groundHeight(lowest: readonly number[], size: number): number {
  const sorted = [...lowest].sort((a, b) => a - b);
  // A few frames may lie below the ground because of noise.
  const low = sorted[Math.floor(0.1 * (sorted.length - 1))] ?? 0;
  return Math.abs(low) < 0.05 * size ? 0 : low;
}

/** The width of a cell of the grid in the picture, and in metres; 0 metres if the unit is not known. */
export function gridCell(metre: number): { cell: number; metres: number } {
  if (metre <= 0) return { cell: FIGURE_SIZE / 4, metres: 0 };
  let metres = 1;
  // A mouse or a tower needs other cells.
  while (metres * metre > 4) metres /= 10;
  while (metres * metre < 0.3) metres *= 10;
  return { cell: metres * metre, metres };
}

export interface World {
  readonly spaces: readonly Space[];
  /** The cells of the grid. */
  readonly grid: { readonly cell: number; readonly metres: number };
  /** What has to be added to places in the picture, in whole cells of the grid, to get those of the first take. */
  readonly origin: readonly [number, number];
}

interface Measured {
  take: Take;
  samples: Samples;
  size: number;
}

/** A single joint, or a figure that has no size, is shown as if it were as large as a person. */
function sizeOr(measured: Measured): number {
  return measured.size || (measured.take.unit > 0 ? FIGURE_SIZE / measured.take.unit : 100);
}

/** The factor from a take's unit to the unit of the first take. */
function relativeScale(first: Measured, other: Measured): number {
  if (first.take.unit > 0 && other.take.unit > 0) return other.take.unit / first.take.unit;
  const ratio = sizeOr(first) / sizeOr(other);
  // Without units, the same numbers mean the same lengths, unless one figure were a giant then.
  return ratio > 0.4 && ratio < 2.5 ? 1 : ratio;
}

/** Finds the spaces of all takes, so that they stand on one ground near the middle of the picture. */
export function arrange(takes: readonly Take[], samples: readonly Samples[]): World {
  const measured = takes.map((take, index) => ({
    take,
    samples: samples[index],
    size: figureSize(take, samples[index]),
  }));
  const first = measured[0];
  const scale = FIGURE_SIZE / sizeOr(first);
  const metre = first.take.unit > 0 ? scale / first.take.unit : 0;
  const spaces = measured.map((one) => spaceOf(one.take, scale * relativeScale(first, one)));
  const lowest: number[] = [];
  const out = new Float64Array(TRANSFORM);
  measured.forEach((one, index) => {
    for (const world of one.samples.worlds) {
      let low = Infinity;
      for (const joint of one.take.joints) {
        placeInSpace(spaces[index], world, TRANSFORM * joint.index, out, 0);
        low = Math.min(low, out[7]);
      }
      lowest.push(low);
    }
  });
  const ground = groundHeight(lowest, FIGURE_SIZE);
  const grid = gridCell(metre);
  const { cell } = grid;
  placeInSpace(spaces[0], first.samples.worlds[0], 0, out, 0);
  const origin: [number, number] = [Math.round(out[3] / cell), Math.round(out[11] / cell)];
  for (const space of spaces) {
    space.offset[0] -= origin[0] * cell;
    space.offset[1] -= ground;
    space.offset[2] -= origin[1] * cell;
  }
  return { spaces, grid, origin };
}
