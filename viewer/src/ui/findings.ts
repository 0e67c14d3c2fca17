// The tab "Findings": what is odd about the files. A finding leads to its joint and its frame.
import type { FindingRecord } from "../data/record";
import type { Take } from "../data/take";
import type { Player } from "../player";
import { heard, make, shortened } from "./dom";
import { icon } from "./icons";
import { takeMark } from "./marks";
import { jointOfSource, showRow } from "./show";
import { counted, fileName, grouped, upTo } from "./text";

const SEVERITIES = ["error", "warning", "note"] as const;
const WORDS = { error: "Error", warning: "Warning", note: "Note" } as const;

function severityOf(finding: FindingRecord): (typeof SEVERITIES)[number] {
  return SEVERITIES.includes(finding.severity) ? finding.severity : "note";
}

/** The findings with errors first, then warnings, then notes; otherwise in the order of the file. */
export function bySeverity(findings: readonly FindingRecord[]): FindingRecord[] {
  return SEVERITIES.flatMap((severity) => findings.filter((finding) => severityOf(finding) === severity));
}

/** Where a finding is: "walk.bvh:12", "line 12"; empty if it is about a file as a whole without a name. */
export function placeOf(finding: FindingRecord): string {
  const file = finding.file ? fileName(finding.file) : "";
  if (!(finding.line > 0)) return file;
  return file ? `${file}:${finding.line}` : `line ${finding.line}`;
}

function detailsOf(finding: FindingRecord): string[] {
  const details = [];
  if (finding.joint) details.push(finding.joint);
  if (finding.frame !== undefined) details.push(`frame ${upTo(finding.frame, 3)}`);
  const place = placeOf(finding);
  if (place) details.push(place);
  return details;
}

/** How often the file has it, if that is more than once. */
function countOf(finding: FindingRecord): HTMLElement[] {
  if (!(finding.count > 1)) return [];
  const times = make("span", { class: "times", "aria-hidden": "true" }, `${grouped(finding.count)}×`);
  return [times, heard(`, ${counted(finding.count, "time")}`)];
}

function contentOf(finding: FindingRecord): HTMLElement[] {
  const severity = severityOf(finding);
  return [
    make("span", { class: `severity ${severity}` }, icon(severity), WORDS[severity], ...countOf(finding), heard(": ")),
    make("span", { class: "message", dir: "auto" }, finding.message),
    make(
      "span",
      { class: "soft details", title: finding.file ?? "" },
      ...detailsOf(finding).map((text) => shortened(text)),
    ),
  ];
}

function findingElement(player: Player, takeIndex: number, finding: FindingRecord): HTMLElement {
  const take = player.takes[takeIndex];
  const joint = jointOfSource(take, finding.joint);
  const { frame } = finding;
  if (joint < 0 && frame === undefined) return make("li", {}, make("div", { class: "finding" }, ...contentOf(finding)));
  const leader = make("button", { type: "button", class: "finding" }, ...contentOf(finding));
  leader.addEventListener("click", () => {
    if (joint >= 0) player.pick = { take: takeIndex, joint };
    if (frame !== undefined) showRow(player, take, take.rowOfNumber(frame));
  });
  return make("li", {}, leader);
}

/** What is said of a take without findings: what that means, and where more is known. */
export function nothingFoundTexts(take: Take): [string, string] {
  const read = `${counted(take.joints.length, "joint")} and ${counted(take.frames, "frame")}`;
  return [
    "No findings: the file says exactly what it means.",
    `Its ${read} were read as they are. Facts says where they come from.`,
  ];
}

function nothingFound(take: Take): HTMLElement {
  return make("div", { class: "empty" }, ...nothingFoundTexts(take).map((text) => make("p", {}, text)));
}

function findingsOf(player: Player, take: Take, index: number): HTMLElement[] {
  const list = make("ul", { class: "findings-list" });
  list.append(...bySeverity(take.findings).map((finding) => findingElement(player, index, finding)));
  if (player.takes.length < 2) return [take.findings.length > 0 ? list : nothingFound(take)];
  const heading = make("h2", { class: "take-heading" }, takeMark(player, index), shortened(take.name));
  return [heading, take.findings.length > 0 ? list : make("p", { class: "hint" }, nothingFoundTexts(take).join(" "))];
}

export function createFindings(player: Player): HTMLElement {
  const element = make("div", { class: "findings scroll", tabindex: 0, role: "group", "aria-label": "Findings" });
  element.append(...player.takes.flatMap((take, index) => findingsOf(player, take, index)));
  return element;
}
