// Numbers and units as the page writes them.
import assert from "node:assert/strict";
import test from "node:test";
import { load } from "./bundle.mjs";

const text = await load("ui/text.ts");

function check(name, rows) {
  test(name, () => {
    for (const [...row] of rows) {
      const expected = row.pop();
      assert.equal(text[name](...row), expected, `${name}(${row.join(", ")})`);
    }
  });
}

check("fixed", [
  [1.005, 1, "1.0"],
  [-2.5, 2, "\u22122.50"],
  [-0.001, 2, "0.00"],
  [NaN, 2, "?"],
]);
check("upTo", [
  [60, 2, "60"],
  [29.97003, 2, "29.97"],
  [100, 0, "100"],
  [0.5, 3, "0.5"],
]);
check("rounded", [
  [0, "0.00"],
  [0.1234, "0.123"],
  [-12.3456, "\u221212.35"],
  [123.456, "123.5"],
  [4321.6, "4322"],
  [2.5e7, "2.5e7"],
  [1e-7, 4.4, "0.00"],
  [-0.36, 5.24, "\u22120.36"],
  [3, 2e6, "0"],
]);
check("counted", [
  [1, "frame", "1 frame"],
  [257, "frame", "257 frames"],
  [0, "frame", "0 frames"],
  [9999, "frame", "9999 frames"],
  [10000, "frame", "10\u202f000 frames"],
  [1234567, "frame", "1\u202f234\u202f567 frames"],
]);
check("secondsText", [
  [2.1333, "2.13 s"],
  [0, "0.00 s"],
]);
check("rateText", [
  [60, "60/s"],
  [59.99999988, "60/s"],
  [29.97003, "29.97/s"],
]);
check("speedText", [
  [1, "1×"],
  [0.25, "0.25×"],
]);
check("unitText", [
  [0.01, "cm"],
  [1, "m"],
  [0.0254, "in"],
  [0.056444, "0.056444 m"],
  [0, "not known"],
]);
check("heightText", [
  [171, 0.01, "1.71 m (cm)"],
  [1.71, 1, "1.71 m"],
  [23.1, 0.056444, "1.30 m (unit 0.0564 m)"],
  [171, 0, "171.0 units"],
  [0, 0.01, ""],
]);
check("bytesText", [
  [1, "1 byte"],
  [999, "999 bytes"],
  [172684, "172.7 kB"],
  [7715691, "7.7 MB"],
  [2.5e9, "2.5 GB"],
]);
check("wordsOf", [
  ["framesPerSecond", "frames per second"],
  ["sourceUp", "source up"],
  ["mesh", "mesh"],
]);
check("fileName", [
  ["/home/ann/walk.bvh", "walk.bvh"],
  ["C:\\takes\\walk.bvh", "walk.bvh"],
  ["walk.bvh", "walk.bvh"],
  ["takes/", "takes/"],
]);
