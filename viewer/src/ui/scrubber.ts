// The time line: a slider over the frames of the take, with a tick where a finding points.
import type { FindingRecord } from "../data/record";
import type { Player } from "../player";
import { make } from "./dom";
import { counted, secondsText, upTo } from "./text";

/** The line has this many places for ticks: a tick is two pixels wide, and few lines are longer than a thousand. */
const PLACES = 500;

/** A tick of the time line: its frame, from 0, and what the findings there say. */
export interface Tick {
  row: number;
  messages: string[];
}

/**
 * Gathers the findings that have a frame, in the order of the frames. Those of one frame share a tick, and so do
 * those of a long take whose ticks would lie on one another.
 */
export function ticksOf(
  findings: readonly FindingRecord[],
  rowOfNumber: (number: number) => number,
  frames: number,
): Tick[] {
  const found: [row: number, message: string][] = [];
  for (const finding of findings) {
    if (finding.frame === undefined || !Number.isFinite(finding.frame)) continue;
    found.push([rowOfNumber(finding.frame), finding.message]);
  }
  found.sort(([a], [b]) => a - b);
  const ticks = new Map<number, Tick>();
  for (const [row, message] of found) {
    const place = frames > PLACES ? Math.floor((row * PLACES) / frames) : row;
    const tick = ticks.get(place) ?? { row, messages: [] };
    tick.messages.push(message);
    ticks.set(place, tick);
  }
  return [...ticks.values()];
}

export class Scrubber {
  readonly element: HTMLElement;
  private readonly player: Player;
  private readonly slider = make("input", {
    type: "range",
    id: "scrubber",
    min: 0,
    step: 1,
    value: 0,
    "aria-label": "Frame",
  });
  private readonly fill = make("div", { class: "scrubber-fill" });
  private readonly ticks = make("div", { class: "scrubber-ticks" });
  private resumes = false;

  constructor(player: Player) {
    this.player = player;
    const track = make("div", { class: "scrubber-track" }, this.fill);
    this.element = make("div", { class: "scrubber" }, track, this.slider, this.ticks);
    this.slider.addEventListener("input", () => player.goTo(this.slider.valueAsNumber));
    this.listenToDrags();
    this.showTake();
    player.onChange((change) => {
      if (change === "settings") this.showTake();
      if (change !== "pick") this.showTime();
    });
    this.showTime();
  }

  /** A take that plays waits while the slider is held, and goes on afterwards. */
  private listenToDrags(): void {
    this.slider.addEventListener("pointerdown", () => {
      this.resumes = this.player.playing;
      this.player.pause();
    });
    for (const end of ["pointerup", "pointercancel"])
      this.slider.addEventListener(end, () => {
        if (this.resumes) this.player.play();
        this.resumes = false;
      });
    // PageUp and PageDown move by a tenth of the take, but at least by one frame.
    this.slider.addEventListener("keydown", (event) => {
      if (event.key !== "PageUp" && event.key !== "PageDown") return;
      event.preventDefault();
      const frames = Math.max(1, Math.round(this.player.take.frames / 10));
      this.player.step(event.key === "PageUp" ? frames : -frames);
    });
  }

  private shownTake = -1;
  private showTake(): void {
    if (this.shownTake === this.player.mainTake) return;
    this.shownTake = this.player.mainTake;
    const { take } = this.player;
    this.slider.max = String(take.frames - 1);
    this.slider.disabled = take.frames < 2;
    this.ticks.replaceChildren(
      ...ticksOf(take.findings, (number) => take.rowOfNumber(number), take.frames).map((tick) =>
        this.tickElement(tick),
      ),
    );
  }

  /** A tick is for the pointer; the list of findings leads to the same frames by the keyboard. */
  private tickElement(tick: Tick): HTMLElement {
    const { take } = this.player;
    const [first, ...others] = tick.messages;
    const more = others.length > 0 ? ` (and ${counted(others.length, "more", "more")})` : "";
    const title = `Frame ${upTo(take.frameNumber(tick.row), 3)}: ${first}${more}`;
    const element = make("div", { class: "tick", title });
    element.style.left = `${(100 * tick.row) / Math.max(take.frames - 1, 1)}%`;
    element.addEventListener("click", () => this.player.goTo(tick.row));
    return element;
  }

  private showTime(): void {
    const { player } = this;
    const { take } = player;
    const row = player.row();
    this.slider.value = String(row);
    this.fill.style.transform = `scaleX(${row / Math.max(take.frames - 1, 1)})`;
    // Not while it plays: the frames would be read aloud one after the other.
    if (player.playing) return;
    const text = `Frame ${upTo(take.frameNumber(row), 3)}, ${secondsText(take.seconds(row))}`;
    this.slider.setAttribute("aria-valuetext", text);
  }
}
