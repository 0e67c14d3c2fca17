// The tab "Facts": what is known about the take that the bar counts, and where it comes from.
import type { Take } from "../data/take";
import type { Player } from "../player";
import { make, shortened } from "./dom";
import { bytesText, counted, fileName, fixed, grouped, heightText, rateText, unitText, upTo, wordsOf } from "./text";

export type Fact = readonly [name: string, value: string];

export function takeFacts(take: Take): Fact[] {
  const ends = take.joints.filter((joint) => joint.isEnd).length;
  const facts: Fact[] = [
    ["Name", take.name],
    ["Joints", grouped(take.joints.length - ends)],
    ["End sites", grouped(ends)],
    ["Frames", grouped(take.frames)],
  ];
  if (take.models.length > 1) facts.splice(1, 0, ["Models", take.models.join(", ")]);
  if (take.frames > 1) {
    facts.push(["First frame", upTo(take.frameNumber(0), 3)], ["Rate", `${rateText(take.fps)}`]);
    facts.push(["Duration", `${fixed(take.duration, 2)} s`]);
  }
  facts.push(
    ["Height", heightText(take.height, take.unit) || "not known"],
    ["Unit of length", unitText(take.unit)],
    ["Up axis", take.up],
  );
  return facts;
}

/** A value of the provenance as text: whatever a file may hold there. */
function valueText(value: unknown): string {
  if (typeof value === "string") return value;
  if (typeof value === "number") return upTo(value, 6);
  if (typeof value === "boolean") return value ? "yes" : "no";
  if (value === null || value === undefined) return "none";
  return JSON.stringify(value).slice(0, 500);
}

interface Source {
  name: string;
  bytes?: number;
  sha256?: string;
}

function sourcesOf(provenance: Record<string, unknown>): Source[] {
  const { sources, sourceFiles } = provenance;
  if (Array.isArray(sources))
    return sources
      .filter((source) => typeof source?.name === "string")
      .map((source) => ({
        name: source.name,
        ...(typeof source.bytes === "number" && { bytes: source.bytes }),
        ...(typeof source.sha256 === "string" && { sha256: source.sha256 }),
      }));
  return Array.isArray(sourceFiles)
    ? sourceFiles.filter((file) => typeof file === "string").map((name) => ({ name }))
    : [];
}

/** Where the take comes from: its files, the program and its options. */
export function sourceFacts(provenance: Record<string, unknown>): Fact[] {
  const facts: Fact[] = [];
  for (const source of sourcesOf(provenance)) {
    const size = source.bytes === undefined ? "" : `, ${bytesText(source.bytes)}`;
    facts.push(["File", fileName(source.name) + size]);
    if (source.sha256) facts.push(["SHA-256", source.sha256]);
  }
  if (provenance.sourceFormat) facts.push(["Format", valueText(provenance.sourceFormat)]);
  if (provenance.tool) facts.push(["Made by", valueText(provenance.tool)]);
  return facts;
}

export function optionFacts(provenance: Record<string, unknown>): Fact[] {
  const { options } = provenance;
  if (typeof options !== "object" || options === null) return [];
  return Object.entries(options).map(([name, value]): Fact => {
    const words = wordsOf(name);
    return [words.charAt(0).toUpperCase() + words.slice(1), valueText(value)];
  });
}

function factsElement(title: string, facts: readonly Fact[]): HTMLElement[] {
  if (facts.length === 0) return [];
  const list = make("dl", {});
  for (const [name, value] of facts)
    list.append(
      make(
        "div",
        {},
        make("dt", {}, name),
        make("dd", {}, shortened(value, { class: name === "SHA-256" ? "hash" : "" })),
      ),
    );
  return [make("h2", {}, title), list];
}

function notesElement(notes: readonly string[]): HTMLElement[] {
  if (notes.length === 0) return [];
  const list = make("ul", { class: "notes" }, ...notes.map((note) => make("li", { dir: "auto" }, note)));
  return [make("h2", {}, counted(notes.length, "note")), list];
}

function contentOf(take: Take): HTMLElement[] {
  return [
    ...notesElement(take.notes),
    ...factsElement("Take", takeFacts(take)),
    ...factsElement("Source", sourceFacts(take.provenance ?? {})),
    ...factsElement("Options", optionFacts(take.provenance ?? {})),
  ];
}

export function createFacts(player: Player): HTMLElement {
  const element = make("div", { class: "facts scroll", tabindex: 0, role: "group", "aria-label": "Facts" });
  let shown = -1;
  const show = (): void => {
    if (shown === player.mainTake) return;
    shown = player.mainTake;
    element.replaceChildren(...contentOf(player.take));
  };
  player.onChange((change) => change === "settings" && show());
  show();
  return element;
}
