// The frame in the address of the page: "#frame=120" shows the frame that people know as number 120.
import type { Player } from "./player";

function frameInAddress(): number | null {
  const value = new URLSearchParams(location.hash.slice(1)).get("frame");
  if (value === null || value.trim() === "") return null;
  const number = Number(value);
  return Number.isFinite(number) ? number : null;
}

/** Shows the frame of the address, now and whenever the address changes. Returns whether there is one. */
export function followAddress(player: Player): boolean {
  const show = (): boolean => {
    const number = frameInAddress();
    if (number === null) return false;
    player.goTo(player.take.rowOfNumber(number));
    return true;
  };
  addEventListener("hashchange", show);
  return show();
}
