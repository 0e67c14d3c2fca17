// The records of takes as the page holds them, and the checks that a record must pass before any
// memory is reserved for it. docs/viewer.md describes the format.

/** The version of the format that this page reads. */
const FORMAT_VERSION = 1;

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

/** The most frames of a take: a day and more at 100 frames per second. Lists of this length fit into memory. */
const MOST_FRAMES = 10_000_000;

function require(condition: boolean, what: string): asserts condition {
  if (!condition) throw new PageError(`The data of this page are damaged: ${what}.`);
}

function isObject(value: unknown): value is Record<string, unknown> {
  return typeof value === "object" && value !== null && !Array.isArray(value);
}

function isText(value: unknown): value is string {
  return typeof value === "string";
}

function isTexts(list: unknown): list is string[] {
  return Array.isArray(list) && list.every(isText);
}

function isNumbers(list: unknown, length: number): list is number[] {
  return Array.isArray(list) && list.length === length && list.every(Number.isFinite);
}

/** Whether a value is a whole number from `least` to `most`. */
function isWhole(value: unknown, least: number, most: number): value is number {
  return Number.isSafeInteger(value) && (value as number) >= least && (value as number) <= most;
}

/** Checks a list with a whole number from `least` to `most` for each joint. */
function checkIndices(
  list: unknown,
  count: number,
  least: number,
  most: number,
  what: string,
): asserts list is number[] {
  require(isNumbers(list, count), "a list of joints has the wrong length");
  require(
    list.every((index) => isWhole(index, least, most)),
    what,
  );
}

/** Returns the number of joints. */
function checkJoints(joints: unknown, models: number): number {
  require(isObject(joints) && Array.isArray(joints.names) && joints.names.length > 0, "a take has no joints");
  const { names, sourceNames, parents, ends, models: modelOf, sides } = joints;
  require(isTexts(names), "a joint has no name");
  const count = names.length;
  require(isTexts(sourceNames) && sourceNames.length === count, "a joint has no name in the file");
  checkIndices(parents, count, -1, count - 1, "a joint has no parent");
  parents.forEach((parent, joint) => require(parent < joint, "a joint comes before its parent"));
  checkIndices(ends, count, 0, 1, "an end site is marked by another number than 1");
  checkIndices(modelOf, count, 0, models - 1, "a joint has no model");
  checkIndices(sides, count, 0, 2, "a joint has a side that does not exist");
  return count;
}

/** Checks the curves and the frames. `channels` is the number of channels of the take. */
function checkMotion(take: Record<string, unknown>, channels: number): void {
  const { animated, frames, fps } = take;
  require(isNumbers(take.rest, channels), "the base pose has the wrong length");
  require(isNumbers(take.values, channels), "the list of values has the wrong length");
  require(Array.isArray(animated) && animated.length <= channels, "there are too many curves");
  animated.forEach((channel, index) =>
    require(isWhole(channel, index === 0 ? 0 : animated[index - 1] + 1, channels - 1), "a curve has no joint"),
  );
  require(isWhole(frames, 1, MOST_FRAMES), "the number of frames is wrong");
  for (const number of [fps, take.firstFrame, take.frameStep, take.unit, take.height])
    require(Number.isFinite(number), "a number of a take is missing");
  require((fps as number) > 0 || (fps === 0 && frames === 1), "the rate is wrong");
}

function checkFinding(finding: unknown): void {
  require(isObject(finding), "a finding is empty");
  const { code, joint, message, file, severity, line, column, count, frame } = finding;
  require([code, joint, message, file ?? ""].every(isText), "a finding has no text");
  require(["note", "warning", "error"].includes(severity as string), "a finding has no severity");
  require([line, column, count, frame ?? 0].every(Number.isFinite), "a number of a finding is missing");
}

function checkTake(take: unknown): void {
  require(isObject(take), "a take is empty");
  const { name, up, models, findings, provenance, notes } = take;
  require(isText(name), "a take has no name");
  require(["x", "y", "z"].includes(up as string), "the axis that points up is wrong");
  require(isTexts(models), "the models have no names");
  checkMotion(take, CHANNELS * checkJoints(take.joints, models.length));
  require(Array.isArray(findings), "the findings are missing");
  findings.forEach(checkFinding);
  require(isObject(provenance), "the source of a take is missing");
  require(isTexts(notes), "the notes are missing");
}

/** Parses the records of all takes. Throws PageError. */
export function parseRecords(text: string): TakeRecord[] {
  let page: unknown;
  try {
    page = JSON.parse(text);
  } catch {
    throw new PageError("The data of this page are damaged: the file may have been cut.");
  }
  require(isObject(page), "there are no records");
  const { version, takes } = page;
  require(Number.isFinite(version), "the version is missing");
  if (version !== FORMAT_VERSION)
    throw new PageError(`This page has data of version ${version}, but reads version ${FORMAT_VERSION}.`);
  require(Array.isArray(takes) && takes.length > 0, "there is no take");
  takes.forEach(checkTake);
  return takes as TakeRecord[];
}
