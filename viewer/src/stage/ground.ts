// The ground: a grid that fades out with distance.
import { Vector3, type Group } from "three";
import { Lines } from "./lines";
import type { Theme } from "./theme";

/** The lines of a grid in a circle around the origin, as pairs of points. */
export function gridLines(reach: number): Float32Array {
  const points: number[] = [];
  for (let line = 1 - reach; line < reach; ++line) {
    const half = Math.sqrt(reach * reach - line * line);
    points.push(-half, 0, line, half, 0, line, line, 0, -half, line, 0, half);
  }
  return Float32Array.from(points);
}

/** The width of the grid's cells: one that gives a calm picture from a distance. */
function cellFor(cell: number, distance: number): number {
  let width = cell;
  while (width * 12 < distance) width *= 5;
  return width;
}

/** One grid: its lines reach as far as they are seen. */
class Grid {
  readonly lines: Lines;
  private reach = 0;

  constructor(width: number) {
    this.lines = new Lines(width);
    this.lines.mesh.renderOrder = -2;
  }

  /** `origin` is a place where lines cross. */
  update(cell: number, origin: readonly [number, number], focus: Vector3, radius: number): void {
    const reach = Math.ceil(radius / cell) + 1;
    if (reach !== this.reach) {
      this.reach = reach;
      this.lines.setPairs(gridLines(reach));
    }
    const snap = (value: number, from: number): number => Math.round((value - from) / cell) * cell + from;
    this.lines.mesh.scale.setScalar(cell);
    this.lines.mesh.position.set(snap(focus.x, origin[0]), 0, snap(focus.z, origin[1]));
    this.lines.setFade(focus, 0.1 * radius, radius);
  }
}

export class Ground {
  private readonly fine = new Grid(0.5);
  private readonly coarse = new Grid(0.6);
  private readonly cell: number;
  private readonly origin: readonly [number, number];

  /** `origin` is the number of cells from the take's own origin to that of the picture. */
  constructor(group: Group, cell: number, origin: readonly [number, number]) {
    this.cell = cell;
    this.origin = [-origin[0] * cell, -origin[1] * cell];
    group.add(this.fine.lines.mesh, this.coarse.lines.mesh);
  }

  setTheme(theme: Theme): void {
    this.fine.lines.setColour(theme.line, theme.lineOpacity);
    this.coarse.lines.setColour(theme.line, theme.lineOpacity);
  }

  /** Brings the grid to where the camera looks. */
  update(focus: Vector3, distance: number): void {
    const cell = cellFor(this.cell, distance);
    const radius = Math.max(1.3 * distance, 3 * cell);
    this.fine.update(cell, this.origin, focus, radius);
    this.coarse.update(5 * cell, this.origin, focus, 1.35 * radius);
  }
}
