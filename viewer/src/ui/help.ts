// The help: all keys and gestures.
import { button, make } from "./dom";
import type { ShortcutGroup } from "./keyboard";

const GESTURES: readonly [string, string][] = [
  ["Drag", "Turn the camera"],
  ["Right drag, two fingers", "Move the camera"],
  ["Wheel, pinch", "Come closer or go back"],
  ["Click, tap", "Pick a joint; beside the figure, let go of it"],
];

function row(keys: readonly string[], text: string, tag: "kbd" | "span"): HTMLElement {
  const names = make("dt", {});
  keys.forEach((key) => names.append(make(tag, {}, key), " "));
  return make("div", {}, names, make("dd", {}, text));
}

function listOf(group: ShortcutGroup): HTMLElement {
  const list = make("dl", {}, ...group.shortcuts.map((item) => row(item.shown, item.text, "kbd")));
  return make("section", {}, make("h3", {}, group.title), list);
}

function gestures(): HTMLElement {
  const list = make("dl", {}, ...GESTURES.map(([gesture, text]) => row([gesture], text, "span")));
  return make("section", { class: "gestures" }, make("h3", {}, "Mouse and touch"), list);
}

/** Fills the dialog of the help with the keys of the page. */
export function fillHelp(dialog: HTMLDialogElement, groups: readonly ShortcutGroup[]): void {
  const close = button({ class: "plain" }, () => dialog.close(), "Close");
  dialog.append(
    make("div", { class: "help-head" }, make("h2", { id: "help-title" }, "Keys and gestures"), close),
    make(
      "div",
      { class: "help-body", tabindex: 0, role: "group", "aria-labelledby": "help-title" },
      ...groups.map(listOf),
      gestures(),
    ),
  );
  // A click beside the dialog closes it.
  dialog.addEventListener("click", (event) => {
    if (event.target === dialog) dialog.close();
  });
  // The key that opened it closes it too.
  dialog.addEventListener("keydown", (event) => {
    if (event.key !== "?") return;
    event.preventDefault();
    dialog.close();
  });
}

export function createHelpDialog(): HTMLDialogElement {
  return make("dialog", { id: "help", "aria-labelledby": "help-title" });
}
