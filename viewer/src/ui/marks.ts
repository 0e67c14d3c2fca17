// Small marks that tell sides of the body and takes apart.
import type { Joint } from "../data/take";
import type { Player } from "../player";
import { make } from "./dom";

/** The mark of a side of the body: half a disc, at the left in blue or at the right in orange. */
export function sideMark(side: Joint["side"]): HTMLElement {
  const mark = make("span", { class: `side ${side}`, "aria-hidden": "true" });
  if (side !== "middle") mark.title = side === "left" ? "Left side" : "Right side";
  return mark;
}

// The tones of the style sheet are those of the figures: the first one is that of the main take.
const OTHER_TONES = 3;

/** The tone in which the picture draws one of several takes. */
export function toneOf(index: number, mainTake: number): number {
  if (index === mainTake) return 0;
  const others = index < mainTake ? index : index - 1;
  return 1 + (others % OTHER_TONES);
}

/** The mark of one of several takes, in the tone of its figure. */
export function takeMark(player: Player, index: number): HTMLElement {
  const mark = make("span", { class: "take-mark", "aria-hidden": "true" });
  const show = (): void => mark.setAttribute("data-tone", String(toneOf(index, player.mainTake)));
  player.onChange((change) => change === "settings" && show());
  show();
  return mark;
}
