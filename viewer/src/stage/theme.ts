// The colours of the picture, drawn for light and for dark. The page's style may name an accent.
import type { Player } from "../player";
import { toneOf } from "../ui/marks";

/** Colours of the middle, the left and the right of a figure. */
export interface Tone {
  readonly body: readonly [string, string, string];
  readonly bones: readonly [string, string, string];
}

export interface Theme {
  readonly isDark: boolean;
  /** The background, from above down to the horizon and to the bottom. */
  readonly background: string;
  readonly line: string;
  readonly lineOpacity: number;
  readonly label: string;
  readonly path: string;
  readonly accent: string;
  readonly sky: string;
  readonly ground: string;
  readonly skyStrength: number;
  readonly sun: string;
  readonly sunStrength: number;
  readonly fill: string;
  readonly fillStrength: number;
  readonly shadow: string;
  readonly shadowOpacity: number;
  /** The first is the tone of the main take. The middle of the bones has the colour of the take's mark in the page. */
  readonly tones: readonly Tone[];
}

/** The tone of a figure: that of its take's mark; the figures of a single take are told apart. */
export function toneOfFigure(figure: number, takeIndex: number, { takes, mainTake }: Pick<Player, "takes" | "mainTake">): number {
  return takes.length > 1 ? toneOf(takeIndex, mainTake) : toneOf(figure, 0);
}

const LIGHT: Theme = {
  isDark: false,
  background: "linear-gradient(#f7f6f3 0%, #efeeeb 45%, #e3e3e2 100%)",
  line: "#5d6673",
  lineOpacity: 0.17,
  label: "#6b727c",
  path: "#5d6673",
  accent: "#b0306a",
  sky: "#ffffff",
  ground: "#b9b4ae",
  skyStrength: 2.3,
  sun: "#fff6ea",
  sunStrength: 2.3,
  fill: "#dfe9ff",
  fillStrength: 0.35,
  shadow: "#39424f",
  shadowOpacity: 0.3,
  tones: [
    { body: ["#8b97a6", "#7692b5", "#bd9877"], bones: ["#707b89", "#3a74b4", "#cf7a26"] },
    { body: ["#c4b9a8", "#a9b5bd", "#d3b594"], bones: ["#b8a98f", "#7f9fbf", "#cfa066"] },
    { body: ["#a3b3a2", "#8eabb0", "#b9b08c"], bones: ["#7f9f7e", "#6593ab", "#bb9b5f"] },
    { body: ["#b3a5b5", "#9ba3c0", "#c5a59c"], bones: ["#9d86a8", "#7a86b8", "#c08d7a"] },
  ],
};

const DARK: Theme = {
  isDark: true,
  background: "linear-gradient(#1a1d22 0%, #20242a 45%, #272b31 100%)",
  line: "#a7b2c0",
  lineOpacity: 0.13,
  label: "#8e97a3",
  path: "#a7b2c0",
  accent: "#f07fb2",
  sky: "#dfe8f5",
  ground: "#2b2d33",
  skyStrength: 1.5,
  sun: "#fff3e2",
  sunStrength: 2.0,
  fill: "#9fb8e8",
  fillStrength: 0.5,
  shadow: "#05070a",
  shadowOpacity: 0.5,
  tones: [
    { body: ["#929eae", "#7a9ac0", "#c39a78"], bones: ["#a3aebb", "#6ea6e2", "#e39a52"] },
    { body: ["#776f64", "#67737e", "#8a7258"], bones: ["#8c8375", "#5f7f9f", "#a37a4a"] },
    { body: ["#6b7d6c", "#5d7880", "#807a58"], bones: ["#7b917c", "#5a8799", "#98854f"] },
    { body: ["#7c6f80", "#676f8f", "#8d6f66"], bones: ["#93829a", "#6f7cab", "#aa7c6b"] },
  ],
};

/** The theme that the system asks for now. */
export class Themes {
  private readonly query = matchMedia("(prefers-color-scheme: dark)");

  constructor(changed: () => void) {
    this.query.addEventListener("change", changed);
  }

  get theme(): Theme {
    const theme = this.query.matches ? DARK : LIGHT;
    const accent = getComputedStyle(document.documentElement).getPropertyValue("--accent").trim();
    return /^#[0-9a-f]{6}$/i.test(accent) ? { ...theme, accent } : theme;
  }
}
