// Builds one mesh out of tubes. Each vertex moves with one or two joints.
import { BufferAttribute, BufferGeometry, Vector3 } from "three";
import type { Side } from "./rig";

/** An oval across a tube. `x` and `y` are half of its axes. */
export interface Ring {
  centre: Vector3;
  x: Vector3;
  y: Vector3;
  /** 2 makes an oval; more makes it squarer. */
  power?: number;
  /** The joint that moves the ring, or two with the weight of the second. */
  joint: number;
  second?: number;
  weight?: number;
}

export interface TubeOptions {
  side: Side;
  segments: number;
  /** How far the ends bulge, as a multiple of the ends' mean radius; 0 leaves them flat. */
  bulge?: readonly [number, number];
  /** Leaves the ends open. */
  isOpen?: boolean;
}

export interface Shape {
  readonly geometry: BufferGeometry;
  /** The pose in which the geometry is given. */
  readonly pose: Float64Array;
}

const SIDE_NUMBERS = { middle: 0, left: 1, right: 2 } as const;
const CAP_ANGLES = [0.35, 0.65, 0.9].map((part) => (part * Math.PI) / 2);

function powered(value: number, power: number): number {
  return Math.sign(value) * Math.pow(Math.abs(value), 2 / power);
}

export class MeshBuilder {
  private readonly positions: number[] = [];
  private readonly joints: number[] = [];
  private readonly weights: number[] = [];
  private readonly sides: number[] = [];
  private readonly indices: number[] = [];

  /** A tube through at least two rings. */
  tube(rings: readonly Ring[], { side, segments, bulge = [1, 1], isOpen = false }: TubeOptions): void {
    const all = [...this.cap(rings[0], rings[1], bulge[0]).reverse(), ...rings];
    all.push(...this.cap(rings[rings.length - 1], rings[rings.length - 2], bulge[1]));
    const along = rings[rings.length - 1].centre.clone().sub(rings[0].centre);
    const flips = rings[0].x.clone().cross(rings[0].y).dot(along) < 0;
    const start = this.count;
    for (const ring of all) this.ring(ring, side, segments, flips);
    for (let ring = 0; ring + 1 < all.length; ++ring)
      for (let at = 0; at < segments; ++at) {
        const next = (at + 1) % segments;
        const a = start + ring * segments;
        const b = a + segments;
        this.indices.push(a + at, a + next, b + at, a + next, b + next, b + at);
      }
    if (isOpen) return;
    this.close(all[0], start, side, segments, true);
    this.close(all[all.length - 1], start + (all.length - 1) * segments, side, segments, false);
  }

  /** A ball with its three half axes. */
  ball(centre: Vector3, axes: readonly [Vector3, Vector3, Vector3], joint: number, side: Side, segments: number): void {
    const rings: Ring[] = [];
    const steps = Math.max(5, segments >> 1);
    for (let step = 0; step <= steps; ++step) {
      const angle = (Math.PI * step) / steps;
      const radius = Math.max(Math.sin(angle), 0.01);
      rings.push({
        centre: centre.clone().addScaledVector(axes[2], -Math.cos(angle)),
        x: axes[0].clone().multiplyScalar(radius),
        y: axes[1].clone().multiplyScalar(radius),
        joint,
      });
    }
    this.tube(rings, { side, segments, bulge: [0, 0] });
  }

  private get count(): number {
    return this.sides.length;
  }

  /** The rings that round an end off, from the end outwards. */
  private cap(end: Ring, before: Ring, bulge: number): Ring[] {
    if (bulge <= 0) return [];
    const out = end.centre.clone().sub(before.centre).normalize();
    const reach = (bulge * (end.x.length() + end.y.length())) / 2;
    return CAP_ANGLES.map((angle) => ({
      ...end,
      centre: end.centre.clone().addScaledVector(out, reach * Math.sin(angle)),
      x: end.x.clone().multiplyScalar(Math.cos(angle)),
      y: end.y.clone().multiplyScalar(Math.cos(angle)),
    }));
  }

  private vertex(place: Vector3, ring: Ring, side: Side): void {
    this.positions.push(place.x, place.y, place.z);
    const weight = ring.second === undefined ? 0 : (ring.weight ?? 0);
    this.joints.push(ring.joint, ring.second ?? ring.joint);
    this.weights.push(1 - weight, weight);
    this.sides.push(SIDE_NUMBERS[side]);
  }

  private ring(ring: Ring, side: Side, segments: number, flips: boolean): void {
    const place = new Vector3();
    const power = ring.power ?? 2;
    for (let at = 0; at < segments; ++at) {
      const angle = ((flips ? -1 : 1) * 2 * Math.PI * at) / segments;
      place
        .copy(ring.centre)
        .addScaledVector(ring.x, powered(Math.cos(angle), power))
        .addScaledVector(ring.y, powered(Math.sin(angle), power));
      this.vertex(place, ring, side);
    }
  }

  private close(ring: Ring, from: number, side: Side, segments: number, isStart: boolean): void {
    const pole = this.count;
    this.vertex(ring.centre, ring, side);
    for (let at = 0; at < segments; ++at) {
      const next = (at + 1) % segments;
      if (isStart) this.indices.push(pole, from + next, from + at);
      else this.indices.push(pole, from + at, from + next);
    }
  }

  build(): BufferGeometry {
    const geometry = new BufferGeometry();
    geometry.setAttribute("position", new BufferAttribute(Float32Array.from(this.positions), 3));
    // The programs of three.js read joints as floating-point numbers, so that whole ones of 32 bits would not do.
    const isLarge = this.joints.some((joint) => joint > 0xffff);
    const joints = isLarge ? Float32Array.from(this.joints) : Uint16Array.from(this.joints);
    geometry.setAttribute("skinIndex", new BufferAttribute(joints, 2));
    geometry.setAttribute("skinWeight", new BufferAttribute(Float32Array.from(this.weights), 2));
    geometry.setAttribute("color", new BufferAttribute(new Float32Array(3 * this.count), 3));
    geometry.setIndex(this.indices);
    geometry.computeVertexNormals();
    geometry.userData.sides = Uint8Array.from(this.sides);
    return geometry;
  }
}
