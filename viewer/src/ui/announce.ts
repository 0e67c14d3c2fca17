// Tells a screen reader what changed in the picture: the pick and the pause, but no frames.
import type { Player } from "../player";
import { changingText, make, setText } from "./dom";
import { upTo } from "./text";

// Quick changes, such as dragging the time line, are told once, when they have come to rest.
const REST_MILLISECONDS = 400;

export function createAnnouncer(player: Player): HTMLElement {
  const text = changingText();
  const element = make("div", { role: "status", id: "announcer", class: "heard" }, text);
  let told = { playing: player.playing, pick: player.pick };
  let timer: ReturnType<typeof setTimeout> | undefined;

  const tell = (): void => {
    const sentences: string[] = [];
    const { pick, playing } = player;
    if (pick !== told.pick)
      sentences.push(pick ? `${player.takes[pick.take].joints[pick.joint].name} is picked.` : "No joint is picked.");
    if (playing !== told.playing)
      sentences.push(playing ? "Playing." : `Paused at frame ${upTo(player.take.frameNumber(player.row()), 3)}.`);
    told = { playing, pick };
    // The tree says itself where its focus is.
    const isHeard = document.activeElement?.getAttribute("role") === "treeitem" && pick && sentences.length === 1;
    if (sentences.length > 0 && !(isHeard && sentences[0].endsWith("is picked."))) setText(text, sentences.join(" "));
  };
  player.onChange((change) => {
    if (change === "time") return;
    clearTimeout(timer);
    timer = setTimeout(tell, REST_MILLISECONDS);
  });
  return element;
}
