// Words in place of the picture, where it cannot be drawn.

export const NO_WEBGL =
  "This browser cannot draw in 3D, because WebGL is missing or switched off. " +
  "Switch hardware acceleration on, or open the page in another browser. All the rest of the page works.";

/** Says something in place of the picture; null takes the words away. */
export function showMessage(container: HTMLElement, message: string | null): void {
  container.querySelector("p[role=status]")?.remove();
  if (message === null) return;
  const text = document.createElement("p");
  text.setAttribute("role", "status");
  text.textContent = message;
  Object.assign(text.style, {
    position: "absolute",
    inset: "0",
    margin: "auto",
    height: "max-content",
    maxWidth: "32em",
    padding: "24px",
    textAlign: "center",
    color: "var(--ink)",
  });
  container.append(text);
}
