// The tree of joints. A joint that is picked here is picked everywhere.
import type { Player } from "../player";
import { make, setAttributes, shortened } from "./dom";
import { icon } from "./icons";
import { sideMark, takeMark } from "./marks";
import {
  hasChildren,
  moveInTree,
  type SearchResult,
  searchNodes,
  type TreeNode,
  treeNodes,
  visibleNodes,
} from "./tree_model";

const MOST_INDENTED = 14;

export class JointTree {
  readonly element = make("div", { role: "tree", id: "joint-tree", "aria-label": "Joints", class: "tree" });
  readonly nodes: readonly TreeNode[];
  private readonly player: Player;
  private readonly rows: (HTMLElement | undefined)[] = [];
  private readonly folded = new Set<number>();
  private found: SearchResult | null = null;
  private visible: number[] = [];
  /** The node that the tab key reaches. */
  private current = 0;

  constructor(player: Player) {
    this.player = player;
    this.nodes = treeNodes(player.takes);
    // Of several takes, the one that the bar counts is unfolded.
    if (player.takes.length > 1)
      this.nodes.forEach((node, index) => {
        if (node.level === 1 && node.take !== player.mainTake) this.folded.add(index);
      });
    this.element.addEventListener("click", (event) => this.onClick(event));
    this.element.addEventListener("keydown", (event) => this.onKey(event));
    player.onChange((change) => change === "pick" && this.showPick());
    this.render();
  }

  /** Shows only what a search finds. Returns the number of joints found, or null without a search. */
  search(text: string): number | null {
    this.found = searchNodes(this.nodes, this.player.takes, text);
    this.render();
    if (!this.found) this.revealPick();
    return this.found?.matches.size ?? null;
  }

  /** Picks the first joint that the search found, or moves the focus to the tree. */
  enter(picks: boolean): void {
    const first = this.found ? this.visible.find((node) => this.found!.matches.has(node)) : this.current;
    if (first === undefined) return;
    if (picks) this.pick(first);
    this.focus(first);
  }

  /** Brings the picked joint into view. */
  revealPick(): void {
    const node = this.pickedNode();
    if (node < 0) return;
    let unfolds = false;
    for (let above = this.nodes[node].parent; above >= 0; above = this.nodes[above].parent)
      unfolds = this.folded.delete(above) || unfolds;
    if (unfolds) this.render();
    if (this.visible.includes(node)) this.rows[node]?.scrollIntoView({ block: "nearest" });
  }

  private pickedNode(): number {
    const { pick } = this.player;
    if (!pick) return -1;
    return this.nodes.findIndex((node) => node.take === pick.take && node.joint === pick.joint);
  }

  private isFolded(node: number): boolean {
    return !this.found && this.folded.has(node);
  }

  private onClick(event: MouseEvent): void {
    const row = (event.target as Element).closest<HTMLElement>("[role=treeitem]");
    if (!row) return;
    const node = Number(row.dataset.node);
    const onTwisty = (event.target as Element).closest(".twisty") !== null;
    if (this.nodes[node].kind === "group" || (onTwisty && hasChildren(this.nodes, node)))
      this.fold(node, !this.isFolded(node));
    else this.pick(node);
    this.focus(node);
  }

  private onKey(event: KeyboardEvent): void {
    if (event.ctrlKey || event.altKey || event.metaKey) return;
    if (event.key === "Enter") {
      event.preventDefault();
      if (this.nodes[this.current].kind === "group") this.fold(this.current, !this.isFolded(this.current));
      else this.pick(this.current);
      return;
    }
    const move = moveInTree(this.nodes, this.visible, (node) => this.isFolded(node), this.current, event.key);
    if (!move) return;
    event.preventDefault();
    if ("fold" in move) this.fold(move.fold, true);
    else if ("unfold" in move) this.fold(move.unfold, false);
    else {
      // The pick goes along with the focus, so that the joints can be looked through.
      this.focus(move.focus);
      this.pick(move.focus);
    }
  }

  private pick(node: number): void {
    const { kind, take, joint } = this.nodes[node];
    if (kind === "joint") this.player.pick = { take, joint };
  }

  private fold(node: number, folds: boolean): void {
    if (this.found) return;
    if (folds) this.folded.add(node);
    else this.folded.delete(node);
    this.render();
    this.rows[this.current]?.focus();
  }

  private focus(node: number): void {
    this.reach(node);
    this.rows[node]?.focus();
  }

  /** Makes a node the one that the tab key reaches. */
  private reach(node: number): void {
    if (this.rows[this.current]) this.rows[this.current]!.tabIndex = -1;
    this.current = node;
    if (this.rows[node]) this.rows[node]!.tabIndex = 0;
  }

  private shownPick = -1;
  private showPick(): void {
    const node = this.pickedNode();
    this.rows[this.shownPick]?.setAttribute("aria-selected", "false");
    this.shownPick = node;
    this.revealPick();
    if (node < 0) return;
    this.rows[node]?.setAttribute("aria-selected", "true");
    if (this.visible.includes(node)) this.reach(node);
  }

  private render(): void {
    this.visible = visibleNodes(this.nodes, this.folded, this.found?.kept ?? null);
    if (!this.visible.includes(this.current) && this.visible.length > 0) this.reach(this.visible[0]);
    const siblings = new Map<number, number[]>();
    for (const node of this.visible) {
      const { parent } = this.nodes[node];
      if (!siblings.has(parent)) siblings.set(parent, []);
      siblings.get(parent)!.push(node);
    }
    for (const group of siblings.values()) group.forEach((node, index) => this.showRow(node, index, group.length));
    this.element.replaceChildren(...this.visible.map((node) => this.rows[node]!));
    this.element.hidden = this.visible.length === 0;
  }

  private showRow(node: number, position: number, count: number): void {
    const row = (this.rows[node] ??= this.makeRow(node));
    setAttributes(row, {
      "aria-posinset": position + 1,
      "aria-setsize": count,
      "aria-expanded": hasChildren(this.nodes, node) ? String(!this.isFolded(node)) : false,
    });
    row.tabIndex = node === this.current ? 0 : -1;
    row.classList.toggle("above", this.found !== null && !this.found.matches.has(node));
  }

  private makeRow(node: number): HTMLElement {
    const { kind, label, take, joint, level } = this.nodes[node];
    const isPicked = this.player.pick?.take === take && this.player.pick.joint === joint;
    const row = make("div", {
      role: "treeitem",
      class: kind,
      "data-node": node,
      "aria-level": level,
      "aria-selected": String(isPicked),
    });
    row.style.paddingLeft = `${4 + 11 * Math.min(level - 1, MOST_INDENTED)}px`;
    row.append(
      make(
        "span",
        { class: "twisty", "aria-hidden": "true" },
        ...(hasChildren(this.nodes, node) ? [icon("open")] : []),
      ),
    );
    if (kind === "joint") {
      const { isEnd, side, sourceName } = this.player.takes[take].joints[joint];
      row.classList.toggle("end", isEnd);
      row.append(sideMark(side));
      row.append(
        shortened(label, {
          title: sourceName && sourceName !== label ? `${label} (in the file: ${sourceName})` : label,
        }),
      );
    } else {
      if (level === 1 && this.player.takes.length > 1) row.append(takeMark(this.player, take));
      row.append(shortened(label));
    }
    return row;
  }
}
