// Makes small takes for tests.
import { load } from "./bundle.mjs";

const { Take } = await load("data/take.ts");

/**
 * A take of joints as [name, parent, side]. `curves` maps a channel (6 * joint + its index) to its
 * values; all other values are 0.
 */
export function makeTake({ joints, curves = {}, frames = 1, modelOf = joints.map(() => 0), sourceNames, ...others }) {
  const animated = Object.keys(curves)
    .map(Number)
    .sort((a, b) => a - b);
  const names = joints.map(([name]) => name);
  const record = {
    name: "walk.bvh",
    frames,
    fps: frames > 1 ? 10 : 0,
    firstFrame: 1,
    frameStep: 1,
    unit: 0.01,
    up: "y",
    height: 171,
    models: ["walk"],
    joints: {
      names,
      sourceNames: sourceNames ?? names,
      parents: joints.map(([, parent]) => parent),
      ends: joints.map(([name]) => (name.endsWith("_End") ? 1 : 0)),
      models: modelOf,
      sides: joints.map(([, , side]) => side ?? 0),
    },
    rest: new Array(6 * joints.length).fill(0),
    values: new Array(6 * joints.length).fill(0),
    animated,
    findings: [],
    provenance: {},
    notes: [],
    ...others,
  };
  return new Take(record, Float32Array.from(animated.flatMap((channel) => curves[channel])));
}
