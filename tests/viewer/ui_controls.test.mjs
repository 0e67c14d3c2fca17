// What the controls do: tabs, ticks of the time line, findings, facts and keys.
import assert from "node:assert/strict";
import test from "node:test";
import { load } from "./bundle.mjs";
import { makeTake } from "./ui_takes.mjs";

const { tabAfter } = await load("ui/tabs.ts");
const { ticksOf } = await load("ui/scrubber.ts");
const { typedNumber } = await load("ui/frame_field.ts");
const { bySeverity, nothingFoundTexts, placeOf } = await load("ui/findings.ts");
const { optionFacts, sourceFacts, takeFacts } = await load("ui/facts.ts");
const { isKept, speedBeside } = await load("ui/keyboard.ts");
const { summaryOf } = await load("ui/header.ts");
const { foundText, quoted } = await load("ui/search.ts");
const { toneOf } = await load("ui/marks.ts");
const { jointOfSource } = await load("ui/show.ts");

const finding = (others) => ({
  code: "c",
  severity: "note",
  line: 0,
  column: 0,
  count: 1,
  joint: "",
  message: "m",
  ...others,
});

test("keys lead from tab to tab", () => {
  for (const [index, key, expected] of [
    [0, "ArrowRight", 1],
    [3, "ArrowRight", 0],
    [0, "ArrowLeft", 3],
    [2, "Home", 0],
    [1, "End", 3],
    [1, "ArrowDown", null],
  ])
    assert.equal(tabAfter(index, 4, key), expected, `${index} ${key}`);
});

test("findings of one frame share a tick", () => {
  const findings = [
    finding({ frame: 20, message: "b" }),
    finding({ message: "has no frame" }),
    finding({ frame: 5, message: "a" }),
    finding({ frame: 20, message: "c" }),
  ];
  assert.deepEqual(
    ticksOf(findings, (number) => number - 1, 30),
    [
      { row: 4, messages: ["a"] },
      { row: 19, messages: ["b", "c"] },
    ],
  );
});

test("findings of a long take share ticks, and none is dropped", () => {
  const every = (step) => Array.from({ length: 1000 }, (_, index) => finding({ frame: index * step, message: index }));
  for (const [frames, step, expected] of [
    [1000, 1, 500],
    [10_000, 10, 500],
    [100_000, 1, 5],
    [1000, 0, 1],
  ]) {
    const ticks = ticksOf(every(step).reverse(), (number) => number, frames);
    assert.equal(ticks.length, expected, `${frames} frames, a finding each ${step}`);
    assert.equal(ticks.flatMap(({ messages }) => messages).length, 1000);
    assert.equal(ticks[0].row, 0);
  }
});

test("findings are listed by their severity", () => {
  const findings = ["note", "warning", "error", "warning", "strange"].map((severity, line) =>
    finding({ severity, line }),
  );
  assert.deepEqual(
    bySeverity(findings).map(({ line }) => line),
    [2, 1, 3, 0, 4],
  );
});

test("a finding says where it is", () => {
  for (const [others, expected] of [
    [{ file: "/takes/walk.bvh", line: 12 }, "walk.bvh:12"],
    [{ line: 12 }, "line 12"],
    [{ file: "walk.bvh" }, "walk.bvh"],
    [{}, ""],
  ])
    assert.equal(placeOf(finding(others)), expected);
});

test("a finding's joint is looked up by its name in the file", () => {
  const take = makeTake({
    joints: [
      ["Hips", -1],
      ["Hand", 0],
    ],
  });
  assert.deepEqual(
    ["Hand", "Wing", ""].map((name) => jointOfSource(take, name)),
    [1, -1, -1],
  );
});

test("a name that several models have leads to no joint", () => {
  const take = makeTake({
    joints: [
      ["Hips", -1],
      ["Hand", 0],
      ["Hips_2", -1],
    ],
    sourceNames: ["Hips", "Hand", "Hips"],
    models: ["a", "b"],
    modelOf: [0, 0, 1],
  });
  assert.deepEqual(
    ["Hips", "Hand"].map((name) => jointOfSource(take, name)),
    [-1, 1],
  );
});

