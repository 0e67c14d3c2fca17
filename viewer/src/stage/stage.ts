// The picture: figures on the ground, seen by a camera.
import { Group, MeshLambertMaterial, PCFShadowMap, Scene, SRGBColorSpace, Vector3, WebGLRenderer } from "three";
import { Pose } from "../data/pose";
import type { Player } from "../player";
import { Camera } from "./camera";
import { Figure } from "./figure";
import { Ground } from "./ground";
import { Labels } from "./labels";
import { Light } from "./light";
import { Lines, pixelRatio, resolution } from "./lines";
import { Marker } from "./marker";
import { NO_WEBGL, showMessage } from "./message";
import { Pointer } from "./pointer";
import { Quality } from "./quality";
import { placeOf, rigOf } from "./rig";
import { describe, gatherScenery, regionOf } from "./scenery";
import { watchSharpness } from "./sharpness";
import { moveWithTwoJoints } from "./skinning";
import { arrange, sampleTake, type World } from "./space";
import { Themes, toneOfFigure } from "./theme";
import { onGround, trailOf, trailStep } from "./trail";

export const VIEWS = ["home", "front", "side", "top"] as const;
export type View = (typeof VIEWS)[number];

export interface Stage {
  /** Draws the frame that the player shows. */
  draw(): void;
  /** Moves the camera. "home" is where it was at first. */
  view(view: View): void;
  /** Turns the camera around what it looks at: to the right and upwards, in radians. */
  orbit(around: number, above: number): void;
  /** Goes nearer for a factor above 1, farther away for one below. */
  zoom(factor: number): void;
}

const MOST_SAMPLES = 32;
const FINEST_PIXELS = 2;
/** The trail of a joint is clear this long before and after the frame that is shown. */
const TRAIL_SECONDS = 1.2;

/** Milliseconds in which the browser shows the first picture before it prepares the shadows of the second. */
const FIRST_ALONE = 150;

class Picture implements Stage {
  private readonly container: HTMLElement;
  private readonly player: Player;
  private readonly request: () => void;
  private readonly renderer: WebGLRenderer;
  private readonly scene = new Scene();
  private readonly group = new Group();
  private readonly poses: Pose[];
  private readonly figures: Figure[] = [];
  private readonly world: World;
  private readonly camera: Camera;
  private readonly ground: Ground;
  private readonly labels: Labels | null;
  private readonly light: Light;
  private readonly marker: Marker;
  private readonly paths: Lines[] = [];
  private readonly trail = new Lines(1, false);
  private readonly material = new MeshLambertMaterial({ vertexColors: true });
  private readonly quality = new Quality();
  private readonly themes: Themes;
  private pictures = 0;
  private firstDrawn = 0;
  private needsTheme = true;
  private needsSize = true;
  private needsTrail = true;
  private isLost = false;
  /** When the hand moved that turns the camera. */
  private moved: number | null = null;

  constructor(container: HTMLElement, player: Player, request: () => void, renderer: WebGLRenderer) {
    this.container = container;
    this.player = player;
    this.request = request;
    this.renderer = renderer;
    this.renderer.outputColorSpace = SRGBColorSpace;
    this.renderer.shadowMap.type = PCFShadowMap;
    this.renderer.setClearColor(0, 0);
    // To look for errors of the programs would make the first picture wait for them.
    this.renderer.debug.checkShaderErrors = false;
    this.poses = player.takes.map((take) => new Pose(take));
    const samples = player.takes.map((take) => sampleTake(take, MOST_SAMPLES));
    this.world = arrange(player.takes, samples);
    player.takes.forEach((take, index) => {
      for (let model = 0; model < Math.max(take.models.length, 1); ++model) {
        const rig = rigOf(take, index, model, this.world.spaces[index], samples[index]);
        if (rig.joints.length > 0) this.addFigure(new Figure(rig, this.world.spaces[index], player.look, this.material));
      }
    });
    const scenery = gatherScenery(this.figures);
    const { origin, grid } = this.world;
    const { cell, metres } = grid;
    this.camera = new Camera(renderer.domElement, scenery, () => {
      if (this.moved !== null) this.quality.want(this.moved);
      request();
    });
    this.ground = new Ground(this.group, cell, origin);
    this.labels = metres > 0 ? new Labels(this.group, regionOf(scenery.everything, cell), cell, metres, origin) : null;
    this.light = new Light(this.group, scenery.facing);
    this.marker = new Marker(this.group);
    this.group.add(this.trail.mesh);
    this.scene.add(this.group);
    this.themes = new Themes(() => {
      this.needsTheme = true;
      request();
    });
    this.listen();
  }

