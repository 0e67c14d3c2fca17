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

/** The joint that has this name in the file; -1 if there is none, or several, as in a take of several models. */
export function jointOfSource(take: Take, sourceName: string): number {
  if (sourceName === "") return -1;
  const named = take.joints.filter((joint) => joint.sourceName === sourceName);
  return named.length === 1 ? named[0].index : -1;
}
