// The controls of a page: by mouse, by keyboard, and what they say.
import { strict as assert } from "node:assert";
import { after, before, test } from "node:test";
import { assertQuiet, openBrowser, openTake } from "./browser.mjs";
import { Captures } from "./captures.mjs";

const captures = new Captures(process.env.ZKHOST, process.env.EXAMPLES, process.env.PAGES);
const walk = captures.page("walk", [captures.walk]);
const small = captures.page("small", [captures.path("fast.bvh")]);
let browser;
before(async () => (browser = await openBrowser()));
after(() => browser.close());

/** Opens the page, passes it to `use`, and requires that it printed nothing and asked for nothing else. */
function pageTest(name, path, use, options) {
  test(name, async () => {
    const opened = await openTake(browser, path, options);
    await use(opened.page);
    assertQuiet(opened);
    await opened.close();
  });
}

const frameNumber = (page) => page.getByLabel("Frame number").inputValue();
const picked = async (page) => {
  const row = page.locator("[role=treeitem][aria-selected=true]");
  return (await row.count()) === 0 ? null : row.innerText();
};
const framesAskedFor = (page) => page.evaluate(() => window.framesAskedFor);

/** Waits until the page has drawn what was asked for. */
async function settle(page) {
  let before = -1;
  for (let count = await framesAskedFor(page); count !== before; count = await framesAskedFor(page)) {
    before = count;
    await page.waitForTimeout(250);
  }
}

pageTest("the page says what the take is", walk, async (page) => {
  assert.equal(await page.title(), "walk.bvh");
  const header = page.locator("#header");
  for (const text of ["walk.bvh", "257 frames", "60/s", "1.74 m"]) assert.match(await header.innerText(), new RegExp(text));
  assert.equal(await frameNumber(page), "1");
});

pageTest("a paused page asks for no frames", walk, async (page) => {
  await settle(page);
  const before = await framesAskedFor(page);
  await page.waitForTimeout(500);
  assert.equal(await framesAskedFor(page), before);
});

pageTest("a take plays at once and can be paused", walk, async (page) => {
  await page.waitForFunction(() => Number(document.getElementById("frame").value) > 2, null, { timeout: 30_000 });
  await page.getByRole("button", { name: /pause/i }).click();
  await settle(page);
  const number = await frameNumber(page);
  await page.waitForTimeout(300);
  assert.equal(await frameNumber(page), number);
}, { reducedMotion: "no-preference" });

pageTest("window.take plays and pauses", walk, async (page) => {
  await page.evaluate(() => take.play());
  await page.waitForFunction(() => Number(document.getElementById("frame").value) > 2, null, { timeout: 30_000 });
  await page.evaluate(() => take.pause());
  await settle(page);
});

const KEYS = [
  ["ArrowRight", "101"],
  ["Shift+ArrowRight", "111"],
  ["ArrowLeft", "110"],
  ["Shift+ArrowLeft", "100"],
  ["End", "257"],
  ["ArrowRight", "257"],
  ["Home", "1"],
];

pageTest("keys step through the frames", walk, async (page) => {
  await page.evaluate(() => take.goTo(99));
  for (const [key, number] of KEYS) {
    await page.keyboard.press(key);
    assert.equal(await frameNumber(page), number, key);
  }
  await page.keyboard.press("Space");
  await page.waitForFunction(() => document.querySelector("#bar [aria-label=Pause]"));
  await page.keyboard.press("Space");
  await page.waitForFunction(() => document.querySelector("#bar [aria-label=Play]"));
});

pageTest("the scrubber shows the frame under it", walk, async (page) => {
  const slider = page.getByRole("slider", { name: "Frame" });
  const box = await slider.boundingBox();
  const y = box.y + box.height / 2;
  await page.mouse.move(box.x + 1, y);
  await page.mouse.down();
  await page.mouse.move(box.x + box.width / 2, y, { steps: 5 });
  const middle = Number(await frameNumber(page));
  assert.ok(Math.abs(middle - 129) <= 2, `frame ${middle} in the middle`);
  await page.mouse.move(box.x + box.width - 1, y, { steps: 5 });
  await page.mouse.up();
  assert.equal(await frameNumber(page), "257");
  await slider.focus();
  await page.keyboard.press("ArrowLeft");
  assert.equal(await frameNumber(page), "256");
});

