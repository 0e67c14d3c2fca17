// A take that is ready to be shown.
import { CHANNELS, type FindingRecord, type TakeRecord } from "./record";

export interface Joint {
  readonly index: number;
  readonly name: string;
  readonly sourceName: string;
  /** -1 for a top joint. */
  readonly parent: number;
  readonly children: readonly number[];
  readonly isEnd: boolean;
  readonly model: number;
  readonly side: "middle" | "left" | "right";
}

const SIDES = ["middle", "left", "right"] as const;

export class Take {
  readonly name: string;
  readonly models: readonly string[];
  readonly joints: readonly Joint[];
  readonly frames: number;
  readonly fps: number;
  readonly unit: number;
  readonly up: "x" | "y" | "z";
  readonly height: number;
  readonly findings: readonly FindingRecord[];
  readonly provenance: Record<string, unknown>;
  readonly notes: readonly string[];
  /** The base pose: six numbers a joint, as in TakeRecord. */
  readonly rest: Float64Array;
  private readonly values: Float64Array;
  /** For each channel the index of its curve, or -1 if it does not change. */
  private readonly curves: Int32Array;
  private readonly keys: Float32Array;
  private readonly record: TakeRecord;

  constructor(record: TakeRecord, keys: Float32Array) {
    this.record = record;
    this.name = record.name;
    this.models = record.models;
    this.frames = record.frames;
    this.fps = record.fps;
    this.unit = record.unit;
    this.up = record.up;
    this.height = record.height;
    this.findings = record.findings;
    this.provenance = record.provenance;
    this.notes = record.notes;
    const children: number[][] = record.joints.names.map(() => []);
    record.joints.parents.forEach((parent, joint) => {
      if (parent >= 0) children[parent].push(joint);
    });
    this.joints = record.joints.names.map((name, index) => ({
      index,
      name,
      sourceName: record.joints.sourceNames[index],
      parent: record.joints.parents[index],
      children: children[index],
      isEnd: record.joints.ends[index] !== 0,
      model: record.joints.models[index],
      side: SIDES[record.joints.sides[index]] ?? "middle",
    }));
    this.rest = Float64Array.from(record.rest);
    this.values = Float64Array.from(record.values);
    this.keys = keys;
    this.curves = new Int32Array(CHANNELS * this.joints.length).fill(-1);
    record.animated.forEach((channel, curve) => (this.curves[channel] = curve));
  }

  /** The seconds from the first frame to the end of the last one. */
  get duration(): number {
    return this.fps > 0 ? this.frames / this.fps : 0;
  }
  /** The number of a frame as people know it. `row` counts frames from 0. */
  frameNumber(row: number): number {
    return this.record.firstFrame + row * this.record.frameStep;
  }
  /** The frame with this number, or the nearest one; from 0. */
  rowOfNumber(number: number): number {
    return this.clampRow(Math.round((number - this.record.firstFrame) / (this.record.frameStep || 1)));
  }
  /** Seconds from the first frame. */
  seconds(row: number): number {
    return this.fps > 0 ? row / this.fps : 0;
  }
  /** The frame that is shown at a time: the last one that has begun. */
  rowAt(seconds: number): number {
    // A time that was computed from a row must give that row again.
    return this.clampRow(Math.floor(seconds * this.fps + 1e-6));
  }
  clampRow(row: number): number {
    return Math.min(Math.max(row, 0), this.frames - 1);
  }

  /** The value of a channel (6 * joint + its index) in a frame. */
  value(channel: number, row: number): number {
    const curve = this.curves[channel];
    return this.values[channel] + (curve < 0 ? 0 : this.keys[curve * this.frames + row]);
  }
  /** Writes the six numbers of every joint in a frame to `out`. */
  readRow(row: number, out: Float64Array): void {
    out.set(this.values);
    const { animated } = this.record;
    for (let curve = 0; curve < animated.length; ++curve)
      out[animated[curve]] += this.keys[curve * this.frames + row];
  }
}
