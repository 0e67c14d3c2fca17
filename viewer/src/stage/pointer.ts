// Clicks and taps on figures, and the pointer's shape over them.
import type { PerspectiveCamera } from "three";
import type { Pick, Player } from "../player";
import type { Figure } from "./figure";
import { SCREEN, pick, project, type Target } from "./picking";
import { FIGURE_SIZE } from "./space";

/** A pointer that moves farther than this, in pixels, turns the camera. */
const DRAG = 5;
const REACH = { mouse: 9, touch: 22 } as const;
const THICKNESS = { body: 0.045, bones: 0.012, joints: 0.01 } as const;

export class Pointer {
  private readonly canvas: HTMLCanvasElement;
  private readonly figures: readonly Figure[];
  private readonly camera: PerspectiveCamera;
  private readonly player: Player;
  private readonly screens: Float32Array[];
  private down: { id: number; x: number; y: number } | null = null;

  constructor(canvas: HTMLCanvasElement, figures: readonly Figure[], camera: PerspectiveCamera, player: Player) {
    this.canvas = canvas;
    this.figures = figures;
    this.camera = camera;
    this.player = player;
    this.screens = figures.map((figure) => new Float32Array(SCREEN * figure.rig.joints.length));
    canvas.style.cursor = "grab";
    canvas.addEventListener("pointerdown", (event) => {
      // A second finger zooms.
      this.down = event.isPrimary && event.button === 0 ? { id: event.pointerId, x: event.clientX, y: event.clientY } : null;
    });
    canvas.addEventListener("pointermove", (event) => this.move(event));
    canvas.addEventListener("pointercancel", () => (this.down = null));
    canvas.addEventListener("pointerup", (event) => this.up(event));
  }

  private hasMoved(event: PointerEvent): boolean {
    return !this.down || Math.hypot(event.clientX - this.down.x, event.clientY - this.down.y) > DRAG;
  }

  private move(event: PointerEvent): void {
    if (event.buttons !== 0) {
      if (this.hasMoved(event)) this.canvas.style.cursor = "grabbing";
      return;
    }
    if (event.pointerType === "mouse") this.canvas.style.cursor = this.find(event) ? "pointer" : "grab";
  }

  private up(event: PointerEvent): void {
    const isClick = this.down?.id === event.pointerId && !this.hasMoved(event);
    this.down = null;
    if (isClick) this.player.pick = this.find(event);
    if (event.pointerType === "mouse") this.canvas.style.cursor = this.find(event) ? "pointer" : "grab";
  }

  private find(event: PointerEvent): Pick | null {
    const box = this.canvas.getBoundingClientRect();
    const pixels = box.height / (2 * Math.tan((this.camera.fov * Math.PI) / 360));
    const targets: Target[] = this.figures.map((figure, index) => {
      project(figure, this.camera, box.width, box.height, this.screens[index]);
      const thickness = THICKNESS[this.player.look] * FIGURE_SIZE * pixels;
      return { parents: figure.rig.parents, isEnd: figure.rig.isEnd, screen: this.screens[index], thickness };
    });
    const reach = event.pointerType === "touch" ? REACH.touch : REACH.mouse;
    const hit = pick(targets, event.clientX - box.left, event.clientY - box.top, reach);
    if (!hit) return null;
    const { rig } = this.figures[hit.target];
    return { take: rig.takeIndex, joint: rig.joints[hit.joint] };
  }
}
