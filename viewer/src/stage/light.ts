// Light and shadow. The shadow begins with the second picture, because it takes the browser longer.
import {
  Color,
  DirectionalLight,
  HemisphereLight,
  Mesh,
  PlaneGeometry,
  ShadowMaterial,
  Vector3,
  type Group,
} from "three";
import type { Theme } from "./theme";

/** Where the sun is, as seen from the middle of the figures; it turns with the side of the first view. */
const SUN = new Vector3(-0.45, 1, 0.42).normalize();
const SUN_DISTANCE = 12;

export class Light {
  private readonly hemisphere = new HemisphereLight();
  private readonly sun = new DirectionalLight();
  private readonly fill = new DirectionalLight();
  private readonly floor: Mesh<PlaneGeometry, ShadowMaterial>;
  private readonly direction: Vector3;
  private reach = 0;

  /** `facing` is the direction in which the main figure looks at first. */
  constructor(group: Group, facing: number) {
    const up = new Vector3(0, 1, 0);
    this.direction = SUN.clone().applyAxisAngle(up, facing);
    this.fill.position.copy(new Vector3(0.8, 0.25, -0.9).applyAxisAngle(up, facing));
    this.floor = new Mesh(new PlaneGeometry(1, 1), new ShadowMaterial());
    this.floor.rotation.x = -Math.PI / 2;
    this.floor.receiveShadow = true;
    this.floor.visible = false;
    this.floor.renderOrder = -3;
    this.floor.material.depthWrite = false;
    this.sun.shadow.mapSize.set(1024, 1024);
    this.sun.shadow.radius = 7;
    this.sun.shadow.bias = -0.0006;
    this.sun.shadow.normalBias = 0.012;
    group.add(this.hemisphere, this.sun, this.sun.target, this.fill, this.floor);
  }

  setTheme(theme: Theme): void {
    this.hemisphere.color.set(theme.sky);
    this.hemisphere.groundColor.set(theme.ground);
    this.hemisphere.intensity = theme.skyStrength;
    this.sun.color.set(theme.sun);
    this.sun.intensity = theme.sunStrength;
    this.fill.color.set(theme.fill);
    this.fill.intensity = theme.fillStrength;
    this.floor.material.color = new Color(theme.shadow);
    this.floor.material.opacity = theme.shadowOpacity;
  }

  set shadows(shown: boolean) {
    this.sun.castShadow = shown;
    this.floor.visible = shown;
  }

  /** Lights the figures around a place, which are within `reach` of it. */
  update(centre: Vector3, reach: number): void {
    this.sun.target.position.copy(centre);
    this.sun.position.copy(centre).addScaledVector(this.direction, SUN_DISTANCE + reach);
    // The floor lies where the shadow falls.
    const fall = centre.y / this.direction.y;
    this.floor.position.set(centre.x - fall * this.direction.x, 0, centre.z - fall * this.direction.z);
    // Shadows are only as sharp as the area is small, so it changes by steps.
    const wanted = Math.pow(1.5, Math.ceil(Math.log(Math.max(reach, 1)) / Math.log(1.5)));
    if (wanted === this.reach) return;
    this.reach = wanted;
    const { camera } = this.sun.shadow;
    camera.left = camera.bottom = -wanted;
    camera.right = camera.top = wanted;
    camera.near = 0.1;
    camera.far = 2 * (SUN_DISTANCE + wanted);
    camera.updateProjectionMatrix();
    this.floor.scale.setScalar(2.2 * wanted);
  }
}
