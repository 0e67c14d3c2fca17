// Makes elements. Texts reach the page as text nodes and attributes only, never as markup.

export type Attributes = Record<string, string | number | boolean>;
export type Child = Node | string;

/** Sets attributes: true gives an empty attribute, false takes the attribute away. */
export function setAttributes(element: Element, attributes: Attributes): void {
  for (const [name, value] of Object.entries(attributes)) {
    if (value === false) element.removeAttribute(name);
    else element.setAttribute(name, value === true ? "" : String(value));
  }
}

/** Makes an element with attributes and children. */
export function make<K extends keyof HTMLElementTagNameMap>(
  tag: K,
  attributes: Attributes = {},
  ...children: Child[]
): HTMLElementTagNameMap[K] {
  const element = document.createElement(tag);
  setAttributes(element, attributes);
  element.append(...children);
  return element;
}

/** Makes a text node of its own, so that a changing text costs no more than its characters. */
export function changingText(): Text {
  return document.createTextNode("");
}

/** Changes a text if it is another one. */
export function setText(node: Text, text: string): void {
  if (node.data !== text) node.data = text;
}

/** Makes a span that shortens a long text and has the whole text as its title. */
export function shortened(text: string, attributes: Attributes = {}): HTMLSpanElement {
  return make(
    "span",
    { title: text, dir: "auto", ...attributes, class: `short ${attributes.class ?? ""}`.trim() },
    text,
  );
}

/** Makes a button that does not submit anything. */
export function button(
  attributes: Attributes,
  onClick: (event: MouseEvent) => void,
  ...children: Child[]
): HTMLButtonElement {
  const element = make("button", { type: "button", ...attributes }, ...children);
  element.addEventListener("click", onClick);
  return element;
}

/** Text that is read aloud, but not drawn. */
export function heard(text: string): HTMLSpanElement {
  return make("span", { class: "heard" }, text);
}

/**
 * Keeps a click of the mouse from moving the focus to a control, so that the space bar still plays and
 * pauses after it. The keyboard reaches the control as before.
 */
export function leaveFocus(container: HTMLElement): void {
  container.addEventListener("mousedown", (event) => {
    if (!(event.target as Element).closest("button")) return;
    event.preventDefault();
    (document.activeElement as HTMLElement | null)?.blur();
  });
}
