// The camera: how it is turned, where it is at first, and how it follows a figure.
import { MOUSE, PerspectiveCamera, TOUCH, Vector3 } from "three";
import { OrbitControls } from "three/examples/jsm/controls/OrbitControls.js";
import { cameraAxes, frame, type Aim, type Lens } from "./framing";
import type { View } from "./stage";

const FIELD_OF_VIEW = 30;
/** How much of the picture's width and height the first framing uses. */
const FILL = 0.86;
/** The part of the picture's height by which it is lower, because names and buttons lie over its top. */
const LOWERED = 0.04;
/** The first framing is at most so many times as far away as the figure alone would need. */
const MOST_OF_NEAR = 3.6;

/** The first framing is at least so far away. */
const NEAREST = 4;

export interface Scenery {
  /** Places of joints that the picture should show: of one frame, and of the whole take. */
  readonly figure: Float32Array;
  readonly everything: Float32Array;
  /** Where the main figure is at first. */
  readonly centre: Vector3;
  /** The direction in which the main figure looks at first. */
  readonly facing: number;
}

export class Camera {
  readonly camera = new PerspectiveCamera(FIELD_OF_VIEW, 1, 0.05, 500);
  private readonly controls: OrbitControls;
  private readonly scenery: Scenery;
  private readonly followed = new Vector3();
  private isFollowing = false;
  private current: View | null = "home";

  constructor(canvas: HTMLCanvasElement, scenery: Scenery, changed: () => void) {
    this.scenery = scenery;
    this.controls = new OrbitControls(this.camera, canvas);
    this.controls.mouseButtons = { LEFT: MOUSE.ROTATE, MIDDLE: MOUSE.PAN, RIGHT: MOUSE.PAN };
    this.controls.touches = { ONE: TOUCH.ROTATE, TWO: TOUCH.DOLLY_PAN };
    this.controls.minDistance = 0.05;
    this.controls.maxDistance = 400;
    this.controls.zoomSpeed = 0.8;
    this.controls.addEventListener("change", changed);
    this.controls.addEventListener("start", () => (this.current = null));
  }

  get target(): Vector3 {
    return this.controls.target;
  }
  get distance(): number {
    return this.camera.position.distanceTo(this.controls.target);
  }

  /** Tells the camera the shape of the picture. A view that nobody has changed is framed again. */
  resize(width: number, height: number): void {
    this.camera.aspect = width / Math.max(height, 1);
    this.camera.updateProjectionMatrix();
    if (this.current) this.view(this.current);
  }

  private lens(): Lens {
    const tanY = FILL * Math.tan(((FIELD_OF_VIEW / 2) * Math.PI) / 180);
    return { tanX: tanY * this.camera.aspect, tanY };
  }

  private homeAim(): Aim {
    const lens = this.lens();
    const { facing, everything } = this.scenery;
    const aims = [0.6, -0.6, 0.35, -0.35].map((turn) => ({ azimuth: facing + turn, elevation: 0.24 }));
    const distances = aims.map((aim) => frame(everything, aim, lens).distance);
    // The usual three quarters, unless a path fits the picture much better from another side.
    return aims[distances.reduce((best, distance, index) => (distance < 0.85 * distances[best] ? index : best), 0)];
  }

  private aim(view: View): Aim {
    const { facing } = this.scenery;
    if (view === "front") return { azimuth: facing, elevation: 0.06 };
    if (view === "side") return { azimuth: facing - Math.PI / 2, elevation: 0.06 };
    if (view === "top") return { azimuth: facing, elevation: Math.PI / 2 - 1e-3 };
    return this.homeAim();
  }

  view(view: View): void {
    const aim = this.aim(view);
    const [, up, back] = cameraAxes(aim).map((axis) => new Vector3(...axis));
    const subject = this.isFollowing ? this.followed : this.scenery.centre;
    const place = this.isFollowing ? this.placeToFollow(aim, back) : this.placeToSee(view, aim, back);
    // A single joint is not looked at through a microscope.
    place.addScaledVector(back, Math.max(NEAREST - place.distanceTo(subject), 0));
    place.addScaledVector(up, (2 * LOWERED * this.lens().tanY * place.distanceTo(subject)) / FILL);
    const depth = place.clone().sub(subject).dot(back);
    this.camera.position.copy(place);
    this.controls.target.copy(place).addScaledVector(back, -Math.max(depth, 0.1));
    this.controls.update();
    this.current = view;
  }

  /** The place from which the whole take is seen, or where it begins if it goes too far. */
  private placeToSee(view: View, aim: Aim, back: Vector3): Vector3 {
    const { figure, everything } = this.scenery;
    const lens = this.lens();
    const seen = frame(everything, aim, lens);
    // A figure that walks far must not become a dot.
    const times = view === "home" ? MOST_OF_NEAR : 1.6 * MOST_OF_NEAR;
    const most = times * frame(figure, this.homeAim(), lens).distance;
    if (seen.distance <= most) return new Vector3(...seen.place);
    const near = frame(figure, aim, lens);
    return new Vector3(...near.place).addScaledVector(back, most - near.distance);
  }

  /** The place from which the figure that is followed is seen. */
  private placeToFollow(aim: Aim, back: Vector3): Vector3 {
    const near = frame(this.scenery.figure, aim, this.lens());
    const place = new Vector3(...near.place).addScaledVector(back, 0.45 * near.distance);
    place.x += this.followed.x - this.scenery.centre.x;
    place.z += this.followed.z - this.scenery.centre.z;
    return place;
  }

  /** Moves along with a figure, over the ground only. Called before each picture. */
  follow(place: Vector3, follows: boolean): void {
    if (follows && !this.isFollowing) {
      this.isFollowing = true;
      this.followed.copy(this.controls.target);
      if (this.current) {
        this.followed.copy(place);
        this.view(this.current);
      }
    } else if (!follows && this.isFollowing) {
      this.isFollowing = false;
    }
    if (!follows) return;
    const dx = place.x - this.followed.x;
    const dz = place.z - this.followed.z;
    if (dx === 0 && dz === 0) return;
    this.followed.set(place.x, this.followed.y, place.z);
    this.controls.target.x += dx;
    this.controls.target.z += dz;
    this.camera.position.x += dx;
    this.camera.position.z += dz;
  }

  /** Turns the camera around what it looks at, in radians. */
  orbit(around: number, above: number): void {
    this.current = null;
    const arm = this.camera.position.clone().sub(this.controls.target);
    const distance = arm.length();
    const azimuth = Math.atan2(arm.x, arm.z) + around;
    const limit = Math.PI / 2 - 1e-3;
    const elevation = Math.min(Math.max(Math.asin(arm.y / distance) + above, -limit), limit);
    this.camera.position.copy(this.controls.target).addScaledVector(new Vector3(...cameraAxes({ azimuth, elevation })[2]), distance);
    this.controls.update();
  }

  /** Goes nearer for a factor above 1. */
  zoom(factor: number): void {
    this.current = null;
    this.camera.position.sub(this.controls.target).divideScalar(factor).add(this.controls.target);
    this.controls.update();
  }

  /** Sets what is too near or too far to be drawn. */
  updateClipping(): void {
    const distance = this.distance;
    this.camera.near = Math.max(0.02 * distance, 0.005);
    this.camera.far = 8 * distance + 60;
    this.camera.updateProjectionMatrix();
    this.camera.updateMatrixWorld();
  }
}
