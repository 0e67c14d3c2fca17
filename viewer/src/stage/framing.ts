// Finds the place from which a camera sees all of some points.

export interface Aim {
  /** The angle around the vertical axis, from the z axis towards the x axis, and above the ground; radians. */
  azimuth: number;
  elevation: number;
}

export interface Lens {
  /** The tangents of half of the angles of view. */
  tanX: number;
  tanY: number;
}

export type Triple = [number, number, number];

/** The axes of a camera that looks along an aim: to the right, up, and backwards. */
export function cameraAxes({ azimuth, elevation }: Aim): [Triple, Triple, Triple] {
  const [sa, ca, se, ce] = [Math.sin(azimuth), Math.cos(azimuth), Math.sin(elevation), Math.cos(elevation)];
  return [
    [ca, 0, -sa],
    [-sa * se, ce, -ca * se],
    [sa * ce, se, ca * ce],
  ];
}

/**
 * Returns the nearest place of a camera from which all points (x, y, z, x, ...) are inside the
 * picture. The camera looks along `aim`.
 */
export function frame(points: ArrayLike<number>, aim: Aim, lens: Lens): { place: Triple; distance: number } {
  const axes = cameraAxes(aim);
  const [xAxis, yAxis, zAxis] = axes;
  // In the camera's axes a point is in the picture if |x - cx| <= (cz - z) * tan, and likewise for y.
  let [right, left, top, bottom, back] = [-Infinity, -Infinity, -Infinity, -Infinity, -Infinity];
  let depth = 0;
  const count = Math.floor(points.length / 3);
  for (let at = 0; at < 3 * count; at += 3) {
    const [px, py, pz] = [points[at], points[at + 1], points[at + 2]];
    const x = xAxis[0] * px + xAxis[1] * py + xAxis[2] * pz;
    const y = yAxis[0] * px + yAxis[1] * py + yAxis[2] * pz;
    const z = zAxis[0] * px + zAxis[1] * py + zAxis[2] * pz;
    right = Math.max(right, z + x / lens.tanX);
    left = Math.max(left, z - x / lens.tanX);
    top = Math.max(top, z + y / lens.tanY);
    bottom = Math.max(bottom, z - y / lens.tanY);
    back = Math.max(back, z);
    depth += z / count;
  }
  const cx = ((right - left) * lens.tanX) / 2;
  const cy = ((top - bottom) * lens.tanY) / 2;
  const cz = Math.max((right + left) / 2, (top + bottom) / 2, back);
  const place = [0, 1, 2].map((axis) => cx * axes[0][axis] + cy * axes[1][axis] + cz * axes[2][axis]) as Triple;
  return { place, distance: cz - depth };
}
