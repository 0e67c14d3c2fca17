// Builds the page: one HTML file with script and style inside, split where the title and the takes go.
// usage: node build.mjs SOURCE_FOLDER OUT.cpp
// Finds esbuild and three.js in the folder node_modules beside this script.
import { build } from "esbuild";
import { createHash } from "node:crypto";
import { readFileSync, writeFileSync } from "node:fs";
import { dirname, join } from "node:path";
import { fileURLToPath } from "node:url";

const here = dirname(fileURLToPath(import.meta.url));
const [source, out] = process.argv.slice(2);
if (!out) throw new Error("usage: node build.mjs SOURCE_FOLDER OUT.cpp");

async function bundle(entry, options) {
  const result = await build({
    entryPoints: [join(source, entry)],
    bundle: true,
    minify: true,
    write: false,
    target: ["chrome110", "firefox115", "safari16.4"],
    // The licences of what is bundled stay readable at the end.
    legalComments: "eof",
    logLevel: "warning",
    nodePaths: [join(here, "node_modules")],
    ...options,
  });
  return result.outputFiles[0].text.trim();
}

function hashOf(text) {
  return `'sha256-${createHash("sha256").update(text, "utf8").digest("base64")}'`;
}

/** Splits at a marker, which must occur once. */
function splitAt(page, marker) {
  const parts = page.split(marker);
  if (parts.length !== 2) throw new Error(`page.html must have ${marker} once`);
  return parts;
}

/** Replaces a marker, which must occur once. */
function put(page, marker, text) {
  return splitAt(page, marker).join(text);
}

/** Returns the text as a C++ literal of short pieces. */
function literal(text) {
  const pieces = [];
  const bytes = Buffer.from(text, "utf8");
  for (let start = 0; start < bytes.length; start += 2048) {
    let piece = "";
    for (const byte of bytes.subarray(start, start + 2048)) {
      const character = String.fromCharCode(byte);
      if (byte < 32 || byte > 126 || character === "?") piece += "\\" + byte.toString(8).padStart(3, "0");
      else piece += character === '"' || character === "\\" ? "\\" + character : character;
    }
    pieces.push(`"${piece}"`);
  }
  return pieces.length > 0 ? pieces.join("\n    ") : '""';
}

async function buildPage() {
  const script = await bundle("main.ts", { format: "iife", charset: "ascii" });
  const style = await bundle("style.css", {});
  for (const [name, text] of [["script", script], ["style", style]])
    if (text.includes(`</${name}`) || text.includes("<!--")) throw new Error(`the ${name} would end its element`);
  const policy = [
    "default-src 'none'",
    `script-src ${hashOf(script)}`,
    `style-src ${hashOf(style)}`,
    "img-src data: blob:",
    "base-uri 'none'",
    "form-action 'none'",
  ].join("; ");
  // Split first: script and style may hold the text of a marker.
  const [head, rest] = splitAt(readFileSync(join(source, "page.html"), "utf8"), "@TITLE@");
  const [middle, end] = splitAt(rest, "@TAKES@");
  return {
    beforeTitle: put(head, "@POLICY@", policy),
    beforeTakes: put(middle, "@STYLE@", style),
    end: put(end, "@SCRIPT@", script),
  };
}

const page = await buildPage();
writeFileSync(
  out,
  `// Generated from the sources of the viewer.
#include "export/page_template.h"

namespace exporters {

const std::optional<PageTemplate> kPageTemplate = PageTemplate{
    ${literal(page.beforeTitle)},
    ${literal(page.beforeTakes)},
    ${literal(page.end)},
};

}  // namespace exporters
`,
);
