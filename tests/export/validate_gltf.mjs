// validate_gltf.mjs FOLDER: the Khronos validator must find neither an error nor a warning in the .glb
// and .gltf files of the folder.
import { readFileSync, readdirSync } from 'node:fs';
import { join } from 'node:path';
import validator from 'gltf-validator';

const folder = process.argv[2];
const read = (name) => new Uint8Array(readFileSync(join(folder, name)));
const files = readdirSync(folder).filter((name) => /\.(glb|gltf)$/.test(name));
let failed = files.length === 0;
if (failed) console.log(`no file *.glb or *.gltf in ${folder}`);
for (const name of files) {
  const report = await validator.validateBytes(read(name), {
    uri: name,
    maxIssues: 50,
    externalResourceFunction: (uri) => Promise.resolve(read(decodeURIComponent(uri))),
  });
  const { numErrors, numWarnings, messages } = report.issues;
  console.log(`${name}: ${numErrors} errors, ${numWarnings} warnings`);
  if (numErrors + numWarnings === 0) continue;
  failed = true;
  for (const issue of messages.filter((message) => message.severity < 2))
    console.log(`  ${issue.code} ${issue.pointer}: ${issue.message}`);
}
process.exit(failed ? 1 : 0);
