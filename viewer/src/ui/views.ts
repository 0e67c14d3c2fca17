// A quiet group of buttons over the picture: how the figure is drawn, and where the camera is.
import { LOOKS, type Look, type Player } from "../player";
import { type Stage, type View, VIEWS } from "../stage/stage";
import { button, leaveFocus, make } from "./dom";
import { icon } from "./icons";

const LOOK_NAMES: Record<Look, string> = { body: "Body", bones: "Bones", joints: "Joints" };
const VIEW_NAMES: Record<View, string> = { home: "Home", front: "Front", side: "Side", top: "Top" };
/** The keys of the views; help and keyboard read them here. */
export const VIEW_KEYS: Record<View, string> = { front: "4", side: "5", top: "6", home: "0" };

function lookButtons(player: Player): HTMLElement {
  const group = make("div", { role: "group", "aria-label": "Look", class: "group" });
  const buttons = LOOKS.map((look, index) =>
    button(
      { id: `look-${look}`, title: `Draw the figure as ${look} (${index + 1})` },
      () => (player.look = look),
      LOOK_NAMES[look],
    ),
  );
  const show = (): void =>
    LOOKS.forEach((look, index) => buttons[index].setAttribute("aria-pressed", String(look === player.look)));
  player.onChange((change) => change === "settings" && show());
  show();
  group.append(...buttons);
  return group;
}

function followButton(player: Player): HTMLElement {
  const follow = button(
    { id: "follow", title: "Keep the figure in the middle (F)" },
    () => (player.follow = !player.follow),
    "Follow",
  );
  const show = (): void => follow.setAttribute("aria-pressed", String(player.follow));
  player.onChange((change) => change === "settings" && show());
  show();
  return follow;
}

function viewButtons(stage: Stage): HTMLElement[] {
  const order = [...VIEWS].sort((a, b) => Number(a === "home") - Number(b === "home"));
  return order.map((view) => {
    const where = view === "home" ? "Back to the first view" : `See it from the ${view}`;
    return button(
      { id: `view-${view}`, title: `${where} (${VIEW_KEYS[view]})` },
      () => stage.view(view),
      VIEW_NAMES[view],
    );
  });
}

export function createViews(player: Player, stage: Stage): HTMLElement {
  const camera = make("div", { role: "group", "aria-label": "Camera", class: "group" });
  camera.append(followButton(player), ...viewButtons(stage));
  const groups = make("div", { class: "groups", id: "view-groups" }, lookButtons(player), camera);
  // On a phone this button opens the groups.
  const opener = button(
    { id: "view-button", class: "opener", "aria-expanded": "false", "aria-controls": "view-groups" },
    () => open(opener.getAttribute("aria-expanded") !== "true"),
    icon("eye"),
    "View",
  );
  const open = (isOpen: boolean): void => {
    opener.setAttribute("aria-expanded", String(isOpen));
    groups.classList.toggle("open", isOpen);
  };
  const element = make("div", { class: "views" }, opener, groups);
  document.addEventListener("pointerdown", (event) => {
    if (!element.contains(event.target as Node)) open(false);
  });
  element.addEventListener("keydown", (event) => {
    if (event.key !== "Escape" || !groups.classList.contains("open")) return;
    event.preventDefault();
    open(false);
    opener.focus();
  });
  leaveFocus(element);
  return element;
}
