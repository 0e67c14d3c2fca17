// The tree of joints as plain data: what can be seen, what a search finds, where a key leads.
import type { Take } from "../data/take";

export interface TreeNode {
  /** Joints can be picked; groups are takes and models. */
  readonly kind: "group" | "joint";
  readonly label: string;
  readonly take: number;
  /** The index of the joint; -1 for a group. */
  readonly joint: number;
  /** From 1. */
  readonly level: number;
  /** The index of the node above; -1 for none. */
  readonly parent: number;
  /** The index after the last node below this one. */
  end: number;
}

/** Lists the nodes of all takes, each one before the nodes below it. */
export function treeNodes(takes: readonly Take[]): TreeNode[] {
  const nodes: TreeNode[] = [];
  takes.forEach((take, index) => {
    let above = -1;
    if (takes.length > 1) above = nodes.push(groupNode(nodes, take.name, index, -1)) - 1;
    addTake(nodes, take, index, above);
  });
  closeNodes(nodes);
  return nodes;
}

function groupNode(nodes: TreeNode[], label: string, take: number, parent: number): TreeNode {
  return { kind: "group", label, take, joint: -1, level: levelBelow(nodes, parent), parent, end: 0 };
}

function levelBelow(nodes: readonly TreeNode[], parent: number): number {
  return parent < 0 ? 1 : nodes[parent].level + 1;
}

function addTake(nodes: TreeNode[], take: Take, index: number, above: number): void {
  if (take.models.length < 2) {
    addJoints(nodes, take, index, above, () => true);
    return;
  }
  take.models.forEach((name, model) => {
    const group = nodes.push(groupNode(nodes, name, index, above)) - 1;
    addJoints(nodes, take, index, group, (joint) => take.joints[joint].model === model);
  });
}

/** Adds the chosen top joints and all joints below them. A deep skeleton must not exhaust the stack. */
function addJoints(
  nodes: TreeNode[],
  take: Take,
  index: number,
  above: number,
  isChosen: (topJoint: number) => boolean,
): void {
  const waiting = take.joints
    .filter((joint) => joint.parent < 0 && isChosen(joint.index))
    .map((joint) => ({ joint: joint.index, parent: above }))
    .reverse();
  for (let next = waiting.pop(); next; next = waiting.pop()) {
    const { joint, parent } = next;
    const level = levelBelow(nodes, parent);
    const node =
      nodes.push({ kind: "joint", label: take.joints[joint].name, take: index, joint, level, parent, end: 0 }) - 1;
    const { children } = take.joints[joint];
    for (let child = children.length - 1; child >= 0; --child) waiting.push({ joint: children[child], parent: node });
  }
}

function closeNodes(nodes: readonly TreeNode[]): void {
  nodes.forEach((node, index) => (node.end = index + 1));
  for (let index = nodes.length - 1; index >= 0; --index) {
    const { parent, end } = nodes[index];
    if (parent >= 0) nodes[parent].end = Math.max(nodes[parent].end, end);
  }
}

export function hasChildren(nodes: readonly TreeNode[], node: number): boolean {
  return nodes[node].end > node + 1;
}

/** The nodes that can be seen: those below no folded one and, during a search, those that it keeps. */
export function visibleNodes(
  nodes: readonly TreeNode[],
  folded: ReadonlySet<number>,
  kept: ReadonlySet<number> | null,
): number[] {
  const visible: number[] = [];
  for (let node = 0; node < nodes.length;) {
    if (kept && !kept.has(node)) {
      ++node;
      continue;
    }
    visible.push(node);
    // A search unfolds what it found.
    node = !kept && folded.has(node) ? nodes[node].end : node + 1;
  }
  return visible;
}

export interface SearchResult {
  /** The joints that were found. */
  readonly matches: ReadonlySet<number>;
  /** The joints that were found and everything above them. */
  readonly kept: ReadonlySet<number>;
}

/** Finds the joints whose name here or in the file has all words of a text. Null for an empty text. */
export function searchNodes(nodes: readonly TreeNode[], takes: readonly Take[], text: string): SearchResult | null {
  const words = text.toLowerCase().split(/\s+/).filter(Boolean);
  if (words.length === 0) return null;
  const matches = new Set<number>();
  const kept = new Set<number>();
  nodes.forEach((node, index) => {
    if (node.kind !== "joint") return;
    const names = `${node.label}\n${takes[node.take].joints[node.joint].sourceName}`.toLowerCase();
    if (!words.every((word) => names.includes(word))) return;
    matches.add(index);
    for (let above = index; above >= 0 && !kept.has(above); above = nodes[above].parent) kept.add(above);
  });
  return { matches, kept };
}

export type Move = { focus: number } | { fold: number } | { unfold: number };

/** What a key does to the tree when the focus is on `node`; null if the key means nothing to it. */
export function moveInTree(
  nodes: readonly TreeNode[],
  visible: readonly number[],
  isFolded: (node: number) => boolean,
  node: number,
  key: string,
): Move | null {
  const at = visible.indexOf(node);
  if (at < 0) return null;
  switch (key) {
    case "ArrowDown":
      return { focus: visible[Math.min(at + 1, visible.length - 1)] };
    case "ArrowUp":
      return { focus: visible[Math.max(at - 1, 0)] };
    case "Home":
      return { focus: visible[0] };
    case "End":
      return { focus: visible[visible.length - 1] };
    case "ArrowRight":
      if (!hasChildren(nodes, node)) return { focus: node };
      return isFolded(node) ? { unfold: node } : { focus: visible[Math.min(at + 1, visible.length - 1)] };
    case "ArrowLeft":
      if (hasChildren(nodes, node) && !isFolded(node)) return { fold: node };
      return { focus: nodes[node].parent >= 0 ? nodes[node].parent : node };
    default:
      return null;
  }
}
