// What the tests of the readers share.
import { readFileSync, readdirSync } from 'node:fs';
import { join } from 'node:path';

// Of the skeleton's height.
export const bound = 1e-4;

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

// Prints a line a sample and ends the process.
export async function check(folder, measure) {
  const all = samples(folder);
  let failed = all.length === 0;
  for (const sample of all) {
    const result = await measure(sample);
    if (result === undefined) continue;
    console.log(`${sample.name}: ${result.toExponential(2)} of the height`);
    if (!(result <= bound)) failed = true;
  }
  process.exit(failed ? 1 : 0);
}
