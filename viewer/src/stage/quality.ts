// Watches how long pictures take. If they are slow, the picture gets simpler.

/** Pictures that take longer than this, in milliseconds, are slow. */
const SLOW = 50;
const SLOW_PICTURES = 5;
/** A gap as long as this is no picture: the page was hidden, or the take did not play. */
const GAP = 2000;
/** After a change some pictures take long, because the browser prepares them. */
const GRACE = 3;

/** 0: everything; 1: no shadows; 2: no finer picture for fine screens either. */
export type Simplification = 0 | 1 | 2;

export class Quality {
  private slow = 0;
  private grace = GRACE;
  private last: number | null = null;
  private level: Simplification = 0;

  get simplification(): Simplification {
    return this.level;
  }

  /** After a change of what is drawn, some pictures do not count. */
  excuse(): void {
    this.grace = GRACE;
    this.slow = 0;
  }

  /** Notes that a picture of a playing or a resting take begins. Returns whether the picture has to get simpler. */
  note(now: number, isPlaying: boolean): boolean {
    const taken = this.last === null ? 0 : now - this.last;
    this.last = isPlaying ? now : null;
    if (taken <= 0 || taken > GAP) return false;
    if (this.grace > 0) {
      --this.grace;
      return false;
    }
    this.slow = taken > SLOW ? this.slow + 1 : 0;
    if (this.slow < SLOW_PICTURES || this.level === 2) return false;
    ++this.level;
    this.excuse();
    return true;
  }
}
