// Draws pictures when they are needed: while the take plays, and once after each change. A paused or
// hidden page asks the browser for no frames.
import type { Player } from "./player";

// After a page was hidden or the computer slept, the take does not jump.
const LONGEST_STEP_SECONDS = 0.25;

export class Loop {
  private readonly player: Player;
  private readonly draw: () => void;
  private requested = 0;
  private last: number | null = null;

  constructor(player: Player, draw: () => void) {
    this.player = player;
    this.draw = draw;
    player.onChange(() => this.request());
    document.addEventListener("visibilitychange", () => {
      if (document.hidden) this.stop();
      else this.request();
    });
  }

  /** Asks for one picture. */
  request(): void {
    if (this.requested !== 0 || document.hidden) return;
    this.requested = requestAnimationFrame((time) => this.run(time));
  }

  private stop(): void {
    cancelAnimationFrame(this.requested);
    this.requested = 0;
    this.last = null;
  }

  private run(time: number): void {
    this.requested = 0;
    if (this.player.playing) {
      const elapsed = this.last === null ? 0 : (time - this.last) / 1000;
      this.last = time;
      this.player.advance(Math.min(elapsed, LONGEST_STEP_SECONDS));
    } else {
      this.last = null;
    }
    this.draw();
    if (this.player.playing) this.request();
  }
}
