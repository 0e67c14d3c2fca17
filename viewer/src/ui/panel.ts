// The panel at the right with its tabs. On a phone it is a sheet that rises from below.
import type { Player } from "../player";
import { Curves } from "./curves";
import { button, leaveFocus, make } from "./dom";
import { createFacts } from "./facts";
import { createFindings } from "./findings";
import { createJoints, type JointsTab } from "./joints";
import { Tabs } from "./tabs";

export type TabName = "joints" | "curves" | "findings" | "facts";

/** Below this width the panel is a sheet; the style sheet has the same number. */
const SHEET = "(max-width: 719px)";
/** From this size on, the curves of the picked joint lie below the tree too. */
const ROOMY = "(min-width: 720px) and (min-height: 640px)";

export class Panel {
  readonly element: HTMLElement;
  private readonly tabs: Tabs;
  private readonly joints: JointsTab;
  private readonly curves: Curves;
  private readonly curvesTab: HTMLElement;
  private readonly handle: HTMLButtonElement;
  private readonly sheet = matchMedia(SHEET);
  private readonly roomy = matchMedia(ROOMY);
  private readonly onFold: (isOpen: boolean) => void;
  private isOpen = true;

  /** Calls `onFold` whenever the panel opens or folds. */
  constructor(player: Player, onFold: (isOpen: boolean) => void) {
    this.onFold = onFold;
    this.joints = createJoints(player, () => this.open("curves"));
    this.curves = new Curves(player, () => this.open("joints"));
    this.curvesTab = make("div", { class: "curves-tab" }, this.curves.element);
    const findings = player.takes.reduce((sum, take) => sum + take.findings.length, 0);
    this.tabs = new Tabs(
      "Panel",
      [
        { id: "joints", label: "Joints", content: this.joints.element },
        { id: "curves", label: "Curves", content: this.curvesTab },
        {
          id: "findings",
          label: "Findings",
          ...(findings > 0 && { note: String(findings) }),
          content: createFindings(player),
        },
        { id: "facts", label: "Facts", content: createFacts(player) },
      ],
      () => this.setOpen(true),
    );
    this.handle = this.makeHandle();
    this.element = make(
      "section",
      { id: "panel", "aria-label": "Panel" },
      this.handle,
      this.tabs.list,
      make("div", { class: "panel-body", id: "panel-body" }, ...this.tabs.contents),
    );
    this.sheet.addEventListener("change", () => this.setOpen(!this.sheet.matches));
    this.roomy.addEventListener("change", () => this.placeCurves());
    // The curves below the tree take some of its height.
    player.onChange((change) => {
      if (change === "pick" && this.isOpen && this.tabs.selected === "joints") this.joints.reveal();
    });
  }

  /** Opens the panel beside the picture; on a phone only its tabs are seen at first. */
  start(): void {
    this.setOpen(!this.sheet.matches);
  }

  open(tab: TabName): void {
    this.tabs.select(tab);
  }

  /** Opens a tab and moves the focus to it. */
  goTo(tab: TabName): void {
    this.open(tab);
    this.tabs.focus();
  }

  search(): void {
    this.open("joints");
    this.joints.search();
  }

  toggle(): void {
    this.setOpen(!this.isOpen);
  }

  private setOpen(isOpen: boolean): void {
    const hadFocus = this.element.contains(document.activeElement);
    this.isOpen = isOpen;
    document.getElementById("page")?.classList.toggle("folded", !isOpen);
    this.handle.setAttribute("aria-expanded", String(isOpen));
    this.placeCurves();
    // The picture names the picked joint while the panel does not.
    const namesPick = isOpen && ["joints", "curves"].includes(this.tabs.selected);
    document.getElementById("page")?.classList.toggle("pick-unseen", !namesPick);
    if (isOpen && this.tabs.selected === "joints") this.joints.reveal();
    this.onFold(isOpen);
    if (!isOpen && hadFocus) document.getElementById(this.sheet.matches ? "panel-handle" : "panel-button")?.focus();
  }

  /** The curves have a tab of their own; if there is room, they are below the tree as well. */
  private placeCurves(): void {
    const tab = this.tabs.selected;
    const isBelowTree = tab === "joints" && this.roomy.matches;
    (isBelowTree ? this.joints.curves : this.curvesTab).append(this.curves.element);
    this.curves.setCompact(isBelowTree);
    this.curves.setShown(this.isOpen && (tab === "curves" || isBelowTree));
  }

  /** A tap on the handle opens or folds the sheet, and dragging it sets its height. */
  private makeHandle(): HTMLButtonElement {
    let start: { y: number; height: number } | null = null;
    let wasDragged = false;
    const handle = button(
      { id: "panel-handle", class: "handle", "aria-label": "Panel", "aria-controls": "panel-body" },
      (event) => {
        // A drag need not end with a click. A click of the keyboard has no detail, and never ends one.
        if (!wasDragged || event.detail === 0) this.toggle();
        wasDragged = false;
      },
    );
    handle.addEventListener("pointerdown", (event) => {
      start = { y: event.clientY, height: this.element.clientHeight };
      wasDragged = false;
      handle.setPointerCapture(event.pointerId);
    });
    handle.addEventListener("pointermove", (event) => {
      if (!start) return;
      const moved = start.y - event.clientY;
      if (!wasDragged && Math.abs(moved) < 6) return;
      wasDragged = true;
      this.drag(start.height + moved);
    });
    handle.addEventListener("pointerup", () => (start = null));
    handle.addEventListener("pointercancel", () => {
      start = null;
      wasDragged = false;
    });
    leaveFocus(handle);
    return handle;
  }

  private drag(height: number): void {
    const opens = height > 140;
    if (opens !== this.isOpen) this.setOpen(opens);
    // A sheet that was pushed down opens at its usual height again.
    if (opens) this.element.style.setProperty("--sheet", `${Math.min(height, 0.75 * innerHeight)}px`);
    else this.element.style.removeProperty("--sheet");
  }
}
