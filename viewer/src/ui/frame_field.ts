// The number of the frame that is shown, which can be typed over, and its time.
import type { Player } from "../player";
import { changingText, make, setText } from "./dom";
import { secondsText, upTo } from "./text";

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
    input.addEventListener("blur", () => this.show());
    input.addEventListener("keydown", (event) => {
      const step = { ArrowUp: 1, ArrowDown: -1 }[event.key];
      if (step !== undefined) this.player.step(event.shiftKey ? 10 * step : step);
      else if (event.key === "Enter") this.take(input.value);
      else if (event.key === "Escape") input.blur();
      else return;
      event.preventDefault();
      event.stopPropagation();
      this.write();
      input.select();
    });
  }

  private take(text: string): void {
    const number = Number(text.replace(",", ".").replace("\u2212", "-"));
    if (text.trim() !== "" && Number.isFinite(number)) this.player.goTo(this.player.take.rowOfNumber(number));
  }

  private showTake(): void {
    const { take } = this.player;
    const first = upTo(take.frameNumber(0), 3);
    const last = upTo(take.frameNumber(take.frames - 1), 3);
    setText(this.last, last);
    this.time.style.minWidth = `${secondsText(take.duration).length}ch`;
    this.input.disabled = take.frames < 2;
    this.input.style.width = `${Math.max(first.length, last.length, 2)}ch`;
    this.input.title = take.frames < 2 ? "This take has one frame" : "Type a frame number and press Enter";
  }

  private write(): void {
    this.input.value = upTo(this.player.take.frameNumber(this.player.row()), 3);
  }

  private show(): void {
    const { take } = this.player;
    if (document.activeElement !== this.input) this.write();
    setText(this.seconds, secondsText(take.seconds(this.player.row())));
  }
}
