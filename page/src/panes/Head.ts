// The head's volume, drawn by NiiVue into a canvas of its own that nobody sees; the panes copy from there. One
// instance serves all panes, so that the volume and the shaders are there once, and a pane whose picture stays the
// same costs nothing when another one moves.

import { NVImage, Niivue, SLICE_TYPE } from "@niivue/niivue";
import type { HeadData, Matrix, Vector } from "../data/PageData";
import { baseOf, grade, gradingOf, isExact, isWithin, type Window } from "./Grey";
import { gridOf, type Grid } from "./Grid";
import { minus, plus } from "../model/Vector";
import type { Cut, SceneView } from "./SceneView";
import type { SliceName, SliceView, Span } from "./SliceView";

const sliceTypes: Readonly<Record<SliceName, SLICE_TYPE>> = {
  axial: SLICE_TYPE.AXIAL,
  coronal: SLICE_TYPE.CORONAL,
  sagittal: SLICE_TYPE.SAGITTAL,
};

// NiiVue fits a slice into a part of its pane; here the pane says what is seen.
class PaneNiivue extends Niivue {
  seen: Span | null = null;

  override screenFieldOfViewExtendedVox(axis?: number): ReturnType<Niivue["screenFieldOfViewExtendedVox"]> {
    const field = super.screenFieldOfViewExtendedVox(axis);
    if (this.seen !== null) {
      [field.mnMM[0], field.mnMM[1]] = this.seen.low;
      [field.mxMM[0], field.mxMM[1]] = this.seen.high;
      field.fovMM[0] = field.mxMM[0] - field.mnMM[0];
      field.fovMM[1] = field.mxMM[1] - field.mnMM[1];
    }
    return field;
  }

  override calculateWidthHeight(_type: number, _scale: number[], width: number, height: number): [number, number] {
    return [width, height];
  }
}

// Azimuth and elevation of the planes that leave the half below (or above) them, for each axis.
const leftBelow = [[90, 0], [180, 0], [0, 90]] as const;
const leftAbove = [[-90, 0], [0, 0], [0, -90]] as const;
const uncut = [2, 0, 0];

// Grey as the values are; in 3D what is black in the window is clear, and what is white the least so.
function greyColours(base: Window, window: Window): { R: number[]; G: number[]; B: number[]; A: number[]; I: number[] } {
  const level = (value: number): number => Math.round((255 * (value - base[0])) / (base[1] - base[0]));
  const black = Math.min(253, Math.max(1, level(window[0])));
  const white = Math.min(254, Math.max(black + 1, level(window[1])));
  const levels = [0, black, white, 255];
  return { R: levels, G: levels, B: levels, A: [0, 0, 80, 80], I: levels };
}

// WebGL keeps matrices column by column.
function rowByRow(columns: ArrayLike<number>): Matrix {
  return Array.from({ length: 16 }, (_, i) => columns[4 * (i % 4) + Math.floor(i / 4)] ?? NaN);
}

// A sentence for whoever looks at pictures without the head.
export function failureText(error: unknown): string {
  return `The head is not shown: ${error instanceof Error ? error.message : String(error)}`;
}

function known<T>(value: T | null | undefined): T {
  if (value === null || value === undefined) {
    throw new Error("The head's volume cannot be read.");
  }
  return value;
}

export class Head {
  readonly grid: Grid;
  readonly middle: Vector; // what the 3D pane turns around
  readonly reach: number; // mm from there to the farthest corner
  readonly isSoftware: boolean; // no GPU: pictures of the head take long
  onLost: () => void = () => {}; // no picture comes any more
  readonly #niivue: PaneNiivue;
  readonly #volume: NVImage;
  readonly #data: HeadData;
  readonly #graded: CanvasRenderingContext2D;
  #levels: Uint8ClampedArray;

  private constructor(niivue: PaneNiivue, volume: NVImage, data: HeadData) {
    this.#niivue = niivue;
    this.#volume = volume;
    this.#data = data;
    this.#graded = known(document.createElement("canvas").getContext("2d", { willReadFrequently: true }));
    this.#levels = gradingOf([0, 255], [0, 255]); // until a window is set
    const [low, high] = [known(volume.extentsMinOrtho), known(volume.extentsMaxOrtho)];
    const vector = (a: ArrayLike<number>): Vector => [known(a[0]), known(a[1]), known(a[2])];
    this.grid = gridOf(rowByRow(known(volume.mm2ortho)), { low: vector(low), high: vector(high) });
    niivue.setPivot3D();
    this.middle = vector(niivue.pivot3D);
    this.reach = niivue.furthestFromPivot;
    this.isSoftware = isSoftware(niivue.gl);
    known(niivue.canvas).addEventListener("webglcontextlost", () => this.onLost());
  }

