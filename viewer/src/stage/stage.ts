// The picture: figures on the ground, seen by a camera.
import type { Player } from "../player";

export const VIEWS = ["home", "front", "side", "top"] as const;
export type View = (typeof VIEWS)[number];

export interface Stage {
  /** Draws the frame that the player shows. */
  draw(): void;
  /** Moves the camera. "home" is where it was at first. */
  view(view: View): void;
}

/** Fills `container` with the picture. `request` asks for a call of draw(). */
export function createStage(container: HTMLElement, _player: Player, _request: () => void): Stage {
  container.append(document.createElement("canvas"));
  return { draw() {}, view() {} };
}
