// axe-core finds nothing to complain about, whatever is shown.
import { strict as assert } from "node:assert";
import { readFileSync } from "node:fs";
import { createRequire } from "node:module";
import { after, before, test } from "node:test";
import { openBrowser, openTake } from "./browser.mjs";
import { Captures } from "./captures.mjs";

const axe = readFileSync(createRequire(import.meta.url).resolve("axe-core/axe.min.js"), "utf8");
const captures = new Captures(process.env.ZKHOST, process.env.EXAMPLES, process.env.PAGES);
let browser;
before(async () => (browser = await openBrowser()));
after(() => browser.close());

const walk = captures.page("access", [captures.walk]);
const findings = captures.page("access-findings", [captures.path("findings.bvh")]);
const several = captures.together([captures.path("fast.bvh"), captures.path("slow.bvh")]);
const phone = { viewport: { width: 390, height: 844 }, hasTouch: true, isMobile: true };

const tab = (name) => (page) => page.getByRole("tab", { name }).click();
const pickHead = async (page) => {
  await page.getByRole("tree").getByText("Head", { exact: true }).click();
  await tab("Curves")(page);
};

const STATES = [
  ["at first", walk, async () => {}],
  ["curves without a joint", walk, tab("Curves")],
  ["curves of a joint", walk, pickHead],
  ["findings", findings, tab(/Findings/)],
  ["no findings", walk, tab(/Findings/)],
  ["facts", walk, tab("Facts")],
  ["help", walk, (page) => page.keyboard.press("?")],
  ["several takes", several, async () => {}],
  ["a folded panel", walk, (page) => page.keyboard.press("p")],
  ["a phone", walk, async () => {}, phone],
  ["findings on a phone", findings, (page) => page.keyboard.press("i"), phone],
];

for (const [name, path, show, options] of STATES)
  test(name, async () => {
    const { page, close } = await openTake(browser, path, options);
    await show(page);
    // The page's policy allows no other scripts, but the protocol of the browser is not bound by it.
    await page.evaluate(axe);
    for (const colorScheme of ["light", "dark"]) {
      await page.emulateMedia({ colorScheme });
      const { violations } = await page.evaluate(() => window.axe.run());
      const found = violations.map(({ id, nodes }) => `${id}: ${nodes.map((node) => node.target).join(", ")}`);
      assert.deepEqual(found, [], colorScheme);
    }
    await close();
  });
