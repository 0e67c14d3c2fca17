// One figure: a mesh that the joints of a take move, without any objects for the bones.
import { Color, DataTexture, FloatType, RGBAFormat, SkinnedMesh, Skeleton, Sphere, Vector3, type BufferGeometry, type Material } from "three";
import { TRANSFORM } from "../data/pose";
import type { Look } from "../player";
import { shapeBody } from "./body_mesh";
import { isLarge, planBody, type BodyPlan } from "./body_plan";
import { shapeBones, shapeJoints } from "./bones_mesh";
import { shapeSticks } from "./sticks_mesh";
import type { Shape } from "./mesh_builder";
import { readPose, type Rig } from "./rig";
import type { Space } from "./space";
import type { Tone } from "./theme";

/** A skeleton whose matrices are written into its texture directly. */
class MatrixTable extends Skeleton {
  readonly table: Float32Array;

  constructor(joints: number) {
    super([], []);
    const size = Math.max(4, 4 * Math.ceil(Math.sqrt(4 * joints) / 4));
    this.table = new Float32Array(4 * size * size);
    this.boneMatrices = this.table;
    this.boneTexture = new DataTexture(this.table, size, size, RGBAFormat, FloatType);
    this.boneTexture.needsUpdate = true;
  }
  // The table is written by Figure.show.
  override update(): void {}
}

interface LookShape extends Shape {
  /** The inverse of each joint's transform in Shape.pose. */
  inverses: Float64Array;
}

/** Inverts a turn with a translation. */
function invert(pose: Float64Array, at: number, out: Float64Array): void {
  for (let row = 0; row < 3; ++row) {
    for (let column = 0; column < 3; ++column) out[at + 4 * row + column] = pose[at + 4 * column + row];
    out[at + 4 * row + 3] = -(
      pose[at + row] * pose[at + 3] +
      pose[at + 4 + row] * pose[at + 7] +
      pose[at + 8 + row] * pose[at + 11]
    );
  }
}

const SHAPERS: Record<Look, (rig: Rig, plan: BodyPlan | null) => Shape> = {
  body: shapeBody,
  bones: shapeBones,
  joints: shapeJoints,
};
const colour = new Color();

export class Figure {
  readonly rig: Rig;
  readonly plan: BodyPlan | null;
  readonly mesh: SkinnedMesh;
  /** The joint whose place counts as that of the figure: its pelvis or its top joint. */
  readonly root: number;
  /** The transforms of the joints in the picture, in the frame that is shown. */
  readonly pose: Float64Array;
  private readonly space: Space;
  private readonly table: MatrixTable;
  private readonly shapes = new Map<Look, LookShape>();
  private look: Look = "body";
  private tone: Tone | null = null;
  private shownRow = -1;

  constructor(rig: Rig, space: Space, look: Look, material: Material) {
    this.rig = rig;
    this.space = space;
    this.plan = planBody(rig);
    this.root = this.plan?.pelvis ?? 0;
    this.pose = new Float64Array(TRANSFORM * rig.joints.length);
    this.table = new MatrixTable(rig.joints.length);
    this.look = look;
    this.mesh = new SkinnedMesh(this.shape(look).geometry, material);
    this.mesh.skeleton = this.table;
    this.mesh.bindMode = "detached";
    this.mesh.frustumCulled = false;
    // Otherwise the vertices would be moved here to find it.
    this.mesh.boundingSphere = new Sphere(new Vector3(), 1);
    this.mesh.matrixAutoUpdate = false;
  }

  private shape(look: Look): LookShape {
    let shape = this.shapes.get(look);
    if (!shape) {
      const made = isLarge(this.rig) ? shapeSticks(this.rig, look) : SHAPERS[look](this.rig, this.plan);
      const inverses = new Float64Array(made.pose.length);
      for (let at = 0; at < inverses.length; at += TRANSFORM) invert(made.pose, at, inverses);
      shape = { ...made, inverses };
      this.shapes.set(look, shape);
    }
    return shape;
  }

  setLook(look: Look): void {
    if (look === this.look) return;
    this.look = look;
    this.mesh.geometry = this.shape(look).geometry;
    this.shownRow = -1;
    if (this.tone) this.paint(this.tone);
  }

  setTone(tone: Tone): void {
    if (tone === this.tone) return;
    this.tone = tone;
    this.paint(tone);
  }

  /** Colours the vertices by the side of the body that they belong to. */
  private paint(tone: Tone): void {
    const geometry: BufferGeometry = this.mesh.geometry;
    const sides = geometry.userData.sides as Uint8Array;
    const colours = geometry.getAttribute("color");
    const strong = this.look !== "body";
    const rgb = (strong ? tone.bones : tone.body).map((text) => colour.set(text).toArray());
    for (let vertex = 0; vertex < sides.length; ++vertex) {
      const [red, green, blue] = rgb[sides[vertex]];
      colours.setXYZ(vertex, red, green, blue);
    }
    colours.needsUpdate = true;
  }

  /** Shows a frame. `world` has the transforms of the take's joints in it. */
  show(row: number, world: Float64Array): void {
    if (row === this.shownRow) return;
    this.shownRow = row;
    const { pose } = this;
    readPose(this.rig.joints, this.space, world, pose);
    const { inverses } = this.shape(this.look);
    const { table } = this.table;
    for (let joint = 0; joint < this.rig.joints.length; ++joint) {
      const at = TRANSFORM * joint;
      const to = 16 * joint;
      for (let row = 0; row < 3; ++row) {
        const a = pose[at + 4 * row];
        const b = pose[at + 4 * row + 1];
        const c = pose[at + 4 * row + 2];
        table[to + row] = a * inverses[at] + b * inverses[at + 4] + c * inverses[at + 8];
        table[to + 4 + row] = a * inverses[at + 1] + b * inverses[at + 5] + c * inverses[at + 9];
        table[to + 8 + row] = a * inverses[at + 2] + b * inverses[at + 6] + c * inverses[at + 10];
        table[to + 12 + row] =
          a * inverses[at + 3] + b * inverses[at + 7] + c * inverses[at + 11] + pose[at + 4 * row + 3];
      }
      table[to + 15] = 1;
    }
    this.table.boneTexture!.needsUpdate = true;
  }
}
