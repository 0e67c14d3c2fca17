// Finds out which joint is what: legs, arms, trunk, neck and head. Names decide where they are known;
// otherwise the shape of the tree does.
import { boneLengths, placeOf, type Side, type Skeleton } from "./rig";

export interface Limb {
  readonly side: Side;
  /** The joints between the trunk and the limb, such as a collar bone. */
  readonly girdle: readonly number[];
  /** From the hip or shoulder to the ankle or wrist, both included. */
  readonly path: readonly number[];
  /** The index of the knee or elbow in `path`; -1 if there is none. */
  readonly middle: number;
}

export interface BodyPlan {
  /** The joint from which the legs come, and the one from which the arms come. */
  readonly pelvis: number;
  readonly chest: number;
  /** The joints from the pelvis to the chest, both included. */
  readonly trunk: readonly number[];
  readonly legs: readonly [Limb, Limb];
  readonly arms: readonly [Limb, Limb];
  /** The joints from the chest, which is excluded, to the head. Empty if no head was found. */
  readonly neck: readonly number[];
}

const FOOT = /foot|ankle/i;
const HAND = /hand|wrist/i;
const HEAD = /head|skull/i;
// Names that mean one joint only; a shoulder or a hip may be the limb's first joint or the one before it.
const THIGH = /up(per)?_?leg|thigh|femur/i;
const SHIN = /knee|shin|calf|tibia|lo(w(er)?)?_?leg/i;
const UPPER_ARM = /up(per)?_?arm|humerus|shldr|(left|right|\b[lr])_?arm/i;
const FOREARM = /elbow|fore_?arm|lo(w(er)?)?_?arm|radius/i;

export function isHeadName(name: string): boolean {
  return HEAD.test(name);
}

function pathToTop(skeleton: Skeleton, joint: number): number[] {
  const path: number[] = [];
  for (let at = joint; at >= 0; at = skeleton.parents[at]) path.push(at);
  return path;
}

function commonAncestor(skeleton: Skeleton, a: number, b: number): number {
  const above = new Set(pathToTop(skeleton, a));
  return pathToTop(skeleton, b).find((joint) => above.has(joint)) ?? -1;
}

/** The joints from an ancestor, which is excluded, down to a joint. */
function pathDown(skeleton: Skeleton, from: number, to: number): number[] {
  const path = pathToTop(skeleton, to).reverse();
  return path.slice(path.indexOf(from) + 1);
}

/** The joints on the path through the tree between any two joints, both included. */
function pathBetween(skeleton: Skeleton, a: number, b: number): number[] {
  const top = commonAncestor(skeleton, a, b);
  if (top < 0) return [];
  return [...pathDown(skeleton, top, a).reverse(), top, ...pathDown(skeleton, top, b)];
}

/** The first joints with such a name on their way from the top. */
function firstNamed(skeleton: Skeleton, name: RegExp): number[] {
  const hasName = skeleton.names.map((own) => name.test(own));
  // Parents come before their children.
  const isBelow: boolean[] = [];
  for (const parent of skeleton.parents) isBelow.push(parent >= 0 && (hasName[parent] || isBelow[parent]));
  return skeleton.names.flatMap((_, joint) => (hasName[joint] && !skeleton.isEnd[joint] && !isBelow[joint] ? [joint] : []));
}

/** One joint of each side, or just two. */
function pairOf(skeleton: Skeleton, joints: number[]): [number, number] | null {
  const deepest = (side: Side): number | undefined =>
    joints
      .filter((joint) => skeleton.sides[joint] === side)
      .sort((a, b) => pathToTop(skeleton, b).length - pathToTop(skeleton, a).length)[0];
  const left = deepest("left");
  const right = deepest("right");
  const perSide = (side: Side): number => joints.filter((joint) => skeleton.sides[joint] === side).length;
  // Four feet are those of an animal.
  if (perSide("left") > 1 && perSide("right") > 1) return null;
  if (left !== undefined && right !== undefined) return [left, right];
  return joints.length === 2 ? [joints[0], joints[1]] : null;
}

interface Division {
  start: number;
  middle: number;
}

/**
 * Divides a way to an ankle or wrist into girdle, upper and lower part, so that the parts are long
 * and about equally long. `isStart` and `isMiddle` say which joints the parts may begin with.
 */
