// The keys of the page. The help lists the same table, so that it is always true.
import { LOOKS, type Player, SPEEDS } from "../player";
import type { Stage, View } from "../stage/stage";
import type { Panel, TabName } from "./panel";
import { VIEW_KEYS } from "./views";

export interface Shortcut {
  /** Values of KeyboardEvent.key, letters in lower case, with "Shift+" where that matters. */
  readonly keys: readonly string[];
  /** The keys as the help writes them. */
  readonly shown: readonly string[];
  readonly text: string;
  run(key: string): void;
}

export interface ShortcutGroup {
  readonly title: string;
  readonly shortcuts: readonly Shortcut[];
}

function shortcut(keys: string[], shown: string[], text: string, run: (key: string) => void): Shortcut {
  return { keys, shown, text, run };
}

/** The next higher or lower speed. */
export function speedBeside(speed: number, direction: 1 | -1): number {
  const others = SPEEDS.filter((other) => (direction > 0 ? other > speed : other < speed));
  return (direction > 0 ? others[0] : others[others.length - 1]) ?? speed;
}

function timeShortcuts(player: Player): Shortcut[] {
  const step = (key: string): void => player.step((key.endsWith("Left") ? -1 : 1) * (key.startsWith("Shift") ? 10 : 1));
  return [
    shortcut([" "], ["Space"], "Play or pause", () => player.toggle()),
    shortcut(["ArrowLeft", "ArrowRight"], ["←", "→"], "One frame back or on", step),
    shortcut(["Shift+ArrowLeft", "Shift+ArrowRight"], ["Shift ←", "Shift →"], "Ten frames back or on", step),
    shortcut(["Home", "End"], ["Home", "End"], "First or last frame", (key) =>
      player.goTo(key === "Home" ? 0 : player.take.frames - 1),
    ),
    shortcut(["[", "]", ",", "."], ["[", "]", ",", "."], "Slower or faster", (key) => {
      player.speed = speedBeside(player.speed, key === "]" || key === "." ? 1 : -1);
    }),
    shortcut(["l"], ["L"], "Begin again at the end, or stop there", () => (player.loop = !player.loop)),
  ];
}

function pictureShortcuts(player: Player, stage: Stage): Shortcut[] {
  const views = Object.fromEntries(Object.entries(VIEW_KEYS).map(([view, key]) => [key, view as View]));
  return [
    shortcut(
      ["1", "2", "3"],
      ["1", "2", "3"],
      "Body, bones, joints alone",
      (key) => (player.look = LOOKS[Number(key) - 1]),
    ),
    shortcut(["4", "5", "6"], ["4", "5", "6"], "From the front, the side, the top", (key) => stage.view(views[key])),
    shortcut(["0", "h"], ["0", "H"], "Back to the first view", () => stage.view("home")),
    shortcut(["f"], ["F"], "Keep the figure in the middle", () => (player.follow = !player.follow)),
  ];
}

const TURN = Math.PI / 24;
const NEARER = 1.15;

function cameraShortcuts(stage: Stage): Shortcut[] {
  const turns: Record<string, [number, number]> = { a: [-TURN, 0], d: [TURN, 0], w: [0, TURN], s: [0, -TURN] };
  return [
    shortcut(["a", "d"], ["A", "D"], "Turn the camera to the left or right", (key) => stage.orbit(...turns[key])),
    shortcut(["w", "s"], ["W", "S"], "Raise or lower the camera", (key) => stage.orbit(...turns[key])),
    shortcut(["+", "=", "-"], ["+", "\u2212"], "Come closer or go back", (key) =>
      stage.zoom(key === "-" ? 1 / NEARER : NEARER),
    ),
  ];
}

const TAB_KEYS: Record<string, TabName> = { j: "joints", c: "curves", i: "findings", t: "facts" };

function panelShortcuts(player: Player, panel: Panel, showHelp: () => void): Shortcut[] {
  return [
    shortcut(["j", "c", "i", "t"], ["J", "C", "I", "T"], "Joints, curves, findings, facts", (key) =>
      panel.goTo(TAB_KEYS[key]),
    ),
    shortcut(["/"], ["/"], "Search joints", () => panel.search()),
    shortcut(["p"], ["P"], "Open or fold the panel", () => panel.toggle()),
    shortcut(["Escape"], ["Esc"], "Let go of the joint", () => (player.pick = null)),
    shortcut(["?"], ["?"], "This help", showHelp),
  ];
}

export function allShortcuts(player: Player, stage: Stage, panel: Panel, showHelp: () => void): ShortcutGroup[] {
  return [
    { title: "Time", shortcuts: timeShortcuts(player) },
    { title: "Picture", shortcuts: [...pictureShortcuts(player, stage), ...cameraShortcuts(stage)] },
    { title: "Panel", shortcuts: panelShortcuts(player, panel, showHelp) },
  ];
}

const ARROWS = ["ArrowLeft", "ArrowRight", "ArrowUp", "ArrowDown", "Home", "End"];

/** What kind of control has the focus. */
export type FocusKind = "text" | "choice" | "slider" | "radio" | "button" | "none";

/** Whether a key belongs to the control that has the focus, and not to the page. */
export function isKept(kind: FocusKind, key: string): boolean {
  const bare = key.replace("Shift+", "");
  switch (kind) {
    case "text":
      return true;
    case "choice":
      return bare !== "Escape" && bare !== "?";
    case "slider":
      return ARROWS.includes(bare);
    case "radio":
      return ARROWS.includes(bare) || bare === " ";
    case "button":
      return bare === " " || bare === "Enter";
    case "none":
      return false;
  }
}

function focusKind(target: EventTarget | null): FocusKind {
  if (!(target instanceof Element)) return "none";
  if (target instanceof HTMLInputElement) {
    if (target.type === "range") return "slider";
    return target.type === "radio" ? "radio" : "text";
  }
  if (target instanceof HTMLSelectElement) return "choice";
  if (target instanceof HTMLTextAreaElement || (target as HTMLElement).isContentEditable) return "text";
  return target.closest("button, summary, a") ? "button" : "none";
}

/** The name of a key as the table has it. */
function keyName(event: KeyboardEvent): string {
  const key = event.key.length === 1 ? event.key.toLowerCase() : event.key;
  return event.shiftKey && key.length > 1 ? `Shift+${key}` : key;
}

export function listenToKeys(groups: readonly ShortcutGroup[]): void {
  const table = new Map(
    groups.flatMap((group) => group.shortcuts).flatMap((item) => item.keys.map((key) => [key, item])),
  );
  document.addEventListener("keydown", (event) => {
    if (event.defaultPrevented || event.ctrlKey || event.altKey || event.metaKey || event.isComposing) return;
    if (document.querySelector("dialog[open]")) return;
    const key = keyName(event);
    const item = table.get(key);
    if (!item || isKept(focusKind(event.target), key)) return;
    event.preventDefault();
    item.run(key);
  });
}
