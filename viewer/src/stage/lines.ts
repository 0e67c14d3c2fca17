// Lines that are some pixels wide, smooth at their edges, and that fade out with distance.
import {
  Color,
  InstancedBufferGeometry,
  InstancedInterleavedBuffer,
  InterleavedBufferAttribute,
  LinearSRGBColorSpace,
  Float32BufferAttribute,
  Mesh,
  ShaderMaterial,
  Vector2,
  Vector3,
} from "three";

const VERTEX = `
attribute vec3 start;
attribute vec3 end;
uniform vec2 resolution;
uniform float width;
uniform float ratio;
uniform vec2 now;
varying vec3 place;
varying float across;
varying float since;
void main() {
  // How far the segment is from the present, of the time within which a line is clear.
  since = (float(gl_InstanceID) + position.x - now.x) * now.y;
  vec4 a = modelViewMatrix * vec4(start, 1.0);
  vec4 b = modelViewMatrix * vec4(end, 1.0);
  vec3 from = start;
  vec3 to = end;
  // The part of a line that the camera cannot see, because the camera looks away from it, is cut off.
  float near = -1.001 * projectionMatrix[3][2] / (projectionMatrix[2][2] - 1.0);
  near = -abs(near);
  if (a.z > near && b.z < near) {
    float part = (a.z - near) / (a.z - b.z);
    a = mix(a, b, part);
    from = mix(from, to, part);
  } else if (b.z > near && a.z < near) {
    float part = (b.z - near) / (b.z - a.z);
    b = mix(b, a, part);
    to = mix(to, from, part);
  }
  vec4 ca = projectionMatrix * a;
  vec4 cb = projectionMatrix * b;
  vec2 along = (cb.xy / cb.w - ca.xy / ca.w) * resolution;
  along = length(along) > 1e-6 ? normalize(along) : vec2(1.0, 0.0);
  vec4 clip = position.x < 0.5 ? ca : cb;
  float wide = width * ratio + 0.5;
  across = position.y * wide;
  clip.xy += (vec2(-along.y, along.x) * position.y * wide + along * (position.x - 0.5)) * 2.0 / resolution * clip.w;
  gl_Position = clip;
  place = (modelMatrix * vec4(position.x < 0.5 ? from : to, 1.0)).xyz;
}`;

const FRAGMENT = `
uniform vec3 colour;
uniform float opacity;
uniform float width;
uniform float ratio;
uniform vec3 focus;
uniform vec2 fade;
varying vec3 place;
varying float across;
varying float since;
void main() {
  float edge = clamp(width * ratio + 0.5 - abs(across), 0.0, 1.0);
  float near = 1.0 - smoothstep(fade.x, fade.y, distance(place.xz, focus.xz));
  gl_FragColor = vec4(colour, opacity * edge * near * mix(1.0, 0.22, smoothstep(0.0, 1.0, abs(since))));
}`;

/** The size of the picture in its own pixels, and how many of them a pixel of the page has; all lines share them. */
export const resolution = { value: new Vector2(1, 1) };
export const pixelRatio = { value: 1 };

export class Lines {
  readonly mesh: Mesh;
  private readonly geometry = new InstancedBufferGeometry();
  private readonly material: ShaderMaterial;

  /** `width` is half of the width, in pixels of the page. Lines that are not `hidden` behind figures are drawn over them. */
  constructor(width: number, isHidden = true) {
    this.geometry.setAttribute("position", new Float32BufferAttribute([0, -1, 0, 1, -1, 0, 1, 1, 0, 0, 1, 0], 3));
    this.geometry.setIndex([0, 1, 2, 0, 2, 3]);
    this.geometry.instanceCount = 0;
    this.material = new ShaderMaterial({
      vertexShader: VERTEX,
      fragmentShader: FRAGMENT,
      transparent: true,
      depthWrite: false,
      depthTest: isHidden,
      uniforms: {
        resolution,
        ratio: pixelRatio,
        colour: { value: new Color() },
        opacity: { value: 1 },
        width: { value: width },
        focus: { value: new Vector3() },
        now: { value: new Vector2(0, 0) },
        fade: { value: new Vector2(1e6, 2e6) },
      },
    });
    this.mesh = new Mesh(this.geometry, this.material);
    this.mesh.frustumCulled = false;
  }

  private set(buffer: InstancedInterleavedBuffer, gap: number, count: number): void {
    this.geometry.dispose();
    this.geometry.setAttribute("start", new InterleavedBufferAttribute(buffer, 3, 0));
    this.geometry.setAttribute("end", new InterleavedBufferAttribute(buffer, 3, gap));
    this.geometry.instanceCount = Math.max(count, 0);
    this.mesh.visible = count > 0;
  }

  /** One line through all points. */
  setLine(points: Float32Array): void {
    // The last point begins no line, but the buffer must hold an end for it.
    const padded = new Float32Array(points.length + 3);
    padded.set(points);
    this.set(new InstancedInterleavedBuffer(padded, 3), 3, points.length / 3 - 1);
  }

  /** Single lines, from each even point to the odd one after it. */
  setPairs(points: Float32Array): void {
    this.set(new InstancedInterleavedBuffer(points, 6), 3, points.length / 6);
  }

  setColour(colour: string, opacity: number): void {
    // The programs of lines write colours as they are.
    (this.material.uniforms.colour.value as Color).setStyle(colour, LinearSRGBColorSpace);
    this.material.uniforms.opacity.value = opacity;
  }

  /** Shows the segments around a present clearly and the others faintly; `span` counts segments. */
  setNow(segment: number, span: number): void {
    (this.material.uniforms.now.value as Vector2).set(segment, 1 / span);
  }

  /** Lines fade out between two distances from a place. */
  setFade(focus: Vector3, from: number, to: number): void {
    (this.material.uniforms.focus.value as Vector3).copy(focus);
    (this.material.uniforms.fade.value as Vector2).set(from, to);
  }
}
