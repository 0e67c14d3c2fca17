// Leads to a joint or a frame of any take.
import type { Take } from "../data/take";
import type { Player } from "../player";

/** Shows a frame of a take, counted from 0, and pauses. */
export function showRow(player: Player, take: Take, row: number): void {
  if (take === player.take) {
    player.goTo(row);
    return;
  }
  player.pause();
  player.seek(take.seconds(take.clampRow(Math.round(row) || 0)));
}

/** The first joint that has this name in the file; -1 if there is none. */
export function jointOfSource(take: Take, sourceName: string): number {
  if (sourceName === "") return -1;
  return take.joints.findIndex((joint) => joint.sourceName === sourceName);
}
