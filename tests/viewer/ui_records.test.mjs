// Records that were changed or cut are refused with a sentence, before memory is reserved for them.
import assert from "node:assert/strict";
import test from "node:test";
import { load } from "./bundle.mjs";

const { PageError, parseRecords } = await load("data/record.ts");

const finding = () => ({
  code: "number-not-finite",
  severity: "warning",
  line: 20,
  column: 3,
  count: 1,
  joint: "Hips",
  message: "This is no number.",
  frame: 2,
});

const wholeTake = () => ({
  name: "walk.bvh",
  frames: 2,
  fps: 60,
  firstFrame: 1,
  frameStep: 1,
  unit: 0.01,
  up: "y",
  height: 171,
  models: ["walk"],
  joints: {
    names: ["Hips", "Hips_End"],
    sourceNames: ["Hips", ""],
    parents: [-1, 0],
    ends: [0, 1],
    models: [0, 0],
    sides: [0, 0],
  },
  rest: new Array(12).fill(0),
  values: new Array(12).fill(0),
  animated: [1, 5],
  findings: [finding()],
  provenance: { tool: "zkhost" },
  notes: ["A curve was left out."],
});

/** The text of a page whose take was changed by `change`. */
function pageWith(change) {
  const take = wholeTake();
  change(take);
  return JSON.stringify({ version: 1, takes: [take] });
}

test("a whole record is read", () => {
  const [take] = parseRecords(pageWith(() => {}));
  assert.deepEqual(take, wholeTake());
});

const STRANGE_PAGES = {
  "no JSON": ['{"version":', /cut/],
  null: ["null", /no records/],
  "a number": ["7", /no records/],
  "a list": ["[]", /no records/],
  "no version": ['{"takes":[]}', /version is missing/],
  "a newer version": ['{"version":2}', /version 2/],
  "no list of takes": ['{"version":1,"takes":{}}', /no take/],
  "no take": ['{"version":1,"takes":[]}', /no take/],
  "an empty take": ['{"version":1,"takes":[null]}', /take is empty/],
};

for (const [name, [text, message]] of Object.entries(STRANGE_PAGES))
  test(`instead of records: ${name}`, () => {
    assert.throws(
      () => parseRecords(text),
      (error) => error instanceof PageError && message.test(error.message),
    );
  });

/** What happens to a take, and what the page says about it. */
const CHANGES = {
  "a name that is a number": [(take) => (take.name = 7), /no name/],
  "an axis that does not exist": [(take) => (take.up = "w"), /axis/],
  "an axis that is no text": [(take) => (take.up = ["y"]), /axis/],
  "models without names": [(take) => (take.models = [1]), /models have no names/],
  "models that are a text": [(take) => (take.models = "walk"), /models have no names/],
  "no joints": [(take) => (take.joints = null), /no joints/],
  "names that are a text": [(take) => (take.joints.names = "Hips"), /no joints/],
  "a joint without a name": [(take) => (take.joints.names[1] = null), /joint has no name/],
  "too few names in the file": [(take) => take.joints.sourceNames.pop(), /name in the file/],
  "no names in the file": [(take) => delete take.joints.sourceNames, /name in the file/],
  "too few ends": [(take) => take.joints.ends.pop(), /wrong length/],
  "an end that is half": [(take) => (take.joints.ends[1] = 0.5), /end site/],
  "a side that is a fraction": [(take) => (take.joints.sides[1] = 1.5), /side/],
  "a fourth side": [(take) => (take.joints.sides[1] = 3), /side/],
  "a model that does not exist": [(take) => (take.joints.models[1] = 1), /no model/],
  "a model below the first": [(take) => (take.joints.models[1] = -1), /no model/],
  "no models": [(take) => (take.models = []), /no model/],
  "a joint that hangs on itself": [(take) => (take.joints.parents[1] = 1), /before its parent/],
  "a parent that is a fraction": [(take) => (take.joints.parents[1] = 0.5), /no parent/],
  "a base pose that is too short": [(take) => take.rest.pop(), /base pose/],
  "a value that is a text": [(take) => (take.values[3] = "1"), /list of values/],
  "a curve twice": [(take) => (take.animated = [1, 1]), /curve has no joint/],
  "a curve behind the last joint": [(take) => (take.animated = [12]), /curve has no joint/],
  "a curve that is a text": [(take) => (take.animated = ["1"]), /curve has no joint/],
  "more curves than channels": [(take) => (take.animated = new Array(13).fill(0)), /too many curves/],
  "more frames than memory, without a curve": [
    (take) => Object.assign(take, { animated: [], frames: 10_000_001 }),
    /number of frames/,
  ],
  "no frame": [(take) => (take.frames = 0), /number of frames/],
  "a rate below zero": [(take) => Object.assign(take, { frames: 1, fps: -1 }), /rate/],
  "frames without a rate": [(take) => (take.fps = 0), /rate/],
  "a height that is a text": [(take) => (take.height = "171"), /number of a take/],
  "no findings": [(take) => (take.findings = null), /findings are missing/],
  "a finding that is null": [(take) => (take.findings = [null]), /finding is empty/],
  "a finding of unknown severity": [(take) => (take.findings[0].severity = "fatal"), /severity/],
  "a finding whose severity is a list": [(take) => (take.findings[0].severity = ["note"]), /severity/],
  "a finding without a message": [(take) => delete take.findings[0].message, /no text/],
  "a finding whose file is a number": [(take) => (take.findings[0].file = 7), /no text/],
  "a finding whose frame is a text": [(take) => (take.findings[0].frame = "2"), /number of a finding/],
  "a finding without a line": [(take) => delete take.findings[0].line, /number of a finding/],
  "a source that is a text": [(take) => (take.provenance = "walk.bvh"), /source/],
  "no notes": [(take) => delete take.notes, /notes/],
  "a note that is a number": [(take) => (take.notes = [7]), /notes/],
};

for (const [name, [change, message]] of Object.entries(CHANGES))
  test(`a take with ${name}`, () => {
    assert.throws(
      () => parseRecords(pageWith(change)),
      (error) => error instanceof PageError && message.test(error.message),
    );
  });
