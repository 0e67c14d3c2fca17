// The number of the frame that is shown, which can be typed over, and its time.
import type { Player } from "../player";
import { changingText, make, setText } from "./dom";
import { secondsText, upTo } from "./text";

/** The number that was typed, or null if it is none. */
export function typedNumber(text: string): number | null {
  const number = Number(text.replace(",", ".").replace("\u2212", "-"));
  return text.trim() !== "" && Number.isFinite(number) ? number : null;
}

export class FrameField {
  readonly element: HTMLElement;
  private readonly player: Player;
  private readonly input = make("input", {
    type: "text",
    id: "frame",
    inputmode: "numeric",
    autocomplete: "off",
    spellcheck: "false",
    "aria-label": "Frame number",
  });
  /** Whether the field holds a text that was typed and not taken yet. */
  private isTyped = false;
  private readonly last = changingText();
  private readonly seconds = changingText();
  private readonly time = make("span", { class: "seconds", id: "time" }, this.seconds);

  constructor(player: Player) {
    this.player = player;
    const frames = make("span", { class: "frames" }, this.input, make("span", { class: "of" }, " / ", this.last));
    this.element = make("div", { class: "time" }, frames, this.time);
    this.listen();
    this.showTake();
    this.show();
    player.onChange((change) => {
      if (change === "settings") this.showTake();
      if (change !== "pick") this.show();
    });
  }

  private listen(): void {
    const { input } = this;
    input.addEventListener("focus", () => {
      this.player.pause();
      input.select();
    });
    input.addEventListener("input", () => (this.isTyped = true));
    // The number pad of a phone has no Enter, so leaving the field takes the number as well.
    for (const end of ["change", "blur"])
      input.addEventListener(end, () => {
        this.takeTyped();
        this.write();
      });
    input.addEventListener("keydown", (event) => {
      if (!this.takeKey(event)) return;
      event.preventDefault();
      event.stopPropagation();
    });
  }

  /** Returns whether the key belongs to the field. */
  private takeKey(event: KeyboardEvent): boolean {
    if (event.key === "Escape") {
      this.write();
      this.input.blur();
      return true;
    }
    const step = { ArrowUp: 1, ArrowDown: -1 }[event.key];
    if (step === undefined && event.key !== "Enter") return false;
    this.takeTyped();
    if (step !== undefined) this.player.step(event.shiftKey ? 10 * step : step);
    this.write();
    this.input.select();
    return true;
  }

  private takeTyped(): void {
    const number = this.isTyped ? typedNumber(this.input.value) : null;
    this.isTyped = false;
    if (number !== null) this.player.goTo(this.player.take.rowOfNumber(number));
  }

  private showTake(): void {
    const { take } = this.player;
    const first = upTo(take.frameNumber(0), 3);
    const last = upTo(take.frameNumber(take.frames - 1), 3);
    setText(this.last, last);
    this.time.style.minWidth = `${secondsText(take.duration).length}ch`;
    this.input.disabled = take.frames < 2;
    this.input.style.width = `${Math.max(first.length, last.length, 2)}ch`;
    this.input.title = take.frames < 2 ? "This take has one frame" : "Type a frame number";
  }

  private write(): void {
    this.isTyped = false;
    this.input.value = upTo(this.player.take.frameNumber(this.player.row()), 3);
  }

  private show(): void {
    const { take } = this.player;
    if (document.activeElement !== this.input) this.write();
    setText(this.seconds, secondsText(take.seconds(this.player.row())));
  }
}
