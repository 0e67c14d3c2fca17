// Tabs: one of several contents is shown. The arrow keys, Home and End go from tab to tab.
import { make } from "./dom";

export interface Tab {
  id: string;
  label: string;
  /** Behind the label, such as a number. */
  note?: string;
  content: HTMLElement;
}

/** The index of the tab to which a key leads, or null if the key means nothing to tabs. */
export function tabAfter(index: number, count: number, key: string): number | null {
  switch (key) {
    case "ArrowRight":
      return (index + 1) % count;
    case "ArrowLeft":
      return (index + count - 1) % count;
    case "Home":
      return 0;
    case "End":
      return count - 1;
    default:
      return null;
  }
}

export class Tabs {
  readonly list: HTMLElement;
  readonly contents: HTMLElement[];
  private readonly tabs: readonly Tab[];
  private readonly buttons: HTMLButtonElement[];
  private readonly onSelect: (id: string) => void;
  private chosen = 0;

  /** Calls `onSelect` after a tab was chosen, even if it was chosen already. */
  constructor(label: string, tabs: readonly Tab[], onSelect: (id: string) => void) {
    this.tabs = tabs;
    this.onSelect = onSelect;
    this.buttons = tabs.map((tab, index) => this.tabButton(tab, index));
    this.list = make("div", { role: "tablist", "aria-label": label, class: "tabs" }, ...this.buttons);
    this.contents = tabs.map((tab) =>
      make("div", { role: "tabpanel", id: `panel-${tab.id}`, "aria-labelledby": `tab-${tab.id}` }, tab.content),
    );
    this.list.addEventListener("keydown", (event) => this.onKey(event));
    this.show();
  }

  get selected(): string {
    return this.tabs[this.chosen].id;
  }

  select(id: string): void {
    this.chosen = Math.max(
      0,
      this.tabs.findIndex((tab) => tab.id === id),
    );
    this.show();
    this.onSelect(id);
  }

  focus(): void {
    this.buttons[this.chosen].focus();
  }

  private tabButton(tab: Tab, index: number): HTMLButtonElement {
    const element = make(
      "button",
      { type: "button", role: "tab", id: `tab-${tab.id}`, "aria-controls": `panel-${tab.id}` },
      tab.label,
    );
    if (tab.note) element.append(" ", make("span", { class: "note" }, tab.note));
    element.addEventListener("click", () => this.select(this.tabs[index].id));
    return element;
  }

  private onKey(event: KeyboardEvent): void {
    if (event.ctrlKey || event.altKey || event.metaKey) return;
    const next = tabAfter(this.chosen, this.tabs.length, event.key);
    if (next === null) return;
    event.preventDefault();
    this.select(this.tabs[next].id);
    this.focus();
  }

  private show(): void {
    this.buttons.forEach((element, index) => {
      element.setAttribute("aria-selected", String(index === this.chosen));
      element.tabIndex = index === this.chosen ? 0 : -1;
    });
    this.contents.forEach((content, index) => (content.hidden = index !== this.chosen));
  }
}
