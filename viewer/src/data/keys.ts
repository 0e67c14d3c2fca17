// Unpacks the keys of a take: text in base64, deflated, byte planes, differences, 32-bit floats.
import { PageError, type TakeRecord } from "./record";

function fromBase64(text: string): Uint8Array<ArrayBuffer> {
  const decode = (Uint8Array as unknown as { fromBase64?: (text: string) => Uint8Array<ArrayBuffer> }).fromBase64;
  if (decode) return decode.call(Uint8Array, text);
  const characters = atob(text);
  const bytes = new Uint8Array(characters.length);
  for (let index = 0; index < bytes.length; ++index) bytes[index] = characters.charCodeAt(index);
  return bytes;
}

/** Inflates into an array of exactly `size` bytes. */
async function inflate(packed: Uint8Array<ArrayBuffer>, size: number): Promise<Uint8Array> {
  const stream = new Blob([packed]).stream().pipeThrough(new DecompressionStream("deflate-raw"));
  const reader = stream.getReader();
  const bytes = new Uint8Array(size);
  let filled = 0;
  for (;;) {
    const { done, value } = await reader.read();
    if (done) break;
    if (filled + value.length > size) throw new PageError("There are more keys than the page announces.");
    bytes.set(value, filled);
    filled += value.length;
  }
  if (filled !== size) throw new PageError("There are fewer keys than the page announces.");
  return bytes;
}

/** Joins the four byte planes and undoes the differences. Each curve has `frames` keys. */
function joinPlanes(planes: Uint8Array, curves: number, frames: number): Float32Array {
  const count = curves * frames;
  const keys = new Float32Array(count);
  const bits = new Int32Array(keys.buffer);
  for (let curve = 0; curve < curves; ++curve) {
    let value = 0;
    const end = (curve + 1) * frames;
    for (let index = curve * frames; index < end; ++index) {
      const packed =
        planes[index] |
        (planes[count + index] << 8) |
        (planes[2 * count + index] << 16) |
        (planes[3 * count + index] << 24);
      // Differences are stored with their sign in the lowest bit.
      value = (value + ((packed >>> 1) ^ -(packed & 1))) | 0;
      bits[index] = value;
    }
  }
  return keys;
}

/** Returns the keys of all animated channels, one curve after the other. Throws PageError. */
export async function unpackKeys(take: TakeRecord, text: string): Promise<Float32Array> {
  const curves = take.animated.length;
  const size = 4 * curves * take.frames;
  if (size === 0) return new Float32Array(0);
  // Deflate packs at most about a thousand bytes into one, so a short text cannot ask for much memory.
  if (!(size <= 1100 * text.length)) throw new PageError("There are fewer keys than the page announces.");
  let packed: Uint8Array<ArrayBuffer>;
  try {
    packed = fromBase64(text);
  } catch {
    throw new PageError("The keys of this page are damaged: the file may have been cut.");
  }
  try {
    return joinPlanes(await inflate(packed, size), curves, take.frames);
  } catch (error) {
    if (error instanceof PageError) throw error;
    throw new PageError("The keys of this page are damaged: the file may have been cut.");
  }
}
