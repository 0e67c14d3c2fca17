// The icons: outlines in a square of 20 units.

const OUTLINES = {
  play: "M6.5 4.2v11.6L16 10z",
  pause: "M6 4.5h2.6v11H6zM11.4 4.5H14v11h-2.6z",
  back: "M13.5 4.8v10.4L6.8 10zM5 5h1.6v10H5z",
  forward: "M6.5 4.8v10.4l6.7-5.2zM13.4 5H15v10h-1.6z",
  loop: "M6 5.2h7.2a2.8 2.8 0 0 1 2.8 2.8v1.2h-1.5V8a1.3 1.3 0 0 0-1.3-1.3H6v2L2.8 6 6 3.2zM14 14.8H6.8A2.8 2.8 0 0 1 4 12v-1.2h1.5V12a1.3 1.3 0 0 0 1.3 1.3H14v-2l3.2 2.7-3.2 2.8z",
  panel: "M3 4h14v12H3zm1.5 1.5v9h7v-9zm8.5 0v9h2.5v-9z",
  open: "M7.6 5 12.6 10l-5 5-1.1-1.1 3.9-3.9-3.9-3.9z",
  eye: "M10 4.8c3.7 0 6.6 2.5 8 5.2-1.4 2.7-4.3 5.2-8 5.2S3.4 12.7 2 10c1.4-2.7 4.3-5.2 8-5.2zm0 1.5c-2.7 0-4.9 1.6-6.2 3.7 1.3 2.1 3.5 3.7 6.2 3.7s4.9-1.6 6.2-3.7c-1.3-2.1-3.5-3.7-6.2-3.7zm0 1.4a2.3 2.3 0 1 1 0 4.6 2.3 2.3 0 0 1 0-4.6z",
  error: "M7 2.5h6l4.5 4.5v6L13 17.5H7L2.5 13V7zm2.2 3.5v5.2h1.6V6zm0 6.6v1.6h1.6v-1.6z",
  warning: "M10 2.8 18.2 17H1.8zm0 3L4.4 15.5h11.2zm-.8 3.2h1.6v3.4H9.2zm0 4.1h1.6v1.4H9.2z",
  note: "M10 2.5a7.5 7.5 0 1 1 0 15 7.5 7.5 0 0 1 0-15zm0 1.5a6 6 0 1 0 0 12 6 6 0 0 0 0-12zm-.8 5h1.6v5H9.2zm0-3h1.6v1.7H9.2z",
} as const;

export type IconName = keyof typeof OUTLINES;

const SVG = "http://www.w3.org/2000/svg";

/** Makes an icon in the colour of the text around it. */
export function icon(name: IconName): SVGSVGElement {
  const svg = document.createElementNS(SVG, "svg");
  for (const [key, value] of Object.entries({ viewBox: "0 0 20 20", class: "icon", "aria-hidden": "true" }))
    svg.setAttribute(key, value);
  const path = document.createElementNS(SVG, "path");
  path.setAttribute("fill-rule", "evenodd");
  svg.append(path);
  setIcon(svg, name);
  return svg;
}

/** Makes an icon show another outline. */
export function setIcon(svg: SVGSVGElement, name: IconName): void {
  svg.firstElementChild!.setAttribute("d", OUTLINES[name]);
}
