// Measures pages of the viewer in Chromium without a GPU: how soon the first picture of a long take is drawn,
// and how much time the script needs for a picture of ten figures.
// usage: node measure.mjs ZKHOST    (beside the packages of tests/viewer)
import { execFileSync } from "node:child_process";
import { mkdtempSync, rmSync, statSync, writeFileSync } from "node:fs";
import { tmpdir } from "node:os";
import { join } from "node:path";
import { pathToFileURL } from "node:url";
import { chromium } from "playwright-core";

const ARGUMENTS = ["--no-sandbox", "--disable-gpu", "--use-gl=angle", "--use-angle=swiftshader", "--enable-unsafe-swiftshader"];
const OPENINGS = 6;
const PICTURES = 60;

/** A figure with limbs: `joints` joints in five chains, each of which swings. */
function bvh(joints, frames) {
  const limbs = 5;
  let text = "HIERARCHY\nROOT Hips\n{\nOFFSET 0 90 0\nCHANNELS 6 Xposition Yposition Zposition Zrotation Xrotation Yrotation\n";
  let written = 1;
  for (let limb = 0; limb < limbs; ++limb) {
    const count = Math.floor((joints - 1 + limb) / limbs);
    for (let joint = 0; joint < count; ++joint, ++written) {
      const offset = joint === 0 ? `${15 * (limb - 2)} 0 0` : `0 ${limb < 2 ? -8 : 8} 1`;
      text += `JOINT J${limb}_${joint}\n{\nOFFSET ${offset}\nCHANNELS 3 Zrotation Xrotation Yrotation\n`;
    }
    text += `End Site\n{\nOFFSET 0 5 0\n}\n${"}\n".repeat(count)}`;
  }
  text += `}\nMOTION\nFrames: ${frames}\nFrame Time: 0.0166667\n`;
  for (let frame = 0; frame < frames; ++frame) {
    const row = [0, 90, frame / 100];
    // Numbers that do not repeat, as a captured motion has them.
    for (let channel = 3; channel < 6 + 3 * (written - 1); ++channel)
      row.push((30 * Math.sin(frame * (0.01 + 0.0007 * channel) + channel) + Math.random() / 20).toFixed(4));
    text += `${row.join(" ")}\n`;
  }
  return text;
}

function median(values) {
  const sorted = [...values].sort((a, b) => a - b);
  return sorted[Math.floor(sorted.length / 2)];
}

/**
 * Milliseconds from the opening of the page until the browser paints the first picture, in each opening but the
 * first. The controls appear in the same frame as the picture.
 */
async function firstPictures(browser, path) {
  const times = [];
  for (let opening = 0; opening < OPENINGS; ++opening) {
    const page = await browser.newPage({ viewport: { width: 1280, height: 800 } });
    await page.goto(pathToFileURL(path).href, { waitUntil: "commit" });
    await page.waitForFunction(() => window.take && performance.getEntriesByName("first-contentful-paint").length > 0);
    times.push(await page.evaluate(() => performance.getEntriesByName("first-contentful-paint")[0].startTime));
    await page.close();
  }
  return times.slice(1);
}

/** Adds up the time of the callbacks of requestAnimationFrame. Runs in the page. */
function measureCallbacks() {
  window.pictures = [];
  const request = window.requestAnimationFrame.bind(window);
  window.requestAnimationFrame = (callback) =>
    request((time) => {
      const start = performance.now();
      callback(time);
      window.pictures.push(performance.now() - start);
    });
}

async function scriptTimes(browser, path) {
  const page = await browser.newPage({ viewport: { width: 1280, height: 800 } });
  await page.addInitScript(measureCallbacks);
  await page.goto(pathToFileURL(path).href);
  await page.waitForFunction(() => window.take);
  await page.evaluate(() => take.play());
  await page.waitForFunction((count) => window.pictures.length > count, PICTURES, { timeout: 120_000 });
  const times = await page.evaluate(() => window.pictures.slice(10));
  await page.close();
  return times;
}

const [zkhost] = process.argv.slice(2);
if (!zkhost) throw new Error("usage: node measure.mjs ZKHOST");
const folder = mkdtempSync(join(tmpdir(), "viewer-"));
const browser = await chromium.launch({ executablePath: process.env.CHROMIUM ?? "/usr/bin/chromium", args: ARGUMENTS });
try {
  const long = join(folder, "long.bvh");
  writeFileSync(long, bvh(24, 10_000));
  const page = join(folder, "long.html");
  execFileSync(zkhost, ["import", long, "--quiet", "-o", page]);
  console.log(`24 joints, 10,000 frames: ${(statSync(page).size / 1e6).toFixed(2)} MB`);
  const opened = await firstPictures(browser, page);
  console.log(`first picture: median ${median(opened).toFixed(0)} ms of ${opened.map((time) => time.toFixed(0)).join(" ")}`);

  const files = Array.from({ length: 10 }, (_, index) => {
    const file = join(folder, `figure${index}.bvh`);
    writeFileSync(file, bvh(60, 300));
    return file;
  });
  const env = { ...process.env, XDG_CACHE_HOME: folder };
  const crowd = execFileSync(zkhost, ["view", ...files, "--no-open", "--quiet"], { env }).toString().trim();
  const times = await scriptTimes(browser, crowd);
  console.log(`script time of a picture of 10 figures of 60 joints: median ${median(times).toFixed(2)} ms, most ${Math.max(...times).toFixed(2)} ms`);
} finally {
  await browser.close();
  rmSync(folder, { recursive: true });
}
