// The controls around the picture.
import type { Player } from "../player";
import type { Stage } from "../stage/stage";

/** Fills the page with the bar below the picture and the panel at its right. */
export function createUi(_player: Player, _stage: Stage): void {}

/** Says why nothing can be shown. */
export function showProblem(message: string): void {
  const text = document.createElement("p");
  text.setAttribute("role", "alert");
  text.textContent = message;
  document.body.replaceChildren(text);
}
