// The path of one joint through the world, over all frames.
import { computeWorld, TRANSFORM } from "./pose";
import { CHANNELS } from "./record";
import type { Joint, Take } from "./take";

/** Curves of one joint: a value for each frame. */
export interface Track {
  /** Degrees about x, y and z, as in the scene. */
  readonly angles: readonly Float32Array[];
  /** The place in the world along x, y and z, in units of length. */
  readonly place: readonly Float32Array[];
  /** Units of length a second. */
  readonly speed: Float32Array;
}

/** The joint and the joints above it, from the top joint down. */
function chainOf(take: Take, joint: number): Joint[] {
  const chain: Joint[] = [];
  for (let index = joint; index >= 0; index = take.joints[index].parent) chain.push(take.joints[index]);
  return chain.reverse();
}

function placesOf(take: Take, joint: number): Float32Array[] {
  const chain = chainOf(take, joint);
  // Only the chain is evaluated, each joint below the one before it.
  const links = chain.map((link, index) => ({ ...link, parent: index - 1 }));
  const locals = new Float64Array(CHANNELS * links.length);
  const world = new Float64Array(TRANSFORM * links.length);
  const at = TRANSFORM * (links.length - 1);
  const place = [0, 1, 2].map(() => new Float32Array(take.frames));
  for (let row = 0; row < take.frames; ++row) {
    chain.forEach((link, index) => {
      for (let channel = 0; channel < CHANNELS; ++channel)
        locals[CHANNELS * index + channel] = take.value(CHANNELS * link.index + channel, row);
    });
    computeWorld(links, locals, world);
    for (let axis = 0; axis < 3; ++axis) place[axis][row] = world[at + 4 * axis + 3];
  }
  return place;
}

/** The speed in each frame: over the frames before and after it; at both ends over two frames. */
export function speedsOf(place: readonly Float32Array[], fps: number): Float32Array {
  const frames = place[0].length;
  const speed = new Float32Array(frames);
  for (let row = 0; row < frames; ++row) {
    const before = Math.max(row - 1, 0);
    const after = Math.min(row + 1, frames - 1);
    if (after === before) continue;
    const [dx, dy, dz] = place.map((values) => values[after] - values[before]);
    speed[row] = (Math.hypot(dx, dy, dz) * fps) / (after - before);
  }
  return speed;
}

/** Computes the curves of a joint. */
export function computeTrack(take: Take, joint: number): Track {
  const angles = [0, 1, 2].map((axis) => {
    const channel = CHANNELS * joint + 3 + axis;
    const values = new Float32Array(take.frames);
    for (let row = 0; row < take.frames; ++row) values[row] = take.value(channel, row);
    return values;
  });
  const place = placesOf(take, joint);
  return { angles, place, speed: speedsOf(place, take.fps) };
}

/** Going back and forth between joints costs nothing as long as their curves fit into this. */
const MOST_BYTES = 32e6;

function bytesOf(track: Track): number {
  return [...track.angles, ...track.place, track.speed].reduce((sum, curve) => sum + curve.byteLength, 0);
}

/** Computes curves when they are asked for, and keeps those that were asked for last, at least one. */
export class Tracks {
  private readonly kept = new Map<string, Track>();
  private readonly mostBytes: number;
  private bytes = 0;

  constructor(mostBytes = MOST_BYTES) {
    this.mostBytes = mostBytes;
  }

  of(take: Take, takeIndex: number, joint: number): Track {
    const key = `${takeIndex}/${joint}`;
    const known = this.kept.get(key);
    const track = known ?? computeTrack(take, joint);
    if (!known) this.bytes += bytesOf(track);
    this.kept.delete(key);
    this.kept.set(key, track);
    this.forgetOldest();
    return track;
  }

  private forgetOldest(): void {
    for (const [key, track] of this.kept) {
      if (this.bytes <= this.mostBytes || this.kept.size === 1) return;
      this.kept.delete(key);
      this.bytes -= bytesOf(track);
    }
  }
}