  private addFigure(figure: Figure): void {
    this.figures.push(figure);
    figure.mesh.castShadow = true;
    figure.mesh.receiveShadow = true;
    const path = new Lines(0.75);
    const { rig } = figure;
    path.setLine(onGround(trailOf(rig.take, rig.joints[figure.root], this.world.spaces[rig.takeIndex], 2000)));
    this.paths.push(path);
    this.group.add(figure.mesh, path.mesh);
  }

  private listen(): void {
    const canvas = this.renderer.domElement;
    canvas.addEventListener("webglcontextlost", () => {
      this.isLost = true;
      canvas.style.visibility = "hidden";
      showMessage(this.container, "The browser has taken the 3D picture away for a moment. It comes back by itself.");
    });
    canvas.addEventListener("webglcontextrestored", () => {
      this.isLost = false;
      canvas.style.visibility = "";
      showMessage(this.container, null);
      this.quality.excuse();
      this.request();
    });
    this.watchDrags(canvas);
    document.addEventListener("visibilitychange", () => this.quality.forget());
    const resize = (): void => {
      this.needsSize = true;
      this.request();
    };
    new ResizeObserver(resize).observe(this.container);
    watchSharpness(resize);
    new Pointer(canvas, this.figures, this.camera.camera, this.player);
    this.player.onChange((change) => {
      if (change === "pick") this.needsTrail = true;
      if (change === "settings") this.needsTheme = true;
    });
  }

  /** Notes when the hand moves, so that the pictures of a drag are measured, but no rest of the hand. */
  private watchDrags(canvas: HTMLCanvasElement): void {
    const stop = (): void => void (this.moved = null);
    canvas.addEventListener("pointermove", (event) => {
      // If pictures take long, the browser has gathered several moves.
      const first = event.getCoalescedEvents?.()[0] ?? event;
      this.moved = event.buttons === 0 ? null : first.timeStamp;
    });
    canvas.addEventListener("pointerup", stop);
    canvas.addEventListener("pointercancel", stop);
  }

  view(view: View): void {
    this.camera.view(view);
    this.request();
  }
  orbit(around: number, above: number): void {
    this.camera.orbit(around, above);
    this.request();
  }
  zoom(factor: number): void {
    this.camera.zoom(factor);
    this.request();
  }

  draw(): void {
    if (this.isLost) return;
    const now = performance.now();
    if (this.pictures === 1 && now < this.firstDrawn + FIRST_ALONE) return;
    if (this.quality.note(now)) this.simplify();
    if (this.needsSize) this.resize();
    if (this.needsTheme) this.applySettings();
    this.showFrame();
    this.showTrail();
    this.marker.show(this.pickedPlace(), pixelRatio.value);
    this.camera.updateClipping();
    const { target, distance } = this.camera;
    this.ground.update(target, distance);
    this.labels?.update(this.camera.camera.position, target, distance);
    if (this.pictures === 1) this.showShadows(true);
    this.renderer.render(this.scene, this.camera.camera);
    if (this.player.playing) this.quality.want(now);
    if (++this.pictures > 1) return;
    // The second picture follows soon, with shadows.
    this.firstDrawn = now;
    setTimeout(() => this.request(), FIRST_ALONE);
  }

