// The mark on the joint that is picked: a dot in a ring, as large from near as from afar.
import { BufferAttribute, BufferGeometry, Color, LinearSRGBColorSpace, Points, ShaderMaterial, type Group, type Vector3 } from "three";

const VERTEX = `
uniform float size;
void main() {
  gl_Position = projectionMatrix * modelViewMatrix * vec4(position, 1.0);
  gl_PointSize = size;
}`;

const FRAGMENT = `
uniform vec3 colour;
uniform vec3 halo;
uniform float size;
void main() {
  float away = length(gl_PointCoord - 0.5) * size;
  float unit = size / 26.0;
  float dot_ = 1.0 - smoothstep(4.0 * unit - 0.7, 4.0 * unit + 0.7, away);
  float ring = 1.0 - smoothstep(1.0 * unit - 0.7, 1.0 * unit + 0.7, abs(away - 8.5 * unit));
  float glow = 1.0 - smoothstep(2.2 * unit, 3.0 * unit, abs(away - 8.5 * unit));
  float back = 0.75 * max(glow, 1.0 - smoothstep(5.0 * unit, 6.0 * unit, away));
  float front = max(dot_, ring);
  gl_FragColor = vec4(mix(halo, colour, front), max(front, back));
}`;

export class Marker {
  private readonly points: Points;
  private readonly places = new BufferAttribute(new Float32Array(3), 3);
  private readonly material: ShaderMaterial;

  constructor(group: Group) {
    const geometry = new BufferGeometry();
    geometry.setAttribute("position", this.places);
    this.material = new ShaderMaterial({
      vertexShader: VERTEX,
      fragmentShader: FRAGMENT,
      transparent: true,
      depthTest: false,
      depthWrite: false,
      uniforms: { size: { value: 26 }, colour: { value: new Color() }, halo: { value: new Color() } },
    });
    this.points = new Points(geometry, this.material);
    this.points.frustumCulled = false;
    this.points.renderOrder = 10;
    this.points.visible = false;
    group.add(this.points);
  }

  setTheme(colour: string, isDark: boolean): void {
    (this.material.uniforms.colour.value as Color).setStyle(colour, LinearSRGBColorSpace);
    (this.material.uniforms.halo.value as Color).setStyle(isDark ? "#14171b" : "#ffffff", LinearSRGBColorSpace);
  }

  show(place: Vector3 | null, pixelRatio: number): void {
    this.points.visible = place !== null;
    if (!place) return;
    this.places.setXYZ(0, place.x, place.y, place.z);
    this.places.needsUpdate = true;
    this.material.uniforms.size.value = 26 * pixelRatio;
  }
}
