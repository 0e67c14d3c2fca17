// Reads the arrays of a .npz file whose members are not compressed.
import { readFileSync } from "node:fs";

const TYPES = { "<f8": Float64Array, "<f4": Float32Array, "<i4": Int32Array, "<i8": BigInt64Array };
const CENTRAL_ENTRY = 0x02014b50;

/** Returns the members as [name, bytes], by the directory at the end of the archive. */
function* members(archive) {
  const view = new DataView(archive.buffer, archive.byteOffset, archive.byteLength);
  let at = view.getUint32(archive.length - 22 + 16, true);
  while (view.getUint32(at, true) === CENTRAL_ENTRY) {
    const size = view.getUint32(at + 24, true);
    const nameLength = view.getUint16(at + 28, true);
    const name = archive.toString("latin1", at + 46, at + 46 + nameLength);
    const header = view.getUint32(at + 42, true);
    const start = header + 30 + view.getUint16(header + 26, true) + view.getUint16(header + 28, true);
    yield [name, archive.subarray(start, start + size)];
    at += 46 + nameLength + view.getUint16(at + 30, true) + view.getUint16(at + 32, true);
  }
}

/** Returns {type, shape, data} of a member; `data` is a typed array, or bytes if the type is another. */
function parseArray(bytes) {
  const end = 10 + bytes.readUInt16LE(8);
  const header = bytes.toString("latin1", 10, end);
  const type = /'descr': '([^']*)'/.exec(header)[1];
  const shape = [...(/'shape': \(([^)]*)\)/.exec(header)[1].matchAll(/\d+/g))].map(Number);
  const copy = Uint8Array.from(bytes.subarray(end));
  const data = TYPES[type] ? new TYPES[type](copy.buffer) : copy;
  return { type, shape, data };
}

export function readNpz(path) {
  const arrays = {};
  for (const [name, bytes] of members(readFileSync(path))) arrays[name.replace(/\.npy$/, "")] = parseArray(bytes);
  return arrays;
}

/** Returns the texts of an array of texts, or the text of a single one. */
export function textsOf({ type, shape, data }) {
  const width = 4 * Number(type.slice(2));
  const texts = [];
  for (let start = 0; start < data.length; start += width) {
    const codes = new Uint32Array(data.slice(start, start + width).buffer);
    texts.push(String.fromCodePoint(...codes.filter((code) => code !== 0)));
  }
  return shape.length === 0 ? texts[0] : texts;
}
