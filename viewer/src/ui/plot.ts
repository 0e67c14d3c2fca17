// A plot of up to three curves over the frames of a take. The cursor is a layer of its own: when it
// moves, nothing is drawn anew.
import { columnsOf, plotRange, type Range, rangeOf } from "./columns";
import { changingText, make, setText } from "./dom";
import { rounded } from "./text";

export interface PlotData {
  /** One, or three for x, y and z. */
  curves: readonly Float32Array[];
  /** Multiplies the values, for example to make metres. */
  factor: number;
  unit: string;
  /** The narrowest range that is shown, before `factor`. */
  least: number;
}

const PADDING = 5;
const CHANNEL_NAMES = ["x", "y", "z"] as const;

export class Plot {
  readonly element: HTMLElement;
  private readonly canvas = make("canvas", { "aria-hidden": "true" });
  private readonly cursor = make("div", { class: "cursor" });
  private readonly area: HTMLElement;
  private readonly unit = changingText();
  private readonly high = changingText();
  private readonly low = changingText();
  private readonly values: Text[];
  private readonly title: string;
  private data: PlotData | null = null;
  /** The greatest value, whose digits say how the others are written. */
  private size = 0;
  private range: Range = { low: 0, high: 1 };

  /** Calls `scrub` with a place between 0 and 1 while the plot is pressed. */
  constructor(title: string, channels: 1 | 3, scrub: (ratio: number) => void) {
    this.title = title;
    this.values = Array.from({ length: channels }, changingText);
    const legend = this.values.map((value, index) =>
      make(
        "span",
        { class: `channel channel-${channels === 1 ? "only" : CHANNEL_NAMES[index]}` },
        make("span", { class: "channel-name" }, channels === 1 ? "" : CHANNEL_NAMES[index]),
        make("span", { class: "value" }, value),
      ),
    );
    this.area = make("div", { class: "plot-area" }, this.canvas, this.cursor);
    const labels = make("div", { class: "plot-labels" }, make("span", {}, this.high), make("span", {}, this.low));
    const heading = make("h2", {}, title, " ", make("span", { class: "soft" }, this.unit));
    this.element = make(
      "div",
      { class: "plot", role: "group", "aria-label": title },
      make("div", { class: "plot-head" }, heading, make("div", { class: "legend" }, ...legend)),
      make("div", { class: "plot-body" }, labels, this.area),
    );
    this.listenToPointer(scrub);
    new ResizeObserver(() => this.draw()).observe(this.area);
  }

  private listenToPointer(scrub: (ratio: number) => void): void {
    const { area } = this;
    const scrubTo = (event: PointerEvent): void => {
      const box = area.getBoundingClientRect();
      scrub(Math.min(Math.max((event.clientX - box.left) / Math.max(box.width, 1), 0), 1));
    };
    area.addEventListener("pointerdown", (event) => {
      if (event.button !== 0) return;
      area.setPointerCapture(event.pointerId);
      scrubTo(event);
    });
    area.addEventListener("pointermove", (event) => {
      if (area.hasPointerCapture(event.pointerId)) scrubTo(event);
    });
  }

  show(data: PlotData): void {
    this.data = data;
    const range = rangeOf(data.curves) ?? { low: 0, high: 0 };
    this.range = plotRange(range, data.least);
    const { factor } = data;
    const size = Math.max(Math.abs(range.low), Math.abs(range.high)) * factor;
    this.size = size;
    const high = rounded(range.high * factor, size);
    const low = rounded(range.low * factor, size);
    setText(this.unit, data.unit);
    setText(this.high, high);
    setText(this.low, high === low ? "" : low);
    this.element.classList.toggle("flat", high === low);
    this.element.setAttribute("aria-label", `${this.title}: from ${low} to ${high} ${data.unit}`);
    this.draw();
  }

  /** Moves the cursor to a frame, from 0, and writes the values there. */
  showRow(row: number, frames: number): void {
    if (!this.data) return;
    this.cursor.style.transform = `translateX(${(100 * row) / Math.max(frames - 1, 1)}%)`;
    const { curves, factor } = this.data;
    curves.forEach((values, index) => setText(this.values[index], rounded(values[row] * factor, this.size)));
  }

  /** Draws the curves in the colours and the sharpness of the moment. */
  draw(): void {
    const width = this.area.clientWidth;
    const height = this.area.clientHeight;
    if (!this.data || width === 0 || height === 0) return;
    const sharpness = Math.min(Math.max(devicePixelRatio || 1, 1), 4);
    this.canvas.width = Math.round(width * sharpness);
    this.canvas.height = Math.round(height * sharpness);
    const context = this.canvas.getContext("2d");
    if (!context) return;
    context.scale(sharpness, sharpness);
    context.lineJoin = "round";
    const yOf = (value: number): number => {
      const { low, high } = this.range;
      return PADDING + ((high - value) / (high - low || 1)) * (height - 2 * PADDING);
    };
    this.drawZero(context, width, yOf(0), height);
    const names = this.data.curves.length === 1 ? ["only"] : CHANNEL_NAMES;
    // The first channel lies on top.
    for (let index = this.data.curves.length - 1; index >= 0; --index) {
      context.strokeStyle = this.colour(`--channel-${names[index]}`);
      drawCurve(context, this.data.curves[index], width, sharpness, yOf);
    }
  }

  private colour(name: string): string {
    return getComputedStyle(this.element).getPropertyValue(name).trim() || "#808080";
  }

  private drawZero(context: CanvasRenderingContext2D, width: number, y: number, height: number): void {
    if (y < PADDING || y > height - PADDING) return;
    context.fillStyle = this.colour("--line");
    context.fillRect(0, Math.round(y), width, 1);
  }
}

function drawCurve(
  context: CanvasRenderingContext2D,
  values: Float32Array,
  width: number,
  sharpness: number,
  yOf: (value: number) => number,
): void {
  const count = Math.round(width * sharpness);
  const isDense = values.length > 2 * count;
  context.lineWidth = isDense ? 1 : 1.5;
  context.beginPath();
  if (!isDense) {
    const step = width / Math.max(values.length - 1, 1);
    values.forEach((value, row) => context.lineTo(row * step, yOf(value)));
    if (values.length === 1) context.lineTo(width, yOf(values[0]));
  } else {
    const { low, high } = columnsOf(values, count);
    for (let column = 0; column < count; ++column) {
      const x = (column + 0.5) / sharpness;
      context.lineTo(x, yOf(high[column]));
      context.lineTo(x, yOf(low[column]));
    }
  }
  context.stroke();
}