pageTest("a frame can be typed", walk, async (page) => {
  const field = page.getByLabel("Frame number");
  for (const [typed, number] of [["120", "120"], ["9999", "257"], ["-3", "1"], ["word", "1"]]) {
    await field.fill(typed);
    await field.press("Enter");
    await field.blur();
    assert.equal(await frameNumber(page), number, typed);
  }
});

test("the address says which frame is shown", async () => {
  for (const [address, number] of [["#frame=120", "120"], ["#frame=0", "1"], ["#frame=word", "1"], ["#other", "1"]]) {
    const opened = await openTake(browser, walk, { address });
    assert.equal(await frameNumber(opened.page), number, address);
    await opened.page.evaluate(() => (location.hash = "#frame=33"));
    await opened.page.waitForFunction(() => document.getElementById("frame").value === "33");
    assertQuiet(opened);
    await opened.close();
  }
});

test("frames have the numbers of the scene", async () => {
  const part = captures.page("part", [captures.walk, "--frames", "20:60"]);
  const opened = await openTake(browser, part, { address: "#frame=33" });
  assert.equal(await frameNumber(opened.page), "33");
  assert.deepEqual(await opened.page.evaluate(() => (take.goTo(0), document.getElementById("frame").value)), "20");
  await opened.close();
});

pageTest("a joint is picked in the list by mouse and keyboard", walk, async (page) => {
  const tree = page.getByRole("tree");
  await tree.getByText("LeftForeArm", { exact: true }).click();
  assert.match(await picked(page), /^LeftForeArm/);
  await page.keyboard.press("Escape");
  assert.equal(await picked(page), null);
  await tree.getByText("Hips", { exact: true }).click();
  await page.keyboard.press("ArrowDown");
  await page.keyboard.press("Enter");
  assert.match(await picked(page), /^LeftUpLeg/);
});

pageTest("the search finds joints", walk, async (page) => {
  await page.keyboard.press("/");
  await page.keyboard.type("forearm");
  const rows = page.getByRole("treeitem");
  const names = await rows.allInnerTexts();
  assert.ok(names.some((name) => name.includes("LeftForeArm")) && names.some((name) => name.includes("RightForeArm")));
  assert.ok(!names.some((name) => name.includes("LeftToe")));
  await page.getByLabel("Search joints").fill("nothing of this name");
  assert.match(await page.locator("#panel-joints").innerText(), /no joint|nothing/i);
});

/** Clicks at places of the picture until a joint is picked. Returns its name. */
async function pickInPicture(page) {
  const box = await page.locator("#stage canvas").boundingBox();
  for (let step = 0; step < 24; ++step) {
    const x = box.x + box.width * (0.5 + (step % 2 === 0 ? 1 : -1) * 0.02 * step);
    for (const share of [0.35, 0.45, 0.55]) {
      await page.mouse.click(x, box.y + box.height * share);
      const name = await picked(page);
      if (name !== null) return name;
    }
  }
  return null;
}

pageTest("a joint is picked in the picture, and let go beside it", walk, async (page) => {
  assert.notEqual(await pickInPicture(page), null);
  const box = await page.locator("#stage canvas").boundingBox();
  await page.mouse.click(box.x + 20, box.y + box.height - 20);
  assert.equal(await picked(page), null);
});

pageTest("a drag turns the camera and picks nothing", walk, async (page) => {
  const box = await page.locator("#stage canvas").boundingBox();
  await page.mouse.move(box.x + box.width / 2, box.y + box.height / 2);
  await page.mouse.down();
  await page.mouse.move(box.x + box.width / 2 + 80, box.y + box.height / 2, { steps: 6 });
  await page.mouse.up();
  assert.equal(await picked(page), null);
});

/** The numbers that a plot shows at its cursor. */
async function valuesOf(page, title) {
  const plot = page.locator("#panel-curves .plot").filter({ hasText: title });
  return (await plot.locator(".value").allInnerTexts()).map((text) => Number(text.replace("\u2212", "-")));
}

pageTest("curves show the values of the frame", small, async (page) => {
  await page.getByRole("tree").getByText("Head", { exact: true }).click();
  await page.getByRole("tab", { name: "Curves" }).click();
  for (const row of [0, 7, 59]) {
    await page.evaluate((each) => take.goTo(each), row);
    // The head turns by a degree a frame around z; the hip walks a unit a frame along z. The scene may have other
    // angles for the same rotation: 180 degrees more around each axis.
    const angles = await valuesOf(page, "Angles");
    assert.deepEqual(angles.map((angle) => ((angle % 180) + 180) % 180), [0, 0, row]);
    const [x, y, z] = await valuesOf(page, "Place");
    const [, , , , , , wantedX, wantedY, wantedZ] = await page.evaluate(() => [...take.positions()]);
    const unit = wantedY / y;
    for (const [shown, wanted] of [[x, wantedX], [y, wantedY], [z, wantedZ]])
      assert.ok(Math.abs(unit * shown - wanted) <= 0.01 * Math.abs(wantedY), `${shown} for ${wanted}`);
  }
});