export function divide(
  path: readonly number[],
  lengths: readonly number[],
  isStart: (joint: number) => boolean = () => true,
  isMiddle: (joint: number) => boolean = () => true,
): Division {
  const reach = [0];
  for (let index = 1; index < path.length; ++index) reach.push(reach[index - 1] + lengths[path[index]]);
  const last = path.length - 1;
  let best: Division = { start: Math.max(0, last - 2), middle: last - 1 > 0 ? last - 1 : -1 };
  let bestScore = -Infinity;
  for (let start = 0; start < last - 1; ++start)
    for (let middle = start + 1; middle < last; ++middle) {
      if (!isStart(path[start]) || !isMiddle(path[middle])) continue;
      const upper = reach[middle] - reach[start];
      const lower = reach[last] - reach[middle];
      const score = Math.min(upper, lower) - 1.2 * Math.abs(upper - lower);
      if (score > bestScore + 1e-6) {
        bestScore = score;
        best = { start, middle };
      }
    }
  return best;
}

/** The same, where names that are known decide which joints come into question. */
function divideByName(
  skeleton: Skeleton,
  path: readonly number[],
  lengths: readonly number[],
  [upper, lower]: readonly [RegExp, RegExp],
): Division {
  const among = (name: RegExp) => {
    const isKnown = path.slice(0, -1).some((joint) => name.test(skeleton.names[joint]));
    return (joint: number) => !isKnown || name.test(skeleton.names[joint]);
  };
  return divide(path, lengths, among(upper), among(lower));
}

function limbOf(skeleton: Skeleton, lengths: readonly number[], from: number, tip: number, names: [RegExp, RegExp]): Limb | null {
  const whole = pathDown(skeleton, from, tip);
  if (whole.length < 2) return null;
  const { start, middle } = divideByName(skeleton, whole, lengths, names);
  return {
    side: skeleton.sides[tip],
    girdle: whole.slice(0, start),
    path: whole.slice(start),
    middle: middle < 0 ? -1 : middle - start,
  };
}

/** How far each joint's subtree reaches. */
function reachesOf(skeleton: Skeleton, lengths: readonly number[]): number[] {
  const reach = skeleton.names.map(() => 0);
  for (let at = skeleton.names.length - 1; at >= 0; --at)
    for (const child of skeleton.children[at]) reach[at] = Math.max(reach[at], reach[child] + lengths[child]);
  return reach;
}

/** The chain of a subtree that reaches farthest; `reach` is that of all joints. */
function longestChain(skeleton: Skeleton, lengths: readonly number[], reach: readonly number[], joint: number): number[] {
  const chain = [joint];
  for (let at = joint; skeleton.children[at].length > 0; chain.push(at))
    at = skeleton.children[at].reduce((best, child) =>
      reach[child] + lengths[child] > reach[best] + lengths[best] ? child : best,
    );
  return chain;
}

interface MirrorPair {
  node: number;
  chains: [number[], number[]];
  reach: number;
  /** How high the ends are above the node, on average over the poses. */
  rise: number;
}

/** How high a joint is above another one, summed over the frames. */
function riseOf(skeleton: Skeleton, from: number, to: number): number {
  return skeleton.poses.slice(1).reduce((sum, pose) => sum + placeOf(pose, to).y - placeOf(pose, from).y, 0);
}

function mirrorPairs(skeleton: Skeleton, lengths: readonly number[]): MirrorPair[] {
  const pairs: MirrorPair[] = [];
  const farthest = reachesOf(skeleton, lengths);
  skeleton.children.forEach((children, node) => {
    if (children.length < 2) return;
    const chains = children.map((child) => longestChain(skeleton, lengths, farthest, child));
    const rises = chains.map((chain) => riseOf(skeleton, node, chain[chain.length - 1]));
    const reaches = chains.map((chain) => chain.reduce((sum, joint) => sum + lengths[joint], 0));
    for (let a = 0; a < children.length; ++a)
      for (let b = a + 1; b < children.length; ++b) {
        const reach = Math.max(reaches[a], reaches[b]);
        if (chains[a].length !== chains[b].length || chains[a].length < 3) continue;
        if (Math.abs(reaches[a] - reaches[b]) > 0.06 * reach) continue;
        pairs.push({ node, chains: [chains[a], chains[b]], reach, rise: rises[a] + rises[b] });
      }
  });
  return pairs;
}

