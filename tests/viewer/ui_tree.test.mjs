// The tree of joints: its nodes, what can be seen of it, the search, and the keys.
import assert from "node:assert/strict";
import test from "node:test";
import { load } from "./bundle.mjs";
import { makeTake } from "./ui_takes.mjs";

const { hasChildren, moveInTree, searchNodes, treeNodes, visibleNodes } = await load("ui/tree_model.ts");

/** Hips, its legs and a spine. The order of the joints is not that of the tree. */
const figure = (others) =>
  makeTake({
    joints: [
      ["Hips", -1],
      ["LeftLeg", 0],
      ["Spine", 0],
      ["LeftFoot", 1],
      ["Head", 2],
      ["LeftFoot_End", 3],
    ],
    ...others,
  });

const labels = (nodes, visible) => visible.map((node) => nodes[node].label);
const all = new Set();

test("the tree lists each joint before the joints below it", () => {
  const nodes = treeNodes([figure()]);
  assert.deepEqual(
    nodes.map(({ label, level }) => `${level} ${label}`),
    ["1 Hips", "2 LeftLeg", "3 LeftFoot", "4 LeftFoot_End", "2 Spine", "3 Head"],
  );
  assert.deepEqual(
    nodes.map(({ end }) => end),
    [6, 4, 4, 4, 6, 6],
  );
  assert.deepEqual(
    nodes.map((_, node) => hasChildren(nodes, node)),
    [true, true, true, false, true, false],
  );
});

test("several takes and several models are groups", () => {
  const two = treeNodes([figure(), figure({ name: "run.bvh" })]);
  assert.deepEqual(
    two.filter(({ kind }) => kind === "group").map(({ label }) => label),
    ["walk.bvh", "run.bvh"],
  );
  assert.equal(two[1].level, 2);
  const models = treeNodes([
    makeTake({
      joints: [
        ["a", -1],
        ["b", -1],
      ],
      models: ["ann", "bob"],
      modelOf: [0, 1],
    }),
  ]);
  assert.deepEqual(
    models.map(({ label }) => label),
    ["ann", "a", "bob", "b"],
  );
});

test("a deep skeleton does not exhaust the stack", () => {
  const joints = Array.from({ length: 20000 }, (_, index) => [`j${index}`, index - 1]);
  const nodes = treeNodes([makeTake({ joints })]);
  assert.equal(nodes[19999].level, 20000);
  assert.equal(visibleNodes(nodes, all, null).length, 20000);
});

test("folded joints hide what is below them", () => {
  const nodes = treeNodes([figure()]);
  assert.deepEqual(labels(nodes, visibleNodes(nodes, new Set([1]), null)), ["Hips", "LeftLeg", "Spine", "Head"]);
  assert.deepEqual(labels(nodes, visibleNodes(nodes, new Set([0]), null)), ["Hips"]);
});

test("a search keeps what it finds and everything above it", () => {
  const takes = [figure()];
  const nodes = treeNodes(takes);
  for (const [text, found, kept] of [
    ["foot", ["LeftFoot", "LeftFoot_End"], ["Hips", "LeftLeg", "LeftFoot", "LeftFoot_End"]],
    ["END left", ["LeftFoot_End"], ["Hips", "LeftLeg", "LeftFoot", "LeftFoot_End"]],
    ["head", ["Head"], ["Hips", "Spine", "Head"]],
    ["wing", [], []],
  ]) {
    const result = searchNodes(nodes, takes, text);
    assert.deepEqual(labels(nodes, [...result.matches]), found, text);
    assert.deepEqual(labels(nodes, visibleNodes(nodes, new Set([0]), result.kept)), kept, text);
  }
  assert.equal(searchNodes(nodes, takes, "  "), null);
});

test("keys move through the tree", () => {
  const nodes = treeNodes([figure()]);
  const folded = new Set([4]);
  const visible = visibleNodes(nodes, folded, null);
  for (const [node, key, expected] of [
    [0, "ArrowDown", { focus: 1 }],
    [0, "ArrowUp", { focus: 0 }],
    [4, "ArrowDown", { focus: 4 }],
    [4, "ArrowUp", { focus: 3 }],
    [2, "Home", { focus: 0 }],
    [0, "End", { focus: 4 }],
    [0, "ArrowRight", { focus: 1 }],
    [4, "ArrowRight", { unfold: 4 }],
    [3, "ArrowRight", { focus: 3 }],
    [3, "ArrowLeft", { focus: 2 }],
    [1, "ArrowLeft", { fold: 1 }],
    [4, "ArrowLeft", { focus: 0 }],
    [1, "x", null],
    [5, "ArrowDown", null],
  ])
    assert.deepEqual(
      moveInTree(nodes, visible, (other) => folded.has(other), node, key),
      expected,
      `${node} ${key}`,
    );
});
