// The controls around the picture.
import type { Player } from "../player";
import type { Stage } from "../stage/stage";
import { createAnnouncer } from "./announce";
import { createBar } from "./bar";
import { make } from "./dom";
import { createHeader } from "./header";
import { createHelpDialog, fillHelp } from "./help";
import { allShortcuts, listenToKeys } from "./keyboard";
import { Panel } from "./panel";
import { createViews } from "./views";

/** Fills the page with the bar below the picture and the panel at its right. */
export function createUi(player: Player, stage: Stage): void {
  const page = document.getElementById("page")!;
  const help = createHelpDialog();
  const showHelp = (): void => help.showModal();
  const panel = new Panel(player, (isOpen) => {
    document.getElementById("panel-button")?.setAttribute("aria-expanded", String(isOpen));
  });
  const bar = createBar(player, { togglePanel: () => panel.toggle(), showHelp });
  const header = createHeader(player, () => panel.open("curves"));
  document.getElementById("picture")!.append(make("div", { class: "over" }, header, createViews(player, stage)));
  page.append(bar, panel.element, createAnnouncer(player), help);
  const shortcuts = allShortcuts(player, stage, panel, showHelp);
  fillHelp(help, shortcuts);
  listenToKeys(shortcuts);
  panel.start();
}

/** Says why nothing can be shown. */
export function showProblem(message: string): void {
  const text = make(
    "div",
    { class: "problem", role: "alert" },
    make("h1", {}, "This page cannot show its take"),
    make("p", { dir: "auto" }, message),
    make("p", { class: "soft" }, "Make the page again from the file of the take, or open it in another browser."),
  );
  document.body.replaceChildren(make("main", { class: "problem-page" }, text));
}
