// Pages that were cut or changed say so, and try nothing dangerous.
import { strict as assert } from "node:assert";
import { readFileSync, writeFileSync } from "node:fs";
import { after, before, test } from "node:test";
import { openBrowser, openPage } from "./browser.mjs";
import { Captures } from "./captures.mjs";

const captures = new Captures(process.env.ZKHOST, process.env.EXAMPLES, process.env.PAGES);
const whole = readFileSync(captures.page("whole", [captures.walk]), "utf8");
const keys = /id="keys-0">([^<]*)/.exec(whole)[1];
let browser;
before(async () => (browser = await openBrowser()));
after(() => browser.close());

/** Replaces the first occurrence of `pattern`, which must exist. */
function changed(pattern, text) {
  assert.match(whole, pattern);
  return whole.replace(pattern, text);
}

// ui_records.test.mjs checks every part of a record without a browser.
const ROWS = {
  "a newer version": [changed(/"version":1/, '"version":2'), /version 2/],
  "records that are no JSON": [changed(/"version":1/, '"version":'), /cut/],
  "ten million frames": [changed(/"frames":257/, '"frames":10000000'), /fewer keys/],
  "more frames than keys": [changed(/"frames":257/, '"frames":300'), /fewer keys/],
  "fewer frames than keys": [changed(/"frames":257/, '"frames":200'), /more keys/],
  "a parent that comes later": [changed(/"parents":\[-1,0,/, '"parents":[-1,9,'), /parent/],
  "keys that are cut": [whole.replace(keys, keys.slice(0, 400)), /keys/],
  "keys that are no base64": [whole.replace(keys, "?".repeat(keys.length)), /keys/],
  "keys of other bytes": [whole.replace(keys, "AAAA".repeat(keys.length / 4)), /keys/],
  "no keys": [whole.replace('id="keys-0"', 'id="other"'), /cut/],
};

for (const [name, [text, message]] of Object.entries(ROWS))
  test(`${name}: the page says so`, async () => {
    const path = captures.path("damaged.html");
    writeFileSync(path, text);
    const { page, problems, close } = await openPage(browser, path);
    const alert = page.getByRole("alert");
    await alert.waitFor({ timeout: 20_000 });
    assert.match(await alert.textContent(), message);
    assert.deepEqual(problems, []);
    assert.equal(await page.evaluate(() => window.take), undefined);
    await close();
  });
