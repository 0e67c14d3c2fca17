// render.mjs FILE.glb OUT.png: draws page.mjs with a real browser.
import { readFileSync } from 'node:fs';
import { fileURLToPath } from 'node:url';
import { build } from 'esbuild';
import { chromium } from 'playwright-core';

const [file, out] = process.argv.slice(2);
const width = 1200;
const height = 520;

const bundle = await build({
  entryPoints: [fileURLToPath(new URL('page.mjs', import.meta.url))],
  bundle: true,
  write: false,
  format: 'iife',
});
const browser = await chromium.launch({
  executablePath: process.env.CHROMIUM ?? '/usr/bin/chromium',
  // Drawn in software: the same picture on every machine.
  args: ['--no-sandbox', '--use-gl=angle', '--use-angle=swiftshader', '--enable-unsafe-swiftshader'],
});
try {
  const page = await browser.newPage({ viewport: { width, height }, deviceScaleFactor: 2 });
  page.on('pageerror', (error) => console.error(error));
  page.on('console', (message) => console.error(message.text()));
  await page.setContent('<!doctype html><title>walk</title><body></body>');
  await page.addScriptTag({ content: bundle.outputFiles[0].text });
  await page.evaluate(([bytes, w, h]) => window.draw(bytes, w, h), [
    [...readFileSync(file)],
    width,
    height,
  ]);
  await page.screenshot({ path: out });
} finally {
  await browser.close();
}
