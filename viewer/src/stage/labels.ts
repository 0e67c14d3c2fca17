// The numbers of the grid: metres along two sides of the place where the take happens.
import {
  CanvasTexture,
  Color,
  Float32BufferAttribute,
  InstancedBufferAttribute,
  InstancedBufferGeometry,
  LinearFilter,
  LinearSRGBColorSpace,
  Mesh,
  ShaderMaterial,
  Vector2,
  Vector3,
  type Group,
} from "three";
import { pixelRatio, resolution } from "./lines";
import type { Theme } from "./theme";

const GLYPHS = "0123456789-.m ";
/** The size of a glyph in pixels of the page. */
const WIDTH = 7.75;
/** The part of the texture that each glyph has is wider, so that an m fits. */
const CELL = 2 * WIDTH;
const HEIGHT = 16;
const FONT_SIZE = 13;
/** Glyphs are drawn larger, for fine screens. */
const SHARPNESS = 4;
const MOST_GLYPHS = 1200;

const VERTEX = `
attribute vec3 anchor;
attribute vec3 glyph;
uniform float gap;
uniform float ratio;
uniform vec2 resolution;
uniform vec2 size;
uniform vec3 focus;
uniform vec2 fade;
varying vec2 spot;
varying float near;
void main() {
  vec4 clip = projectionMatrix * modelViewMatrix * vec4(anchor, 1.0);
  vec2 pixels = ratio * vec2((2.0 * position.x + glyph.y) * size.x, position.y * size.y);
  clip.xy += 2.0 * pixels / resolution * clip.w;
  gl_Position = clip;
  // Numbers whose neighbours would touch them are left out.
  vec3 next = anchor + (glyph.z > 0.5 ? vec3(gap, 0.0, 0.0) : vec3(0.0, 0.0, gap));
  vec4 beside = projectionMatrix * modelViewMatrix * vec4(next, 1.0);
  vec4 own = projectionMatrix * modelViewMatrix * vec4(anchor, 1.0);
  vec2 apart = abs(beside.xy / beside.w - own.xy / own.w) * resolution / (2.0 * ratio);
  float room = max(apart.x / 46.0, apart.y / 20.0);
  spot = vec2((glyph.x + position.x + 0.5) / ${GLYPHS.length}.0, position.y + 0.5);
  near = smoothstep(0.8, 1.3, room) * (1.0 - smoothstep(fade.x, fade.y, distance(anchor.xz, focus.xz)));
}`;

const FRAGMENT = `
uniform sampler2D glyphs;
uniform vec3 colour;
varying vec2 spot;
varying float near;
void main() {
  gl_FragColor = vec4(colour, texture2D(glyphs, spot).a * near);
}`;

function drawGlyphs(): CanvasTexture {
  const canvas = document.createElement("canvas");
  canvas.width = GLYPHS.length * CELL * SHARPNESS;
  canvas.height = HEIGHT * SHARPNESS;
  const context = canvas.getContext("2d");
  if (context) {
    context.font = `500 ${FONT_SIZE * SHARPNESS}px system-ui, sans-serif`;
    context.textAlign = "center";
    context.textBaseline = "middle";
    context.fillStyle = "#fff";
    [...GLYPHS].forEach((glyph, index) => {
      const shown = glyph === "-" ? "\u2212" : glyph;
      context.fillText(shown, (index + 0.5) * CELL * SHARPNESS, (HEIGHT * SHARPNESS) / 2);
    });
  }
  const texture = new CanvasTexture(canvas);
  texture.minFilter = LinearFilter;
  texture.generateMipmaps = false;
  return texture;
}

/** Distances between numbers: each cell, unless that were too many. */
export function labelStep(cells: number): number {
  if (!Number.isFinite(cells)) return 1;
  for (let step = 1; ; step *= 10)
    for (const factor of [1, 2, 5]) if (cells / (step * factor) <= 14) return step * factor;
}

/** The cells from `min` to `max` that have a number; `origin` is what the numbers have more than the cells. */
export function numberedCells(min: number, max: number, origin: number, step: number): number[] {
  const first = Math.ceil((min + origin) / step) * step - origin;
  // So far away from the origin, cells have no exact numbers.
  if (!Number.isSafeInteger(first) || !Number.isSafeInteger(first + origin)) return [];
  return Array.from({ length: Math.max(Math.floor((max - first) / step) + 1, 0) }, (_, index) => first + index * step);
}

