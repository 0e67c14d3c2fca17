// Watches how long pictures take. If they are slow, the picture gets simpler.

/** Pictures that take longer than this, in milliseconds, are slow. */
const SLOW = 50;
const SLOW_PICTURES = 5;
/** After a change some pictures take long, because the browser prepares them. */
const GRACE = 3;

/** 0: everything; 1: no shadows; 2: no finer picture for fine screens either. */
export type Simplification = 0 | 1 | 2;

export class Quality {
  private slow = 0;
  private grace = GRACE;
  private last = -Infinity;
  private wanted: number | null = null;
  private level: Simplification = 0;

  get simplification(): Simplification {
    return this.level;
  }

  /** After a change of what is drawn, some pictures do not count. */
  excuse(): void {
    this.grace = GRACE;
    this.slow = 0;
  }

  /** A picture is wanted since a time, because the take plays or somebody drags. Others are not measured. */
  want(since: number): void {
    this.wanted = Math.min(this.wanted ?? since, since);
  }

  /** The page is hidden: the time until the next picture says nothing. */
  forget(): void {
    this.wanted = null;
  }

  /** Notes that a picture begins. Returns whether the picture has to get simpler. */
  note(now: number): boolean {
    const { wanted, last } = this;
    this.wanted = null;
    this.last = now;
    if (wanted === null) return false;
    // The hand may have moved on before the last picture was done.
    const taken = now - Math.max(wanted, last);
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
