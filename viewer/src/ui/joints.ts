// The tab "Joints": search, tree, and the joint that is picked.
import type { Player } from "../player";
import { button, make, shortened } from "./dom";
import { JointTree } from "./joint_tree";
import { sideMark } from "./marks";
import { Search } from "./search";

export interface JointsTab {
  readonly element: HTMLElement;
  /** The place below the tree for the curves of the picked joint. */
  readonly curves: HTMLElement;
  /** Brings the picked joint into view. */
  reveal(): void;
  /** Moves the focus to the search. */
  search(): void;
}

/** A line below the tree that leads from the picked joint to its curves. */
function pickedLine(player: Player, showCurves: () => void): HTMLElement {
  const element = make("div", { class: "picked" });
  const show = (): void => {
    const { pick } = player;
    element.hidden = !pick;
    if (!pick) return;
    const joint = player.takes[pick.take].joints[pick.joint];
    element.replaceChildren(
      sideMark(joint.side),
      shortened(joint.name, { class: "name" }),
      button({ class: "plain", id: "show-curves" }, showCurves, "Curves"),
      button(
        { class: "plain", id: "clear-pick", title: "Let go of the joint (Esc)" },
        () => (player.pick = null),
        "Clear",
      ),
    );
  };
  player.onChange((change) => change === "pick" && show());
  show();
  return element;
}

export function createJoints(player: Player, showCurves: () => void): JointsTab {
  const tree = new JointTree(player);
  const search = new Search(player, tree);
  const curves = make("div", { class: "joint-curves" });
  const element = make(
    "div",
    { class: "joints" },
    make("div", { class: "search" }, search.field, search.status),
    make("div", { class: "scroll" }, tree.element, search.nothing),
    pickedLine(player, showCurves),
    curves,
  );
  return { element, curves, reveal: () => tree.revealPick(), search: () => search.field.focus() };
}