pageTest("the plot scrubs", small, async (page) => {
  await page.getByRole("tree").getByText("Head", { exact: true }).click();
  await page.getByRole("tab", { name: "Curves" }).click();
  const box = await page.locator("#panel-curves .plot-area").first().boundingBox();
  await page.mouse.click(box.x + box.width / 2, box.y + box.height / 2);
  assert.ok(Math.abs(Number(await frameNumber(page)) - 30.5) <= 1);
});

pageTest("findings lead to their joint and frame", captures.page("findings", [captures.path("findings.bvh")]), async (page) => {
  await page.getByRole("tab", { name: /Findings/ }).click();
  const finding = page.locator("#panel-findings button", { hasText: "nan" });
  await finding.click();
  assert.equal(await frameNumber(page), "12");
  await page.getByRole("tab", { name: "Joints" }).click();
  assert.match(await picked(page), /^Hips/);
});

pageTest("a take without findings says so", walk, async (page) => {
  await page.getByRole("tab", { name: /Findings/ }).click();
  assert.match(await page.locator("#panel-findings").innerText(), /No findings/);
});

pageTest("the facts name the file", walk, async (page) => {
  await page.getByRole("tab", { name: "Facts" }).click();
  const facts = await page.locator("#panel-facts").innerText();
  for (const text of ["walk.bvh", "257", "22", "zkhost"]) assert.match(facts, new RegExp(text));
});

pageTest("names are only text", captures.page("hostile", [captures.path("hostile.bvh")]), async (page) => {
  assert.match(await page.getByRole("tree").innerText(), /<img\/src=x\/onerror=alert\(1\)>/);
  assert.match((await page.evaluate(() => take.names)).join(), /<\/script><script>alert\(2\)<\/script>/);
  for (const tab of ["Curves", "Findings", "Facts", "Joints"]) await page.getByRole("tab", { name: tab }).click();
  await page.getByRole("tree").getByText("<img", { exact: false }).first().click();
  await page.getByRole("tab", { name: "Curves" }).click();
  assert.equal(await page.locator("img").count(), 0);
  assert.equal(await page.evaluate(() => document.scripts.length), 3);
});

pageTest("a take without motion has nothing to play", captures.page("still", [captures.path("still.bvh")]), async (page) => {
  assert.equal(await page.evaluate(() => take.frames), 1);
  assert.equal(await page.getByRole("button", { name: "Play" }).isDisabled(), true);
  await page.keyboard.press("Space");
  await settle(page);
});

pageTest("one of several takes can be chosen", captures.together([captures.path("fast.bvh"), captures.path("slow.bvh")]), async (page) => {
  await page.evaluate(() => take.goTo(40));
  assert.equal(await frameNumber(page), "41");
  await page.getByText("slow.bvh").first().click();
  assert.equal(await frameNumber(page), "21");
});

pageTest("the help lists the keys and closes", walk, async (page) => {
  await page.keyboard.press("?");
  const help = page.getByRole("dialog");
  await help.waitFor();
  assert.match(await help.innerText(), /Play or pause/);
  await page.keyboard.press("Escape");
  assert.equal(await help.isVisible(), false);
});

pageTest("every control is reached by the Tab key", walk, async (page) => {
  const reached = new Set();
  for (let press = 0; press < 60; ++press) {
    await page.keyboard.press("Tab");
    reached.add(await page.evaluate(() => document.activeElement?.getAttribute("aria-label") ?? document.activeElement?.textContent));
  }
  for (const name of ["Play", "Frame", "Frame number", "Speed", "Help", "Body", "Front", "Search joints"])
    assert.ok([...reached].some((each) => each?.includes(name)), `${name} is reached`);
});

test("without WebGL the rest of the page works", async () => {
  const plain = await openBrowser(["--disable-3d-apis"]);
  const opened = await openTake(plain, walk);
  assert.match(await opened.page.locator("#stage").innerText(), /WebGL/);
  await opened.page.keyboard.press("End");
  assert.equal(await frameNumber(opened.page), "257");
  await plain.close();
});
