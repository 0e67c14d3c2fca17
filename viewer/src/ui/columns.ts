// Reduces curves to what a plot can show: the lowest and the highest value in each column of pixels.

export interface Range {
  low: number;
  high: number;
}

export interface Columns {
  readonly low: Float32Array;
  readonly high: Float32Array;
}

/** The lowest and the highest of all finite values; null if there are none. */
export function rangeOf(curves: readonly Float32Array[]): Range | null {
  let low = Infinity;
  let high = -Infinity;
  for (const values of curves)
    for (const value of values) {
      if (value < low && value > -Infinity) low = value;
      if (value > high && value < Infinity) high = value;
    }
  return low <= high ? { low, high } : null;
}

/** The range that a plot shows: never so narrow that the noise of a still joint fills it. */
export function plotRange(range: Range, least: number): Range {
  const missing = least - (range.high - range.low);
  if (missing <= 0) return range;
  return { low: range.low - missing / 2, high: range.high + missing / 2 };
}

/**
 * The lowest and the highest value in each of `count` columns. A column begins with the last value of
 * the column before it, so that a steep curve has no holes.
 */
export function columnsOf(values: Float32Array, count: number): Columns {
  const low = new Float32Array(count);
  const high = new Float32Array(count);
  for (let column = 0; column < count; ++column) {
    const begin = Math.max(Math.floor((column * values.length) / count) - 1, 0);
    const end = Math.max(Math.floor(((column + 1) * values.length) / count), begin + 1);
    let least = Infinity;
    let most = -Infinity;
    for (let row = begin; row < end; ++row) {
      const value = values[row];
      if (value < least) least = value;
      if (value > most) most = value;
    }
    low[column] = least;
    high[column] = most;
  }
  return { low, high };
}