test("a take without findings says what to do next", () => {
  const take = makeTake({ joints: [["Hips", -1]] });
  assert.deepEqual(nothingFoundTexts(take), [
    "No findings: the file says exactly what it means.",
    "Its 1 joint and 1 frame were read as they are. Facts says where they come from.",
  ]);
});

test("a typed frame number", () => {
  for (const [text, expected] of [
    ["12", 12],
    [" 7 ", 7],
    ["1,5", 1.5],
    ["\u22123", -3],
    ["", null],
    ["  ", null],
    ["twelve", null],
    ["Infinity", null],
  ])
    assert.equal(typedNumber(text), expected, `"${text}"`);
});

test("the facts of a take", () => {
  const moving = makeTake({
    joints: [
      ["Hips", -1],
      ["Hips_End", 0],
    ],
    frames: 3,
    curves: { 0: [0, 1, 2] },
    firstFrame: 0,
  });
  assert.deepEqual(Object.fromEntries(takeFacts(moving)), {
    Name: "walk.bvh",
    Joints: "1",
    "End sites": "1",
    Frames: "3",
    "First frame": "0",
    Rate: "10/s",
    Duration: "0.30 s",
    Height: "1.71 m (cm)",
    "Unit of length": "cm",
    "Up axis": "y",
  });
  assert.deepEqual(summaryOf(moving), ["3 frames", "10/s", "1.71 m (cm)"]);
  const still = makeTake({ joints: [["Hips", -1]], height: 0 });
  assert.equal(Object.fromEntries(takeFacts(still)).Rate, undefined);
  assert.deepEqual(summaryOf(still), ["1 frame"]);
});

test("marks of takes have the tones of their figures", () => {
  const tones = (mainTake) => [0, 1, 2, 3, 4].map((index) => toneOf(index, mainTake));
  assert.deepEqual(tones(0), [0, 1, 2, 3, 1]);
  assert.deepEqual(tones(2), [1, 2, 0, 3, 1]);
});

test("a provenance may hold anything", () => {
  const provenance = {
    sources: [{ name: "takes/walk.bvh", bytes: 172684, sha256: "9f86" }, { name: 7 }, null],
    sourceFormat: "Biovision BVH",
    tool: "zkhost 0.1.0",
    options: { framesPerSecond: 120, mesh: true, sourceUp: "y", rows: [1, 2], other: null },
  };
  assert.deepEqual(sourceFacts(provenance), [
    ["File", "walk.bvh, 172.7 kB"],
    ["SHA-256", "9f86"],
    ["Format", "Biovision BVH"],
    ["Made by", "zkhost 0.1.0"],
  ]);
  assert.deepEqual(optionFacts(provenance), [
    ["Frames per second", "120"],
    ["Mesh", "yes"],
    ["Source up", "y"],
    ["Rows", "[1,2]"],
    ["Other", "none"],
  ]);
  assert.deepEqual(sourceFacts({ sourceFiles: ["a.bvh", 3] }), [["File", "a.bvh"]]);
  assert.deepEqual(sourceFacts({ sources: 3 }), []);
  assert.deepEqual(optionFacts({ options: "none" }), []);
});

test("speeds go step by step and stop at the ends", () => {
  for (const [speed, direction, expected] of [
    [1, 1, 2],
    [1, -1, 0.5],
    [4, 1, 4],
    [0.1, -1, 0.1],
    [0.7, 1, 1],
  ])
    assert.equal(speedBeside(speed, direction), expected, `${speed} ${direction}`);
});

test("a key belongs to the control that has the focus", () => {
  for (const [kind, key, expected] of [
    ["text", "f", true],
    ["text", "Escape", true],
    ["choice", "f", true],
    ["choice", "?", false],
    ["slider", "ArrowLeft", true],
    ["slider", "Shift+ArrowLeft", true],
    ["slider", " ", false],
    ["radio", "ArrowDown", true],
    ["radio", "f", false],
    ["button", " ", true],
    ["button", "ArrowLeft", false],
    ["none", " ", false],
  ])
    assert.equal(isKept(kind, key), expected, `${kind} ${key}`);
});

test("a search says what it found", () => {
  assert.equal(foundText(3, 62), "3 of 62 joints");
  assert.equal(foundText(0, 1), "0 of 1 joint");
  assert.equal(quoted("  wing "), "wing");
  assert.equal([...quoted("🦋".repeat(100))].length, 24);
});
