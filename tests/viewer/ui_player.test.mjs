// The time of takes that are shown in step.
import assert from "node:assert/strict";
import test from "node:test";
import { load } from "./bundle.mjs";
import { makeTake } from "./ui_takes.mjs";

const { Player } = await load("player.ts");

/** A player of takes with so many frames each, 10 frames a second. */
const playerOf = (...frames) => new Player(frames.map((count) => makeTake({ joints: [["Hips", -1]], frames: count })));

/** Plays to the end in steps of `step` seconds; checks that the time never goes back. */
function playToEnd(player, step) {
  player.loop = false;
  player.play();
  for (let count = 0; player.playing && count < 1000; ++count) {
    const before = player.seconds;
    player.advance(step);
    assert.ok(player.seconds >= before, `${before} s, then ${player.seconds} s`);
  }
  assert.equal(player.playing, false);
}

for (const [frames, main] of [
  [[5], 0],
  [[5, 20], 0],
  [[5, 20], 1],
  [[20, 5, 1], 1],
])
  for (const step of [0.01, 0.03, 0.25])
    test(`takes of ${frames} frames stop at the last frame of all (take ${main}, ${step} s)`, () => {
      const player = playerOf(...frames);
      player.mainTake = main;
      playToEnd(player, step);
      const longest = Math.max(...frames);
      assert.ok(player.seconds >= (longest - 1) / 10 - 1e-9 && player.seconds <= player.duration);
      frames.forEach((count, index) => assert.equal(player.row(player.takes[index]), count - 1));
    });

test("playing again from the end begins at the first frame", () => {
  const player = playerOf(5, 20);
  playToEnd(player, 0.1);
  player.play();
  assert.equal(player.seconds, 0);
});

test("playing at the end of a short take goes on with the longer one", () => {
  const player = playerOf(5, 20);
  player.loop = false;
  player.goTo(4);
  player.play();
  assert.equal(player.seconds, 0.4);
  player.advance(0.2);
  assert.ok(player.seconds > 0.5);
  assert.equal(player.playing, true);
});

test("takes that loop begin again after the longest", () => {
  const player = playerOf(5, 20);
  player.seek(1.9);
  player.play();
  player.advance(0.2);
  assert.ok(Math.abs(player.seconds - 0.1) < 1e-9);
  assert.equal(player.playing, true);
});
