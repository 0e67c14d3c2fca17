// What the page shows: the time, the joint that is picked, and how the figure is drawn. All parts of the
// page read it here, change it through its methods, and are told of changes.
import type { Take } from "./data/take";

export const SPEEDS = [0.1, 0.25, 0.5, 1, 2, 4] as const;
export const LOOKS = ["body", "bones", "joints"] as const;
export type Look = (typeof LOOKS)[number];

/** A joint of a take; the indices count from 0. */
export interface Pick {
  take: number;
  joint: number;
}

/** What changed: the time; the joint picked; or anything else, such as speed and look. */
export type Change = "time" | "pick" | "settings";

export class Player {
  readonly takes: readonly Take[];
  private listeners: ((change: Change) => void)[] = [];
  private now = 0;
  private isPlaying = false;
  private currentSpeed = 1;
  private loops = true;
  private currentLook: Look = "body";
  private follows = false;
  private picked: Pick | null = null;
  private main = 0;

  constructor(takes: readonly Take[]) {
    this.takes = takes;
  }

  /** Calls `listener` after each change. */
  onChange(listener: (change: Change) => void): void {
    this.listeners.push(listener);
  }
  private tell(change: Change): void {
    for (const listener of this.listeners) listener(change);
  }

  // Time. All takes run in step, by seconds. Frames are counted in the take that the bar shows.

  /** The take whose frames the bar shows. */
  get take(): Take {
    return this.takes[this.main];
  }
  get mainTake(): number {
    return this.main;
  }
  set mainTake(index: number) {
    if (index === this.main || !this.takes[index]) return;
    this.main = index;
    this.tell("settings");
    this.tell("time");
  }
  /** Seconds from the beginning. */
  get seconds(): number {
    return this.now;
  }
  /** The duration of the longest take, in seconds. */
  get duration(): number {
    return Math.max(...this.takes.map((take) => take.duration));
  }
  /** The time of the last frame of all takes, in seconds. */
  private get lastFrame(): number {
    return Math.max(...this.takes.map((take) => take.seconds(take.frames - 1)));
  }
  /** The frame of a take that is shown, from 0. */
  row(take: Take = this.take): number {
    return take.rowAt(this.now);
  }
  /** Shows a frame, counted from 0, and pauses. */
  goTo(row: number): void {
    this.pause();
    this.now = this.take.seconds(this.take.clampRow(Math.round(row) || 0));
    this.tell("time");
  }
  /** Moves by a number of frames, and pauses. */
  step(frames: number): void {
    this.goTo(this.row() + frames);
  }
  /** Moves to a time without changing whether the take plays. */
  seek(seconds: number): void {
    this.now = Math.min(Math.max(seconds, 0), this.duration);
    this.tell("time");
  }
  /** Moves the time on by `elapsed` seconds of the clock. Called before each picture of a playing take. */
  advance(elapsed: number): void {
    if (!this.isPlaying) return;
    let next = this.now + elapsed * this.currentSpeed;
    if (next >= this.duration) {
      if (this.loops && this.duration > 0) {
        next %= this.duration;
      } else {
        // A time within the last frame stays.
        next = Math.max(this.now, this.lastFrame);
        this.pause();
      }
    }
    this.now = next;
    this.tell("time");
  }

  get canPlay(): boolean {
    return this.takes.some((take) => take.frames > 1);
  }
  get playing(): boolean {
    return this.isPlaying;
  }
  play(): void {
    if (this.isPlaying || !this.canPlay) return;
    // Rows are compared, since a time may lie within the last frame.
    if (!this.loops && this.takes.every((take) => this.row(take) === take.frames - 1)) this.now = 0;
    this.isPlaying = true;
    this.tell("settings");
  }
  pause(): void {
    if (!this.isPlaying) return;
    this.isPlaying = false;
    this.tell("settings");
  }
  toggle(): void {
    if (this.isPlaying) this.pause();
    else this.play();
  }

  get speed(): number {
    return this.currentSpeed;
  }
  set speed(speed: number) {
    this.currentSpeed = speed;
    this.tell("settings");
  }
  get loop(): boolean {
    return this.loops;
  }
  set loop(loops: boolean) {
    this.loops = loops;
    this.tell("settings");
  }

  // What is drawn.

  get look(): Look {
    return this.currentLook;
  }
  set look(look: Look) {
    this.currentLook = look;
    this.tell("settings");
  }
  /** Whether the camera moves along with the figure. */
  get follow(): boolean {
    return this.follows;
  }
  set follow(follows: boolean) {
    this.follows = follows;
    this.tell("settings");
  }
  get pick(): Pick | null {
    return this.picked;
  }
  set pick(pick: Pick | null) {
    if (pick?.take === this.picked?.take && pick?.joint === this.picked?.joint) return;
    this.picked = pick;
    this.tell("pick");
  }
}
