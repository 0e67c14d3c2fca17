// What the picture takes from the page around it, and what it tells it: the tests play the browser.
import { strict as assert } from "node:assert";
import { readFileSync } from "node:fs";
import { dirname, join } from "node:path";
import { test } from "node:test";
import { fileURLToPath } from "node:url";
import { load } from "./bundle.mjs";

const viewer = process.env.VIEWER ?? join(dirname(fileURLToPath(import.meta.url)), "../../viewer");
const { NO_WEBGL, showMessage } = await load("stage/message.ts");
const { Themes, toneOfFigure } = await load("stage/theme.ts");
const { watchSharpness } = await load("stage/sharpness.ts");

test("the picture follows the sharpness of the screen", () => {
  const queries = new Map();
  globalThis.matchMedia = (query) => ({
    addEventListener: (type, listener, { once }) => {
      assert.ok(type === "change" && once);
      queries.set(query, listener);
    },
  });
  let changes = 0;
  globalThis.devicePixelRatio = 1;
  watchSharpness(() => ++changes);
  for (const [before, after] of [[1, 2], [2, 1.25]]) {
    globalThis.devicePixelRatio = after;
    queries.get(`(resolution: ${before}dppx)`)();
    assert.ok(queries.has(`(resolution: ${after}dppx)`));
  }
  assert.equal(changes, 2);
});

const style = readFileSync(join(viewer, "src/style/base.css"), "utf8");
for (const [what, matches] of [["light", false], ["dark", true]])
  test(`bones have the tones of the marks of takes: ${what}`, () => {
    globalThis.matchMedia = () => ({ matches, addEventListener: () => {} });
    globalThis.getComputedStyle = () => ({ getPropertyValue: () => "" });
    globalThis.document = { documentElement: null };
    const tones = [...style.matchAll(/--tone-\d: (#\w+);/g)].map(([, tone]) => tone);
    const { theme } = new Themes(() => {});
    assert.equal(theme.isDark, matches);
    assert.deepEqual(theme.tones.map((tone) => tone.bones[0]), tones.slice(matches ? 4 : 0, matches ? 8 : 4));
  });

// The take of each figure, the main take, and the tones of the figures.
const figures = [
  ["one take", [0], 1, 0, [0]],
  ["two people in one take", [0, 0], 1, 0, [0, 1]],
  ["three takes", [0, 1, 2], 3, 1, [1, 0, 2]],
  ["takes of two people each", [0, 0, 1, 1], 2, 0, [0, 0, 1, 1]],
  ["more takes than tones", [0, 1, 2, 3, 4], 5, 0, [0, 1, 2, 3, 1]],
];
for (const [what, takes, count, mainTake, expected] of figures)
  test(`tones of ${what}`, () => {
    const player = { takes: Array(count).fill(null), mainTake };
    assert.deepEqual(takes.map((take, figure) => toneOfFigure(figure, take, player)), expected);
  });

test("words in place of the picture say what to do, in a colour of the style", () => {
  const shown = [];
  const container = { querySelector: () => shown[0] ?? null, append: (element) => shown.push(element) };
  globalThis.document = { createElement: () => ({ style: {}, setAttribute() {}, remove: () => shown.pop() }) };
  showMessage(container, NO_WEBGL);
  assert.match(shown[0].textContent, /Switch hardware acceleration on, or open the page in another browser\./);
  const name = /^var\((--\w+)\)$/.exec(shown[0].style.color)[1];
  assert.ok(style.includes(`${name}: #`));
  showMessage(container, null);
  assert.equal(shown.length, 0);
});
