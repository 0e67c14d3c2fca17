// render.mjs PAGE.html OUT.png: opens a page of the viewer in a browser and takes its picture.
import { pathToFileURL } from "node:url";
import { chromium } from "playwright-core";

const FRAME = 102; // counted from 0; a moment at which arms and legs are apart
const [page, out] = process.argv.slice(2);
const browser = await chromium.launch({
  executablePath: process.env.CHROMIUM ?? "/usr/bin/chromium",
  // Drawn in software: the same picture on every machine.
  args: ["--no-sandbox", "--use-gl=angle", "--use-angle=swiftshader", "--enable-unsafe-swiftshader"],
});
try {
  const shown = await browser.newPage({
    viewport: { width: 1200, height: 720 },
    deviceScaleFactor: 1.5,
    colorScheme: "light",
    reducedMotion: "reduce",
  });
  shown.on("pageerror", (error) => console.error(error));
  shown.on("console", (message) => console.error(message.text()));
  await shown.goto(pathToFileURL(page).href);
  await shown.waitForFunction(() => window.take);
  await shown.getByRole("tree").getByText("LeftForeArm", { exact: true }).click();
  await shown.evaluate((frame) => take.goTo(frame), FRAME);
  // The second picture is the one with shadows.
  await shown.waitForTimeout(1500);
  await shown.screenshot({ path: out });
} finally {
  await browser.close();
}
