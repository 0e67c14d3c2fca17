// The bar below the picture: play, step, time, time line, speed.
import { type Player, SPEEDS } from "../player";
import { button, leaveFocus, make } from "./dom";
import { FrameField } from "./frame_field";
import { icon, setIcon } from "./icons";
import { Scrubber } from "./scrubber";
import { speedText } from "./text";

export interface BarActions {
  /** Folds the panel away or brings it back. */
  togglePanel(): void;
  showHelp(): void;
}

function playButton(player: Player): HTMLElement {
  const image = icon("play");
  const element = button({ id: "play", class: "tool play" }, () => player.toggle(), image);
  const show = (): void => {
    const label = player.playing ? "Pause" : "Play";
    setIcon(image, player.playing ? "pause" : "play");
    element.setAttribute("aria-label", label);
    element.title = `${label} (space)`;
    element.disabled = !player.canPlay;
  };
  player.onChange((change) => change === "settings" && show());
  show();
  return element;
}

function stepButton(player: Player, frames: 1 | -1): HTMLElement {
  const [id, label, key] = frames < 0 ? ["back", "Step back", "←"] : ["forward", "Step forward", "→"];
  const element = button(
    { id: `step-${id}`, class: "tool", "aria-label": label, title: `${label} (${key})` },
    () => player.step(frames),
    icon(frames < 0 ? "back" : "forward"),
  );
  element.disabled = !player.canPlay;
  return element;
}

function speedChoice(player: Player): HTMLElement {
  const select = make("select", { id: "speed", "aria-label": "Speed", title: "Speed ([ and ])" });
  for (const speed of SPEEDS) select.append(make("option", { value: speed }, speedText(speed)));
  let usedPointer = false;
  select.addEventListener("pointerdown", () => (usedPointer = true));
  select.addEventListener("keydown", () => (usedPointer = false));
  select.addEventListener("change", () => {
    player.speed = Number(select.value);
    if (usedPointer) select.blur();
  });
  const show = (): void => {
    select.value = String(player.speed);
    select.disabled = !player.canPlay;
  };
  player.onChange((change) => change === "settings" && show());
  show();
  return select;
}

function loopButton(player: Player): HTMLElement {
  const element = button(
    { id: "loop", class: "tool worded", title: "Begin again at the end (L)" },
    () => (player.loop = !player.loop),
    icon("loop"),
    make("span", { class: "word" }, "Loop"),
  );
  const show = (): void => element.setAttribute("aria-pressed", String(player.loop));
  element.disabled = !player.canPlay;
  player.onChange((change) => change === "settings" && show());
  show();
  return element;
}

export function createBar(player: Player, actions: BarActions): HTMLElement {
  const help = button(
    { id: "help-button", class: "tool", "aria-label": "Help", title: "Keys and gestures (?)" },
    () => actions.showHelp(),
    "?",
  );
  const panel = button(
    { id: "panel-button", class: "tool", "aria-label": "Panel", "aria-controls": "panel", title: "Panel (P)" },
    () => actions.togglePanel(),
    icon("panel"),
  );
  const element = make(
    "section",
    { id: "bar", "aria-label": "Time" },
    make("div", { class: "steps" }, playButton(player), stepButton(player, -1), stepButton(player, 1)),
    new FrameField(player).element,
    new Scrubber(player).element,
    make("div", { class: "choices" }, speedChoice(player), loopButton(player), help, panel),
  );
  leaveFocus(element);
  return element;
}