  private resize(): void {
    this.needsSize = false;
    const width = Math.max(this.container.clientWidth, 1);
    const height = Math.max(this.container.clientHeight, 1);
    const finest = this.quality.simplification < 2 ? FINEST_PIXELS : 1;
    this.renderer.setPixelRatio(Math.min(devicePixelRatio, finest));
    this.renderer.setSize(width, height);
    this.renderer.getDrawingBufferSize(resolution.value);
    pixelRatio.value = this.renderer.getPixelRatio();
    this.camera.resize(width, height);
  }

  private applySettings(): void {
    this.needsTheme = false;
    const { theme } = this.themes;
    this.container.style.background = theme.background;
    this.light.setTheme(theme);
    this.ground.setTheme(theme);
    this.labels?.setTheme(theme);
    this.marker.setTheme(theme.accent, theme.isDark);
    this.trail.setColour(theme.accent, 0.9);
    for (const path of this.paths) path.setColour(theme.path, 0.26);
    this.figures.forEach((figure, index) => {
      figure.setLook(this.player.look);
      figure.setTone(theme.tones[toneOfFigure(index, figure.rig.takeIndex, this.player)]);
    });
    this.renderer.domElement.setAttribute("aria-label", describe(this.player));
  }

  private readonly middle = new Vector3();
  private readonly place = new Vector3();

  private showFrame(): void {
    this.middle.set(0, 0, 0);
    for (const figure of this.figures) {
      const { takeIndex, take } = figure.rig;
      const row = this.player.row(take);
      figure.show(row, this.poses[takeIndex].at(row));
      this.middle.add(placeOf(figure.pose, figure.root, this.place));
    }
    this.middle.divideScalar(Math.max(this.figures.length, 1));
    let reach = 0;
    for (const figure of this.figures)
      reach = Math.max(reach, placeOf(figure.pose, figure.root, this.place).distanceTo(this.middle));
    this.light.update(this.middle, reach + 1.5);
    const main = this.figures.find((figure) => figure.rig.takeIndex === this.player.mainTake);
    if (main) this.camera.follow(placeOf(main.pose, main.root, this.place), this.player.follow);
  }

  private showTrail(): void {
    const { pick, takes } = this.player;
    if (this.needsTrail) {
      this.needsTrail = false;
      this.trail.setLine(
        pick ? trailOf(takes[pick.take], pick.joint, this.world.spaces[pick.take]) : new Float32Array(0),
      );
    }
    if (!pick) return;
    const take = takes[pick.take];
    const step = trailStep(take);
    this.trail.setNow(this.player.row(take) / step, Math.max((TRAIL_SECONDS * take.fps) / step, 1));
  }

  private pickedPlace(): Vector3 | null {
    const { pick } = this.player;
    if (!pick) return null;
    for (const figure of this.figures) {
      const joint = figure.rig.takeIndex === pick.take ? figure.rig.joints.indexOf(pick.joint) : -1;
      if (joint >= 0) return placeOf(figure.pose, joint, this.place);
    }
    return null;
  }

  private showShadows(shown: boolean): void {
    this.renderer.shadowMap.enabled = shown;
    this.light.shadows = shown;
    this.material.needsUpdate = true;
    this.quality.excuse();
  }

  private simplify(): void {
    if (this.quality.simplification === 1) this.showShadows(false);
    else this.needsSize = true;
  }
}

function createRenderer(): WebGLRenderer | null {
  try {
    return new WebGLRenderer({ antialias: true, alpha: true, powerPreference: "high-performance" });
  } catch {
    return null;
  }
}

/** Fills `container` with the picture. `request` asks for a call of draw(). */
export function createStage(container: HTMLElement, player: Player, request: () => void): Stage {
  moveWithTwoJoints();
  const renderer = createRenderer();
  if (!renderer) {
    showMessage(container, NO_WEBGL);
    return { draw() {}, view() {}, orbit() {}, zoom() {} };
  }
  const canvas = renderer.domElement;
  canvas.setAttribute("role", "img");
  canvas.style.display = "block";
  container.append(canvas);
  return new Picture(container, player, request, renderer);
}
