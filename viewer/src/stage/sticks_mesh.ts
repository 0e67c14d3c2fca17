// Shapes figures of thousands of joints with few corners, so that the first picture comes at once.
import { Vector3 } from "three";
import type { Look } from "../player";
import { MeshBuilder, type Shape } from "./mesh_builder";
import { boneLengths, placeOf, type Skeleton } from "./rig";
import { FIGURE_SIZE } from "./space";

const CORNERS = 4;
const SIDES = 3;
/** The thickness of a bone at its end, as a part of that at its beginning. Nobody sees that so thin an end is open. */
const TAPER = 0.2;
/** Half of the thickness: of a bone as a part of its length, and at most; of a ball as a multiple of its bone's. */
const LOOKS = {
  body: { part: 0.15, most: 0.012, ball: 0 },
  bones: { part: 0.1, most: 0.006, ball: 0 },
  joints: { part: 0.01, most: 0.001, ball: 10 },
} as const;

const SPARE = new Vector3(1, 0, 0);
const OTHER = new Vector3(0, 1, 0);

/** Bones with three sides; balls where the look has them, and where a joint has no bones at all. */
export function shapeSticks(skeleton: Skeleton, look: Look): Shape {
  const builder = new MeshBuilder();
  const lengths = boneLengths(skeleton);
  const pose = skeleton.poses[1] ?? skeleton.poses[0];
  const { part, most, ball } = LOOKS[look];
  const hasBones = lengths.some((length) => length > 1e-6);
  const [from, to] = [new Vector3(), new Vector3()];
  skeleton.parents.forEach((parent, joint) => {
    const side = skeleton.sides[joint];
    const radius = Math.min(part * lengths[joint], most * FIGURE_SIZE);
    placeOf(pose, joint, to);
    const isAlone = !hasBones || (parent < 0 && skeleton.children[joint].length === 0);
    if (isAlone || (ball > 0 && radius > 0)) {
      const size = isAlone ? LOOKS.body.most * FIGURE_SIZE : ball * radius;
      builder.ball(to, [new Vector3(size, 0, 0), new Vector3(0, 0, size), new Vector3(0, -size, 0)], joint, side, CORNERS);
    }
    if (parent < 0) return;
    const along = to.clone().sub(placeOf(pose, parent, from));
    const length = along.length();
    if (!(length > 1e-6)) return;
    along.divideScalar(length);
    const x = (Math.abs(along.x) > 0.9 ? OTHER : SPARE).clone().cross(along).setLength(radius);
    const y = along.clone().cross(x);
    const rings = [
      { centre: from.clone(), x, y, joint: parent },
      { centre: to.clone(), x: x.clone().multiplyScalar(TAPER), y: y.clone().multiplyScalar(TAPER), joint },
    ];
    builder.tube(rings, { side, segments: SIDES, bulge: [0, 0], isOpen: true });
  });
  return { geometry: builder.build(), pose };
}
