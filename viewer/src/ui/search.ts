// The field that searches the tree of joints.
import type { Player } from "../player";
import { button, changingText, make, setText } from "./dom";
import type { JointTree } from "./joint_tree";
import { counted } from "./text";

/** What a search found: "3 of 62 joints". */
export function foundText(found: number, joints: number): string {
  return `${found} of ${counted(joints, "joint")}`;
}

const LONGEST_QUOTE = 24;

/** The text that was searched, shortened to be quoted. */
export function quoted(text: string): string {
  const characters = [...text.trim()];
  return characters.length <= LONGEST_QUOTE ? text.trim() : `${characters.slice(0, LONGEST_QUOTE - 1).join("")}…`;
}

export class Search {
  readonly field = make("input", {
    type: "search",
    id: "search",
    class: "field",
    "aria-label": "Search joints",
    "aria-controls": "joint-tree",
    autocomplete: "off",
    spellcheck: "false",
    title: "Search joints (/)",
  });
  /** What the search found, read aloud too. */
  readonly status = make("p", { role: "status", id: "search-status", class: "soft heard" });
  /** What is shown in place of the tree if nothing is found. */
  readonly nothing = make("div", { class: "empty", hidden: true });
  private readonly tree: JointTree;
  private readonly joints: number;
  private readonly found = changingText();
  private readonly sentence = changingText();

  constructor(player: Player, tree: JointTree) {
    this.tree = tree;
    this.joints = player.takes.reduce((sum, take) => sum + take.joints.length, 0);
    this.field.placeholder = `Search ${counted(this.joints, "joint")}`;
    this.status.append(this.found);
    this.nothing.append(
      make("p", { dir: "auto" }, this.sentence),
      make("p", {}, "Try a part of the name, such as “hand”."),
      button({ class: "plain" }, () => this.clear(), "Clear the search"),
    );
    this.field.addEventListener("input", () => this.run());
    this.field.addEventListener("keydown", (event) => this.onKey(event));
  }

  private clear(): void {
    this.field.value = "";
    this.run();
    this.field.focus();
  }

  private run(): void {
    const found = this.tree.search(this.field.value);
    this.status.classList.toggle("heard", found === null);
    setText(this.found, found === null ? "" : foundText(found, this.joints));
    this.nothing.hidden = found !== 0;
    if (found === 0) setText(this.sentence, `No joint is called “${quoted(this.field.value)}”.`);
  }

  private onKey(event: KeyboardEvent): void {
    if (event.key === "Enter" || event.key === "ArrowDown") this.tree.enter(event.key === "Enter");
    else if (event.key !== "Escape") return;
    else if (this.field.value === "") this.field.blur();
    else this.clear();
    event.preventDefault();
    event.stopPropagation();
  }
}
