// What the page offers to scripts: window.take, and window.takes if there are several.
import { Pose, TRANSFORM } from "./data/pose";
import type { Take } from "./data/take";
import type { Player } from "./player";

export interface TakeApi {
  /** The names of the joints; all are different. */
  readonly names: readonly string[];
  /** The number of frames. */
  readonly frames: number;
  /** Frames per second; 0 for a take without motion. */
  readonly fps: number;
  /** Shows a frame, counted from 0, and pauses. A number outside the take gives its first or last frame. */
  goTo(frame: number): void;
  play(): void;
  pause(): void;
  /** The positions of the joints in the frame that is shown: x, y, z of each joint, in units of length. */
  positions(): Float32Array;
}

declare global {
  interface Window {
    take: TakeApi;
    takes: readonly TakeApi[];
  }
}

function apiOf(player: Player, take: Take): TakeApi {
  const pose = new Pose(take);
  return Object.freeze({
    names: Object.freeze(take.joints.map((joint) => joint.name)),
    frames: take.frames,
    fps: take.fps,
    goTo: (frame: number) => {
      player.pause();
      player.seek(take.seconds(take.clampRow(Math.round(frame) || 0)));
    },
    play: () => player.play(),
    pause: () => player.pause(),
    positions: () => {
      const world = pose.at(player.row(take));
      const positions = new Float32Array(3 * take.joints.length);
      for (let joint = 0; joint < take.joints.length; ++joint)
        for (let axis = 0; axis < 3; ++axis) positions[3 * joint + axis] = world[TRANSFORM * joint + 4 * axis + 3];
      return positions;
    },
  });
}

/** Sets window.take and window.takes. */
export function offerApi(player: Player): void {
  window.takes = Object.freeze(player.takes.map((take) => apiOf(player, take)));
  window.take = window.takes[0];
}
