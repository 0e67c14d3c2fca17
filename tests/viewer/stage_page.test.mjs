// What the picture takes from the page around it, and what it tells it: the tests play the browser.
import { strict as assert } from "node:assert";
import { test } from "node:test";
import { load } from "./bundle.mjs";

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