export interface Region {
  minX: number;
  maxX: number;
  minZ: number;
  maxZ: number;
}

export class Labels {
  private readonly geometry = new InstancedBufferGeometry();
  private readonly material: ShaderMaterial;
  private readonly mesh: Mesh;
  private readonly anchors = new InstancedBufferAttribute(new Float32Array(3 * MOST_GLYPHS), 3);
  private readonly glyphs = new InstancedBufferAttribute(new Float32Array(3 * MOST_GLYPHS), 3);
  private readonly region: Region;
  private readonly cell: number;
  private readonly cellMetres: number;
  private readonly origin: readonly [number, number];
  private sides = "";
  private count = 0;

  /** `region` is counted in cells of the grid; `cellMetres` is the length of a cell in metres. */
  constructor(group: Group, region: Region, cell: number, cellMetres: number, origin: readonly [number, number]) {
    this.region = region;
    this.cell = cell;
    this.cellMetres = cellMetres;
    this.origin = origin;
    this.geometry.setAttribute("position", new Float32BufferAttribute([-0.5, -0.5, 0, 0.5, -0.5, 0, 0.5, 0.5, 0, -0.5, 0.5, 0], 3));
    this.geometry.setIndex([0, 1, 2, 0, 2, 3]);
    this.geometry.setAttribute("anchor", this.anchors);
    this.geometry.setAttribute("glyph", this.glyphs);
    this.material = new ShaderMaterial({
      vertexShader: VERTEX,
      fragmentShader: FRAGMENT,
      transparent: true,
      depthWrite: false,
      uniforms: {
        resolution,
        ratio: pixelRatio,
        gap: { value: 1 },
        size: { value: new Vector2(WIDTH, HEIGHT) },
        glyphs: { value: drawGlyphs() },
        colour: { value: new Color() },
        focus: { value: new Vector3() },
        fade: { value: new Vector2(1, 2) },
      },
    });
    this.mesh = new Mesh(this.geometry, this.material);
    this.mesh.frustumCulled = false;
    this.mesh.renderOrder = -1;
    group.add(this.mesh);
  }

  setTheme(theme: Theme): void {
    (this.material.uniforms.colour.value as Color).setStyle(theme.label, LinearSRGBColorSpace);
  }

  update(camera: Vector3, focus: Vector3, distance: number): void {
    (this.material.uniforms.focus.value as Vector3).copy(focus);
    (this.material.uniforms.fade.value as Vector2).set(0.9 * distance, 1.6 * distance);
    // The numbers are on the two sides that are nearer to the camera.
    const { minX, maxX, minZ, maxZ } = this.region;
    const isRight = camera.x > ((minX + maxX) / 2) * this.cell;
    const isFront = camera.z > ((minZ + maxZ) / 2) * this.cell;
    const sides = `${isRight} ${isFront}`;
    if (sides === this.sides) return;
    this.sides = sides;
    this.layOut(isRight ? maxX : minX, isFront ? maxZ : minZ);
  }

  private layOut(x: number, z: number): void {
    const { minX, maxX, minZ, maxZ } = this.region;
    this.count = 0;
    const step = Math.max(labelStep(maxX - minX), labelStep(maxZ - minZ));
    this.material.uniforms.gap.value = step * this.cell;
    const [originX, originZ] = this.origin;
    for (const at of numberedCells(minX, maxX, originX, step)) this.write(at + originX, at, z, 1);
    for (const at of numberedCells(minZ, maxZ, originZ, step)) if (at !== z) this.write(at + originZ, x, at, 0);
    this.geometry.instanceCount = this.count;
    this.anchors.needsUpdate = true;
    this.glyphs.needsUpdate = true;
  }

  /** `axis` is 1 for numbers that follow each other along x. */
  private write(cells: number, x: number, z: number, axis: number): void {
    const metres = cells * this.cellMetres;
    const text = `${Number(metres.toPrecision(6))}m`;
    for (let index = 0; index < text.length && this.count < MOST_GLYPHS; ++index) {
      const glyph = GLYPHS.indexOf(text[index]);
      if (glyph < 0) continue;
      this.anchors.setXYZ(this.count, x * this.cell, 0, z * this.cell);
      // The unit keeps some distance from the number.
      const shift = text[index] === "m" ? 0.65 : -0.35;
      this.glyphs.setXYZ(this.count++, glyph, index - (text.length - 1) / 2 + shift, axis);
    }
  }
}
