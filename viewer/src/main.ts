// Starts the page: reads the takes that it holds and connects the parts.
import { followAddress } from "./address";
import { offerApi } from "./api";
import { unpackKeys } from "./data/keys";
import { PageError, parseRecords } from "./data/record";
import { Take } from "./data/take";
import { Loop } from "./loop";
import { Player } from "./player";
import { createStage } from "./stage/stage";
import { createUi, showProblem } from "./ui/ui";

function dataOf(id: string): string {
  const element = document.getElementById(id);
  if (!element) throw new PageError("The data of this page are damaged: the file may have been cut.");
  return element.textContent ?? "";
}

async function readTakes(): Promise<Take[]> {
  const records = parseRecords(dataOf("takes"));
  return Promise.all(
    records.map(async (record, index) => new Take(record, await unpackKeys(record, dataOf(`keys-${index}`)))),
  );
}

async function start(): Promise<void> {
  const player = new Player(await readTakes());
  let loop: Loop | null = null;
  const stage = createStage(document.getElementById("stage")!, player, () => loop?.request());
  loop = new Loop(player, () => stage.draw());
  createUi(player, stage);
  const isAtFrame = followAddress(player);
  stage.draw();
  offerApi(player);
  const prefersStillness = matchMedia("(prefers-reduced-motion: reduce)").matches;
  if (!isAtFrame && !prefersStillness) player.play();
}

start().catch((error: unknown) => {
  if (!(error instanceof PageError)) console.error(error);
  showProblem(error instanceof Error ? error.message : String(error));
});
