// What there is to see: where figures are and go, where they look, and words for it.
import { Vector3 } from "three";
import type { Player } from "../player";
import type { Scenery } from "./camera";
import type { Figure } from "./figure";
import type { Region } from "./labels";
import { placeOf } from "./rig";
import { FIGURE_SIZE } from "./space";

/** A body is this much larger than its joints. */
const MARGIN = 0.06 * FIGURE_SIZE;

/** The grid has numbers at most this many cells from where the first take begins. */
const MOST_CELLS = 500;

const place = new Vector3();

function addPoints(figure: Figure, pose: ArrayLike<number>, points: number[]): void {
  figure.rig.joints.forEach((_, joint) => {
    placeOf(pose, joint, place);
    for (const rise of [-MARGIN, MARGIN])
      for (const aside of [-MARGIN, MARGIN]) points.push(place.x + aside, Math.max(place.y + rise, 0), place.z - aside);
  });
}

/** The direction in which a figure looks in a pose; 0 looks along the z axis. */
function facingOf(figure: Figure, pose: ArrayLike<number>): number {
  const { plan, rig } = figure;
  if (!plan) return 0;
  const across = new Vector3();
  for (const [a, b] of [plan.legs, plan.arms])
    across.add(
      placeOf(pose, a.path[0]).sub(placeOf(pose, b.path[0])).multiplyScalar(a.side === "right" || b.side === "left" ? -1 : 1),
    );
  let facing = Math.atan2(-across.z, across.x);
  const sidesAreKnown = plan.legs.some((leg) => leg.side !== "middle");
  if (!sidesAreKnown) {
    const toes = new Vector3();
    for (const leg of plan.legs) {
      const ankle = leg.path[leg.path.length - 1];
      for (const toe of rig.children[ankle]) toes.add(placeOf(pose, toe)).sub(placeOf(pose, ankle));
    }
    if (toes.x * Math.sin(facing) + toes.z * Math.cos(facing) < 0) facing += Math.PI;
  }
  return facing;
}

export function gatherScenery(figures: readonly Figure[]): Scenery {
  const first: number[] = [];
  const everything: number[] = [];
  for (const figure of figures) {
    const [, ...poses] = figure.rig.poses;
    addPoints(figure, poses[0], first);
    for (const pose of poses) addPoints(figure, pose, everything);
  }
  const main = figures[0];
  const pose = main.rig.poses[1];
  const centre = placeOf(pose, main.root);
  centre.y = Math.max(centre.y, 0);
  return { figure: Float32Array.from(first), everything: Float32Array.from(everything), centre, facing: facingOf(main, pose) };
}

/** The cells of the grid that hold some points, as far as they are within reach of the origin of the picture. */
export function regionOf(points: ArrayLike<number>, cell: number): Region {
  const region = { minX: 0, maxX: 0, minZ: 0, maxZ: 0 };
  const reach = MOST_CELLS * cell;
  let isEmpty = true;
  for (let at = 0; at + 2 < points.length; at += 3) {
    const [x, z] = [points[at], points[at + 2]];
    // A frame with broken numbers must not decide where the grid is numbered.
    if (!(Math.abs(x) <= reach && Math.abs(z) <= reach)) continue;
    region.minX = isEmpty ? x : Math.min(region.minX, x);
    region.maxX = isEmpty ? x : Math.max(region.maxX, x);
    region.minZ = isEmpty ? z : Math.min(region.minZ, z);
    region.maxZ = isEmpty ? z : Math.max(region.maxZ, z);
    isEmpty = false;
  }
  // A line just inside is nearer to what happens than the next one outside.
  const [minX, minZ] = [Math.floor(region.minX / cell + 0.15), Math.floor(region.minZ / cell + 0.15)];
  return {
    minX,
    maxX: Math.max(Math.ceil(region.maxX / cell - 0.15), minX + 1),
    minZ,
    maxZ: Math.max(Math.ceil(region.maxZ / cell - 0.15), minZ + 1),
  };
}

/** Words for the picture, for people who do not see it. */
export function describe(player: Player): string {
  const names = player.takes.map((take) => take.name).join(", ");
  const figures = player.takes.reduce((sum, take) => sum + Math.max(take.models.length, 1), 0);
  return `${names}: ${figures === 1 ? "one figure" : `${figures} figures`} in 3D, shown as ${player.look}`;
}
