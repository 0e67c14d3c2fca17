// The names of the takes over the picture, with what they are. One of several takes can be chosen:
// the bar counts its frames.
import type { Take } from "../data/take";
import type { Player } from "../player";
import { button, make, shortened } from "./dom";
import { sideMark, takeMark } from "./marks";
import { counted, heightText, rateText } from "./text";

/** What a take is, in a line: "257 frames", "60/s", "1.71 m (cm)". */
export function summaryOf(take: Take): string[] {
  const parts = [counted(take.frames, "frame")];
  if (take.fps > 0 && take.frames > 1) parts.push(rateText(take.fps));
  const height = heightText(take.height, take.unit);
  if (height !== "") parts.push(height);
  return parts;
}

function summaryElement(take: Take): HTMLElement {
  return make("span", { class: "summary" }, ...summaryOf(take).map((part) => make("span", {}, part)));
}

function takeChoice(player: Player): HTMLElement {
  const choice = make("fieldset", { class: "takes", id: "takes-choice" }, make("legend", { class: "heard" }, "Take"));
  const labels: HTMLElement[] = [];
  const radios = player.takes.map((take, index) => {
    const radio = make("input", { type: "radio", name: "take", value: index, class: "heard" });
    radio.addEventListener("change", () => (player.mainTake = index));
    labels.push(
      make(
        "label",
        { class: "take" },
        radio,
        takeMark(player, index),
        shortened(take.name, { class: "name" }),
        summaryElement(take),
      ),
    );
    return radio;
  });
  choice.append(...labels);
  const show = (): void =>
    radios.forEach((radio, index) => {
      radio.checked = index === player.mainTake;
      labels[index].classList.toggle("chosen", radio.checked);
    });
  player.onChange((change) => change === "settings" && show());
  show();
  return choice;
}

/** The picked joint, for a page whose panel is folded. It leads to the curves. */
function pickedElement(player: Player, showCurves: () => void): HTMLElement {
  const element = button({ class: "picked-joint", id: "picked-joint", title: "Show its curves (C)" }, showCurves);
  const show = (): void => {
    const { pick } = player;
    element.hidden = !pick;
    if (!pick) return;
    const { name, side } = player.takes[pick.take].joints[pick.joint];
    element.replaceChildren(sideMark(side), shortened(name));
  };
  player.onChange((change) => change === "pick" && show());
  show();
  return element;
}

export function createHeader(player: Player, showCurves: () => void): HTMLElement {
  const header = make("div", { class: "header", id: "header" });
  if (player.takes.length > 1) {
    header.append(make("h1", { class: "heard" }, counted(player.takes.length, "take")), takeChoice(player));
  } else {
    const name = shortened(player.take.name);
    header.append(make("h1", { class: "name" }, name), summaryElement(player.take));
  }
  header.append(pickedElement(player, showCurves));
  return header;
}
