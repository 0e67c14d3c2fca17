// The records of takes as the page holds them, and the checks that a record must pass before any
// memory is reserved for it. docs/viewer.md describes the format.

/** The version of the format that this page reads. */
export const FORMAT_VERSION = 1;

/** Channels of a joint, in the order in which the records list them. */
export const CHANNELS = 6;

export interface FindingRecord {
  code: string;
  severity: "note" | "warning" | "error";
  /** Line and column in the file, counted from 1; 0 if the finding is about the file as a whole. */
  line: number;
  column: number;
  /** How often the file has it. */
  count: number;
  /** The joint's name in the file; empty if the finding is about none. */
  joint: string;
  message: string;
  /** The name of the file, if a take has several. */
  file?: string;
  /** The number of the frame, as people know it; missing if the finding is about none. */
  frame?: number;
}

export interface TakeRecord {
  name: string;
  /** The number of frames, at least 1. A take without motion has one frame, the base pose. */
  frames: number;
  /** Frames per second; 0 for a take without motion. */
  fps: number;
  /** The number of the first frame, as people know it, and the difference to the next one. */
  firstFrame: number;
  frameStep: number;
  /** Metres in one unit of length; 0 if that is not known. */
  unit: number;
  /** The axis that points up: "x", "y" or "z". */
  up: "x" | "y" | "z";
  /** The height of the figure in units of length; 0 if it is not known. */
  height: number;
  models: string[];
  joints: {
    /** All names of a take are different. */
    names: string[];
    /** The names in the file. */
    sourceNames: string[];
    /** The index of each joint's parent, which comes before the joint; -1 for a top joint. */
    parents: number[];
    /** 1 for an end site, 0 for a joint. */
    ends: number[];
    /** The index of each joint's model. */
    models: number[];
    /** 0 for the middle of the body, 1 for its left side, 2 for its right side. */
    sides: number[];
  };
  /**
   * Six numbers a joint: its position against its parent (x, y, z, in units of length) and its
   * angles (x, y, z, in degrees; x turns first, then y, then z). `rest` is the base pose. `values`
   * is the value of a channel that never changes, and the number to add to the keys of one that
   * does.
   */
  rest: number[];
  values: number[];
  /** The channels that change, rising: 6 * joint + the index of the channel. */
  animated: number[];
  findings: FindingRecord[];
  /** Where the take comes from: files, program, options. */
  provenance: Record<string, unknown>;
  /** What could not be shown, as sentences. */
  notes: string[];
}

export class PageError extends Error {}

function require(condition: boolean, what: string): void {
  if (!condition) throw new PageError(`The data of this page are damaged: ${what}.`);
}

function isNumbers(list: unknown, length: number): boolean {
  return Array.isArray(list) && list.length === length && list.every(Number.isFinite);
}

function isTexts(list: unknown, length: number): boolean {
  return Array.isArray(list) && list.length === length && list.every((item) => typeof item === "string");
}

function isCount(value: unknown, least: number): boolean {
  return Number.isSafeInteger(value) && (value as number) >= least;
}

function checkTake(take: TakeRecord): void {
  const count = take.joints?.names?.length;
  require(isCount(count, 1), "a take has no joints");
  require(isTexts(take.joints.names, count), "a joint has no name");
  require(isTexts(take.joints.sourceNames, count), "a joint has no name in the file");
  require(isTexts(take.models, take.models?.length), "the models have no names");
  for (const list of [take.joints.parents, take.joints.ends, take.joints.models, take.joints.sides])
    require(isNumbers(list, count), "a list of joints has the wrong length");
  take.joints.parents.forEach((parent, joint) =>
    require(Number.isInteger(parent) && parent >= -1 && parent < joint, "a joint comes before its parent"),
  );
  require(isNumbers(take.rest, CHANNELS * count), "the base pose has the wrong length");
  require(isNumbers(take.values, CHANNELS * count), "the list of values has the wrong length");
  require(Array.isArray(take.animated) && take.animated.length <= CHANNELS * count, "there are too many curves");
  take.animated.forEach((channel, index) => {
    const before = index === 0 ? -1 : take.animated[index - 1];
    require(Number.isInteger(channel) && channel > before && channel < CHANNELS * count, "a curve has no joint");
  });
  require(isCount(take.frames, 1), "the number of frames is wrong");
  for (const number of [take.fps, take.firstFrame, take.frameStep, take.unit, take.height])
    require(Number.isFinite(number), "a number of a take is missing");
  require(take.fps > 0 || take.frames === 1, "the rate is missing");
  require(Array.isArray(take.findings) && Array.isArray(take.notes), "the findings are missing");
}

/** Parses the records of all takes. Throws PageError. */
export function parseRecords(text: string): TakeRecord[] {
  let page: { version?: number; takes?: TakeRecord[] };
  try {
    page = JSON.parse(text);
  } catch {
    throw new PageError("The data of this page are damaged: the file may have been cut.");
  }
  if (page.version !== FORMAT_VERSION)
    throw new PageError(`This page has data of version ${page.version}, but reads version ${FORMAT_VERSION}.`);
  const takes = page.takes;
  require(Array.isArray(takes) && takes.length > 0, "there is no take");
  takes!.forEach(checkTake);
  return takes!;
}
