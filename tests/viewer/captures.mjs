// Writes the pages that the tests open.
import { execFileSync } from "node:child_process";
import { mkdirSync, writeFileSync } from "node:fs";
import { join } from "node:path";

const HOSTILE = "<img/src=x/onerror=alert(1)>";

/** A figure of a hip, a spine and a head, with the names that are given. */
export function smallBvh({ names = ["Hips", "Spine", "Head"], rows = ["0 0 0 0 0 0 0 0 0 0 0 0"], frameTime = "0.1" } = {}) {
  const channels = "CHANNELS 3 Zrotation Xrotation Yrotation";
  return [
    "HIERARCHY",
    `ROOT ${names[0]}\n{\nOFFSET 0 0 0\nCHANNELS 6 Xposition Yposition Zposition Zrotation Xrotation Yrotation`,
    `JOINT ${names[1]}\n{\nOFFSET 0 90 0\n${channels}`,
    `JOINT ${names[2]}\n{\nOFFSET 0 60 0\n${channels}`,
    "End Site\n{\nOFFSET 0 20 0\n}\n}\n}\n}",
    `MOTION\nFrames: ${rows.length}\nFrame Time: ${frameTime}`,
    ...rows,
    "",
  ].join("\n");
}

/** Rows in which the hip walks along z and the head turns. */
export function walkingRows(count) {
  return Array.from({ length: count }, (_, frame) => `0 90 ${frame} 0 0 0 0 0 0 ${frame} 0 0`);
}

const TEXTS = {
  "hostile.bvh": smallBvh({ names: [HOSTILE, "</script><script>alert(2)</script>", "x".repeat(300)], rows: walkingRows(5) }),
  "findings.bvh": smallBvh({
    rows: walkingRows(20).map((row, frame) => (frame === 11 ? row.replace(/^0/, "nan") : row)),
  }),
  "still.bvh": smallBvh(),
  "fast.bvh": smallBvh({ rows: walkingRows(60), frameTime: "0.05" }),
  "slow.bvh": smallBvh({ rows: walkingRows(30), frameTime: "0.1" }),
};

/** The captures that are compared with .npz: a name, and the words of an import. */
export function samples(examples) {
  const bvh = [join(examples, "walk.bvh")];
  const amc = [join(examples, "walk.asf"), join(examples, "walk.amc")];
  return [
    ["bvh", bvh],
    ["bvh-bones", [...bvh, "--bones"]],
    ["bvh-metres", [...bvh, "--scale", "0.01"]],
    ["amc", amc],
    ["amc-bones", [...amc, "--bones"]],
    ["amc-part", [...amc, "--frames", "20:60", "--up", "z"]],
    ["skeleton", [join(examples, "walk.asf")]],
  ];
}

export class Captures {
  constructor(zkhost, examples, folder) {
    this.zkhost = zkhost;
    this.folder = folder;
    mkdirSync(folder, { recursive: true });
    for (const [name, text] of Object.entries(TEXTS)) writeFileSync(join(folder, name), text);
    this.samples = samples(examples);
    this.walk = join(examples, "walk.bvh");
  }

  path(name) {
    return join(this.folder, name);
  }

  /** Imports files and returns the path of the page; further outputs go beside it. */
  page(name, words, outputs = []) {
    const out = this.path(`${name}.html`);
    const others = outputs.flatMap((extension) => ["-o", this.path(`${name}${extension}`)]);
    execFileSync(this.zkhost, ["import", ...words, "--quiet", "-o", out, ...others], { stdio: ["ignore", "pipe", "ignore"] });
    return out;
  }

  /** Returns the path of a page that shows several takes. */
  together(files) {
    const env = { ...process.env, XDG_CACHE_HOME: this.folder };
    const printed = execFileSync(this.zkhost, ["view", ...files, "--no-open", "--quiet"], { env, stdio: ["ignore", "pipe", "ignore"] });
    return printed.toString().trim();
  }
}
