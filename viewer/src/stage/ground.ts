// The ground: a grid that fades out with distance.
import { Vector3, type Group } from "three";
import { Lines } from "./lines";
import type { Theme } from "./theme";

/** Lines to each side of the middle of the grid. */
const REACH = 30;

/** The lines of a grid around the origin, as pairs of points. `skips` leaves out each line of a wider grid. */
function gridLines(reach: number): Float32Array {
  const points: number[] = [];
  for (let line = -reach; line <= reach; ++line) {
    points.push(-reach, 0, line, 0, 0, line, 0, 0, line, reach, 0, line);
    points.push(line, 0, -reach, line, 0, 0, line, 0, 0, line, 0, reach);
  }
  return Float32Array.from(points);
}

/** The width of the grid's cells: one that gives a calm picture from a distance. */
export function cellFor(cell: number, distance: number): number {
  let width = cell;
  while (width * 12 < distance) width *= 5;
  return width;
}

export class Ground {
  private readonly fine = new Lines(0.5);
  private readonly coarse = new Lines(0.65);
  private readonly cell: number;
  private readonly origin: readonly [number, number];

  constructor(group: Group, cell: number, origin: readonly [number, number]) {
    this.cell = cell;
    this.origin = origin;
    for (const lines of [this.fine, this.coarse]) {
      lines.setPairs(gridLines(REACH));
      group.add(lines.mesh);
      lines.mesh.renderOrder = -2;
    }
  }

  setTheme(theme: Theme): void {
    this.fine.setColour(theme.line, theme.lineOpacity);
    this.coarse.setColour(theme.line, theme.lineOpacity);
  }

  /** Brings the grid to where the camera looks. */
  update(focus: Vector3, distance: number): void {
    const cell = cellFor(this.cell, distance);
    this.place(this.fine, cell, focus);
    this.place(this.coarse, 5 * cell, focus);
    const reach = Math.min(Math.max(1.5 * distance, 3 * cell), 0.9 * REACH * cell);
    this.fine.setFade(focus, 0.15 * reach, reach);
    this.coarse.setFade(focus, 0.15 * reach, 1.5 * reach);
  }

  private place(lines: Lines, cell: number, focus: Vector3): void {
    const snap = (value: number, origin: number): number =>
      (Math.round(value / cell + (origin * this.cell) / cell) - (origin * this.cell) / cell) * cell;
    lines.mesh.scale.setScalar(cell);
    lines.mesh.position.set(snap(focus.x, this.origin[0]), 0, snap(focus.z, this.origin[1]));
  }
}
