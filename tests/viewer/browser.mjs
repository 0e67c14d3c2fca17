// Opens pages in Chromium, with the network off.
import { strict as assert } from "node:assert";
import { pathToFileURL } from "node:url";
import { chromium } from "playwright-core";

export async function openBrowser(further = []) {
  return chromium.launch({
    executablePath: process.env.CHROMIUM ?? "/usr/bin/chromium",
    // Drawn in software: the same on every machine.
    args: ["--no-sandbox", "--use-gl=angle", "--use-angle=swiftshader", "--enable-unsafe-swiftshader", ...further],
  });
}

/** Counts the frames that a page asks for. Runs in the page, before its own script. */
function countFrames() {
  window.framesAskedFor = 0;
  const request = window.requestAnimationFrame.bind(window);
  window.requestAnimationFrame = (callback) => {
    ++window.framesAskedFor;
    return request(callback);
  };
}

/**
 * Opens a file. `problems` collects the errors of the page and all that it prints, `requests` the addresses
 * that it asks for. `address` is what follows the path, such as "#frame=3".
 */
export async function openPage(browser, path, { address = "", ...options } = {}) {
  const context = await browser.newContext({ viewport: { width: 1280, height: 800 }, reducedMotion: "reduce", ...options });
  await context.setOffline(true);
  const page = await context.newPage();
  const problems = [];
  const requests = [];
  page.on("pageerror", (error) => problems.push(error.message));
  page.on("console", (message) => {
    // Chromium warns that it draws in software, which is wanted here.
    if (!/GPU stall|GL Driver Message|software WebGL/i.test(message.text())) problems.push(message.text());
  });
  page.on("dialog", (dialog) => {
    problems.push(`dialog: ${dialog.message()}`);
    dialog.dismiss();
  });
  page.on("request", (request) => requests.push(request.url()));
  await page.addInitScript(countFrames);
  const url = pathToFileURL(path).href + address;
  await page.goto(url);
  return { page, problems, requests, url, close: () => context.close() };
}

/** Opens a page whose takes must be shown. */
export async function openTake(browser, path, options) {
  const opened = await openPage(browser, path, options);
  try {
    await opened.page.waitForFunction(() => window.take, null, { timeout: 60_000 });
  } catch (error) {
    throw new Error(`${path} shows no take: ${opened.problems.join("; ")} ${error.message}`);
  }
  return opened;
}

/** Fails unless the page printed nothing, threw nothing and asked for nothing but itself. */
export function assertQuiet({ problems, requests, url }) {
  assert.deepEqual(problems, []);
  // The address is asked for once; pictures that the page makes itself are no requests beyond it.
  const own = url.replace(/#.*/, "");
  const others = requests.filter((request) => request.replace(/#.*/, "") !== own && !/^(data|blob):/.test(request));
  assert.deepEqual(others, []);
}
