// The tab "Curves": how the picked joint turns and moves, over the whole take.
import type { Take } from "../data/take";
import { type Track, Tracks } from "../data/track";
import type { Player } from "../player";
import { button, make, shortened } from "./dom";
import { sideMark } from "./marks";
import { Plot } from "./plot";
import { showRow } from "./show";
import { upTo } from "./text";

export class Curves {
  readonly element = make("div", {
    class: "curves scroll",
    tabindex: 0,
    role: "group",
    "aria-label": "Curves of the joint",
  });
  private readonly player: Player;
  private readonly tracks = new Tracks();
  private readonly head = make("div", { class: "curves-head" });
  private readonly still = make(
    "p",
    { class: "hint" },
    "This take has one frame, so there are no curves. A file with motion shows them here.",
  );
  private readonly empty: HTMLElement;
  private readonly plots: HTMLElement;
  private readonly axis = make("div", { class: "axis", "aria-hidden": "true" });
  private readonly angles: Plot;
  private readonly place: Plot;
  private readonly speed: Plot;
  private isShown = false;
  private isStale = true;

  constructor(player: Player, showJoints: () => void) {
    this.player = player;
    const scrub = (ratio: number): void => this.scrub(ratio);
    this.angles = new Plot("Angles", 3, scrub);
    this.place = new Plot("Place", 3, scrub);
    this.speed = new Plot("Speed", 1, scrub);
    this.empty = make(
      "div",
      { class: "empty" },
      make("p", {}, "Pick a joint in the picture or in the list."),
      make("p", {}, "Its angles, its place and its speed appear here."),
      button({ class: "plain" }, showJoints, "Show the list"),
    );
    const plots = this.all().map((plot) => plot.element);
    this.plots = make("div", { class: "plots" }, this.head, this.still, ...plots, this.axis);
    this.element.append(this.empty, this.plots);
    player.onChange((change) => {
      if (change === "pick") this.onPick();
      else if (change === "time") this.showTime();
    });
    this.watchColours();
    this.onPick();
  }

  /** Tells whether the tab can be seen. Curves that cannot be seen are not computed. */
  setShown(isShown: boolean): void {
    this.isShown = isShown;
    if (isShown) this.update();
  }

  /** Below the tree, the curves are lower and say nothing without a joint. */
  setCompact(isCompact: boolean): void {
    this.element.classList.toggle("compact", isCompact);
    this.element.tabIndex = isCompact ? -1 : 0;
  }

  private all(): Plot[] {
    return [this.angles, this.place, this.speed];
  }

  /** Draws anew when the theme changes or the page moves to a screen of another sharpness. */
  private watchColours(): void {
    const draw = (): void => this.all().forEach((plot) => plot.draw());
    matchMedia("(prefers-color-scheme: dark)").addEventListener("change", draw);
    const watchSharpness = (): void =>
      matchMedia(`(resolution: ${devicePixelRatio}dppx)`).addEventListener(
        "change",
        () => {
          draw();
          watchSharpness();
        },
        { once: true },
      );
    watchSharpness();
  }

  private onPick(): void {
    this.isStale = true;
    const { pick } = this.player;
    this.empty.hidden = pick !== null;
    this.plots.hidden = pick === null;
    if (this.isShown) this.update();
  }

  private pickedTake(): Take {
    return this.player.takes[this.player.pick!.take];
  }

  private update(): void {
    const { pick } = this.player;
    if (!pick) return;
    if (this.isStale) {
      this.isStale = false;
      const take = this.pickedTake();
      this.showHead(take, pick.joint);
      this.showTrack(take, this.tracks.of(take, pick.take, pick.joint));
    }
    this.showTime();
  }

  private showHead(take: Take, joint: number): void {
    const { name, side, parent, isEnd } = take.joints[joint];
    const kind = isEnd ? "End site of " : "Below ";
    const details = parent < 0 ? "Top joint" : kind + take.joints[parent].name;
    const title = make("h2", {}, sideMark(side), shortened(name, { class: "name" }));
    const of = this.player.takes.length > 1 ? `${details}, in ${take.name}` : details;
    this.head.replaceChildren(title, shortened(of, { class: "soft" }));
  }

  private showTrack(take: Take, track: Track): void {
    const factor = take.unit > 0 ? take.unit : 1;
    const length = take.unit > 0 ? "m" : "units";
    // A figure's joint that moves by less than a thousandth of its height stands still.
    const least = take.height > 0 ? take.height / 1000 : 1e-6;
    this.angles.show({ curves: track.angles, factor: 1, unit: "°", least: 0.1 });
    this.place.show({ curves: track.place, factor, unit: length, least });
    this.speed.show({ curves: [track.speed], factor, unit: `${length}/s`, least });
    this.still.hidden = take.frames > 1;
    this.speed.element.hidden = take.frames < 2;
    this.plots.classList.toggle("still", take.frames < 2);
    this.axis.replaceChildren(
      make("span", {}, `Frame ${upTo(take.frameNumber(0), 3)}`),
      make("span", {}, upTo(take.frameNumber(take.frames - 1), 3)),
    );
  }

  private showTime(): void {
    if (!this.isShown || this.isStale || !this.player.pick) return;
    const take = this.pickedTake();
    const row = this.player.row(take);
    for (const plot of this.all()) plot.showRow(row, take.frames);
  }

  private scrub(ratio: number): void {
    if (!this.player.pick) return;
    const take = this.pickedTake();
    showRow(this.player, take, ratio * (take.frames - 1));
  }
}
