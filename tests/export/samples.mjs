// Functions that the scripts with readers share.
import { readFileSync, readdirSync } from 'node:fs';
import { join } from 'node:path';

// The greatest distance, as a fraction of the skeleton's height.
export const bound = 1e-4;

// The samples in the folder: their names, paths and what NAME.json says about them.
export function samples(folder) {
  return readdirSync(folder)
    .filter((name) => name.endsWith('.json'))
    .map((name) => name.slice(0, -5))
    .map((name) => ({ name, path: (extension) => join(folder, name + extension) }))
    .map((sample) => ({ ...sample, models: JSON.parse(readFileSync(sample.path('.json'))) }));
}

export function bytesOf(path) {
  const file = readFileSync(path);
  return file.buffer.slice(file.byteOffset, file.byteOffset + file.byteLength);
}

export function distance(a, b) {
  return Math.hypot(a[0] - b[0], a[1] - b[1], a[2] - b[2]);
}

// Calls `measure` for each sample, prints the distance that it returns, and ends the process: with
// status 0 if no distance is above the bound. A sample without a result is left out.
export async function check(folder, measure) {
  const all = samples(folder);
  let failed = all.length === 0;
  if (failed) console.log(`no file *.json in ${folder}`);
  for (const sample of all) {
    const result = await measure(sample);
    if (result === undefined) continue;
    console.log(`${sample.name}: ${result.toExponential(2)} of the height`);
    if (!(result <= bound)) failed = true;
  }
  process.exit(failed ? 1 : 0);
}
