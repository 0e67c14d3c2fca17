// Numbers and units as the page writes them.

const MINUS = "\u2212";

/** A number with a fixed number of decimals and a real minus sign; never "-0". */
export function fixed(value: number, decimals: number): string {
  if (!Number.isFinite(value)) return "?";
  const text = Math.abs(value).toFixed(decimals);
  return value < 0 && Number(text) !== 0 ? MINUS + text : text;
}

/** A number with at most so many decimals, without zeros at its end. */
export function upTo(value: number, decimals: number): string {
  const text = fixed(value, decimals);
  return text.includes(".") ? text.replace(/\.?0+$/, "") : text;
}

/** A number with three or four digits that count, beside others of up to `size`. */
export function rounded(value: number, size = Math.abs(value)): string {
  if (size >= 1e6 || (size > 0 && size < 1e-4)) {
    if (Math.abs(value) < size / 1000) return "0";
    return value.toExponential(1).replace(/-/g, MINUS).replace("e+", "e");
  }
  return fixed(value, decimalsFor(size));
}

/** The decimals with which numbers up to `size` can be told apart. */
function decimalsFor(size: number): number {
  if (size >= 1000) return 0;
  if (size >= 100) return 1;
  return size >= 1 || size === 0 ? 2 : 3;
}

/** "1 frame", "257 frames". */
export function counted(count: number, word: string, several = `${word}s`): string {
  return `${grouped(count)} ${count === 1 ? word : several}`;
}

/** A whole number with narrow spaces between thousands from 10 000 on. */
export function grouped(count: number): string {
  const text = upTo(count, 3);
  return count < 10000 ? text : text.replace(/\B(?=(\d{3})+(?!\d))/g, "\u202f");
}

/** "2.13 s". */
export function secondsText(seconds: number): string {
  return `${fixed(seconds, 2)} s`;
}

/** The rate: "60/s", "29.97/s". */
export function rateText(fps: number): string {
  return `${upTo(fps, 2)}/s`;
}

/** "0.25×". */
export function speedText(speed: number): string {
  return `${upTo(speed, 2)}×`;
}

const UNITS: readonly [number, string][] = [
  [1, "m"],
  [0.1, "dm"],
  [0.01, "cm"],
  [0.001, "mm"],
  [0.0254, "in"],
  [0.3048, "ft"],
];

/** The short name of a unit that is so many metres long; empty if it has none. */
function unitName(metres: number): string {
  return UNITS.find(([size]) => Math.abs(metres / size - 1) < 1e-4)?.[1] ?? "";
}

/** A unit in words: "cm", "0.056444 m", "not known". */
export function unitText(metres: number): string {
  if (!(metres > 0)) return "not known";
  return unitName(metres) || `${Number(metres.toPrecision(5))} m`;
}

/** The height with the file's unit: "1.71 m (cm)", "1.71 m", "171.0 units"; empty if it is not known. */
export function heightText(height: number, metres: number): string {
  if (!(height > 0)) return "";
  if (!(metres > 0)) return `${rounded(height)} units`;
  const text = `${fixed(height * metres, 2)} m`;
  if (metres === 1) return text;
  return `${text} (${unitName(metres) || `unit ${Number(metres.toPrecision(3))} m`})`;
}

/** The size of a file: "812 bytes", "172.7 kB", "7.7 MB". */
export function bytesText(bytes: number): string {
  if (bytes < 1000) return counted(bytes, "byte");
  if (bytes < 1e6) return `${upTo(bytes / 1e3, 1)} kB`;
  if (bytes < 1e9) return `${upTo(bytes / 1e6, 1)} MB`;
  return `${upTo(bytes / 1e9, 1)} GB`;
}

/** Splits a name such as "framesPerSecond" into words: "frames per second". */
export function wordsOf(name: string): string {
  return name
    .replace(/([a-z0-9])([A-Z])/g, "$1 $2")
    .replace(/[_-]+/g, " ")
    .toLowerCase();
}

/** The last part of a path. */
export function fileName(path: string): string {
  return path.split(/[\\/]/).pop() || path;
}