  // `text` is the base64 of a .nii.gz.
  static async load(text: string, data: HeadData): Promise<Head> {
    const niivue = new PaneNiivue({
      isResizeCanvas: false,
      interactive: false,
      dragAndDropEnabled: false,
      isOrientationTextVisible: false,
      crosshairWidth: 0,
      show3Dcrosshair: false,
      isSliceMM: false, // slices run along the volume's own axes
      loadingText: "",
      logLevel: "error",
      backColor: [0, 0, 0, 1],
      clipPlaneColor: [0, 0, 0, 0],
    });
    if (document.createElement("canvas").getContext("webgl2") === null) {
      throw new Error("this browser has no WebGL 2, or it is switched off.");
    }
    const canvas = document.createElement("canvas");
    document.createElement("div").append(canvas);
    await niivue.attachToCanvas(canvas, false);
    const base = baseOf(data.range, data.window, data.isFull);
    niivue.addColormap("head", greyColours(base, data.window));
    const volume = await NVImage.loadFromBase64({
      base64: text,
      name: "head.nii.gz",
      colormap: "head",
      cal_min: base[0],
      cal_max: base[1],
    });
    niivue.addVolume(volume);
    return new Head(niivue, volume, data);
  }

  // The grey values shown as black and as white.
  setWindow(window: Window): void {
    const volume = this.#volume;
    let base: Window = [known(volume.cal_min), known(volume.cal_max)];
    const { range, isFull } = this.#data;
    if (!isExact(range, isFull) && !isWithin(base, window, range)) {
      base = baseOf(range, window, isFull);
      [volume.cal_min, volume.cal_max] = base;
      this.#niivue.addColormap("head", greyColours(base, window));
      this.#niivue.updateGLVolume();
    }
    this.#levels = gradingOf(base, window);
  }

  // The slice through the crosshair, in a canvas of `width` x `height` pixels that the next picture overwrites.
  slice(view: SliceView, crosshair: Vector, width: number, height: number): HTMLCanvasElement {
    const niivue = this.#niivue;
    niivue.seen = view.span;
    niivue.opts.isRadiologicalConvention = view.isMirrored;
    const fraction = niivue.mm2frac([crosshair[0], crosshair[1], crosshair[2]], 0, true);
    niivue.scene.crosshairPos = fraction;
    const canvas = this.#draw(sliceTypes[view.name], width, height);
    this.#checkSides(view);
    return canvas;
  }

  // The head in space; `size` as above.
  scene(view: SceneView, width: number, height: number): HTMLCanvasElement {
    const niivue = this.#niivue;
    niivue.scene.renderAzimuth = view.azimuth;
    niivue.scene.renderElevation = view.elevation;
    niivue.scene.volScaleMultiplier = view.zoom;
    const isCorner = view.cuts.length > 1; // NiiVue then takes away what is on the one side of all planes
    const cuts = view.cuts.map((cut) => this.#clipPlane(cut, isCorner));
    niivue.scene.clipPlaneDepthAziElevs = cuts.length === 0 ? [uncut] : cuts;
    niivue.opts.isClipPlanesCutaway = isCorner;
    return this.#draw(SLICE_TYPE.RENDER, width, height);
  }

  // NiiVue's planes: how far from the middle of the volume, in shares of it, and the angles of the side
  // that is left, or, for a corner, taken away.
  #clipPlane(cut: Cut, isCorner: boolean): number[] {
    const share = (place: Vector): Vector => {
      const [x, y, z] = this.#niivue.mm2frac([place[0], place[1], place[2]], 0, true);
      return [known(x), known(y), known(z)];
    };
    const at = share(cut.place);
    const across = minus(share(plus(cut.place, cut.normal)), at);
    const axis = across.reduce((best, value, i) => (Math.abs(value) > Math.abs(known(across[best])) ? i : best), 0);
    const isBelow = known(across[axis]) > 0 !== isCorner;
    const depth = (known(at[axis]) - 0.5) * (isBelow ? 1 : -1);
    return [depth, ...known((isBelow ? leftBelow : leftAbove)[axis])];
  }

  #draw(type: SLICE_TYPE, width: number, height: number): HTMLCanvasElement {
    const canvas = known(this.#niivue.canvas);
    for (const each of [canvas, this.#graded.canvas]) {
      if (each.width !== width || each.height !== height) {
        [each.width, each.height] = [width, height];
      }
    }
    this.#niivue.customLayout = [{ sliceType: type, position: [0, 0, 1, 1] }];
    this.#niivue.drawScene();
    this.#graded.drawImage(canvas, 0, 0);
    grade(this.#graded, this.#levels);
    return this.#graded.canvas;
  }

  // The picture says itself where its left edge is; a picture on the wrong side is no picture.
  #checkSides(view: SliceView): void {
    const drawn = known(this.#niivue.screenSlices[0]);
    const { low, high } = view.span;
    const left = view.isMirrored ? high[0] : low[0];
    const across = (view.isMirrored ? -1 : 1) * (high[0] - low[0]);
    const isSame =
      Math.abs(known(drawn.leftTopMM[0]) - left) < 0.01 &&
      Math.abs(known(drawn.fovMM[0]) - across) < 0.01 &&
      Math.abs(known(drawn.leftTopMM[1]) - low[1]) < 0.01;
    if (!isSame) {
      throw new Error(`The ${view.name} slice is not drawn where it should be.`);
    }
  }
}

function isSoftware(gl: WebGL2RenderingContext): boolean {
  const names = gl.getExtension("WEBGL_debug_renderer_info");
  const name = String(gl.getParameter(names === null ? gl.RENDERER : names.UNMASKED_RENDERER_WEBGL));
  return /swiftshader|llvmpipe|softpipe|software|basic render/i.test(name);
}