/** Ankles or wrists, hips or shoulders of a chain whose joints have no names that are known. */
function tipOfChain(skeleton: Skeleton, lengths: readonly number[], chain: readonly number[]): number {
  // A hand with fingers is where the chain branches.
  const fork = chain.find((joint, index) => index > 1 && skeleton.children[joint].length > 1);
  if (fork !== undefined) return fork;
  // The upper and the lower part of a limb are long, and about as long as each other. Bones without length are left out.
  const joints = chain.filter((joint, index) => index === 0 || lengths[joint] > 0);
  let best = joints[Math.min(2, joints.length - 1)];
  let bestScore = -Infinity;
  for (let last = 2; last < joints.length; ++last) {
    const [upper, lower] = [lengths[joints[last - 1]], lengths[joints[last]]];
    const score = Math.min(upper, lower) - Math.abs(upper - lower);
    if (score > bestScore + 1e-6) {
      bestScore = score;
      best = joints[last];
    }
  }
  return best;
}

function tipsByShape(skeleton: Skeleton, lengths: readonly number[]): { feet: number[]; hands: number[] } | null {
  const pairs = mirrorPairs(skeleton, lengths).sort((a, b) => b.reach - a.reach);
  const legs = pairs.filter((pair) => pair.rise < 0).sort((a, b) => a.node - b.node || b.reach - a.reach)[0];
  if (!legs) return null;
  const inLegs = (joint: number): boolean =>
    legs.chains.some((chain) => pathToTop(skeleton, joint).includes(chain[0]));
  const arms = pairs.find((pair) => pair.node !== legs.node && !inLegs(pair.node) && pair.reach > 0.4 * legs.reach);
  if (!arms) return null;
  return {
    feet: legs.chains.map((chain) => tipOfChain(skeleton, lengths, chain)),
    hands: arms.chains.map((chain) => tipOfChain(skeleton, lengths, chain)),
  };
}

function findHead(skeleton: Skeleton, lengths: readonly number[], chest: number, arms: readonly Limb[]): number {
  const named = firstNamed(skeleton, HEAD).find((joint) => pathToTop(skeleton, joint).includes(chest));
  if (named !== undefined) return named;
  const used = new Set(arms.flatMap((arm) => [...arm.girdle, ...arm.path]));
  const free = skeleton.children[chest].filter((child) => !used.has(child));
  if (free.length === 0) return -1;
  const reach = reachesOf(skeleton, lengths);
  const chains = free.map((child) => longestChain(skeleton, lengths, reach, child));
  const chain = chains.reduce((best, other) => (other.length > best.length ? other : best));
  const joints = chain.filter((joint) => !skeleton.isEnd[joint]);
  return joints[Math.min(1, joints.length - 1)] ?? -1;
}

/** No person has more joints; to look for one among so many takes too long. */
const MOST_JOINTS = 2000;

export function isLarge(skeleton: Skeleton): boolean {
  return skeleton.names.length > MOST_JOINTS;
}

/** Returns null if the joints do not make a person. */
export function planBody(skeleton: Skeleton): BodyPlan | null {
  if (isLarge(skeleton)) return null;
  const lengths = boneLengths(skeleton);
  let feet = pairOf(skeleton, firstNamed(skeleton, FOOT));
  let hands = pairOf(skeleton, firstNamed(skeleton, HAND));
  if (!feet || !hands) {
    const tips = tipsByShape(skeleton, lengths);
    if (!tips) return null;
    feet ??= [tips.feet[0], tips.feet[1]];
    hands ??= [tips.hands[0], tips.hands[1]];
  }
  const pelvis = commonAncestor(skeleton, ...feet);
  const chest = commonAncestor(skeleton, ...hands);
  if (pelvis < 0 || chest < 0 || pelvis === chest) return null;
  const legs = feet.map((foot) => limbOf(skeleton, lengths, pelvis, foot, [THIGH, SHIN]));
  const arms = hands.map((hand) => limbOf(skeleton, lengths, chest, hand, [UPPER_ARM, FOREARM]));
  if (!legs[0] || !legs[1] || !arms[0] || !arms[1]) return null;
  const head = findHead(skeleton, lengths, chest, [arms[0], arms[1]]);
  return {
    pelvis,
    chest,
    trunk: pathBetween(skeleton, pelvis, chest),
    legs: [legs[0], legs[1]],
    arms: [arms[0], arms[1]],
    neck: head < 0 ? [] : pathDown(skeleton, chest, head),
  };
}
