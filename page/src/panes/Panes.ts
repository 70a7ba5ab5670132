// The four panes: when which of them is drawn, and how finely.

import type { Vector } from "../data/PageData";
import { colourFunction } from "../model/Colours";
import type { State, Store } from "../model/Store";
import { dot } from "../model/Vector";
import type { PaneElements } from "../shell/Layout";
import { cutsOf, faceCut } from "./Cuts";
import { gridWithoutHead, inGrid, type Grid } from "./Grid";
import { failureText, type Head } from "./Head";
import type { Mark } from "./Marks";
import type { PaneName } from "./PaneName";
import { fitToPixels, headSize } from "./PanePixels";
import { drawSceneMarks, marksInScene } from "./ScenePane";
import { SceneView } from "./SceneView";
import { drawCrosshair, drawSliceMarks, marksOnSlice } from "./SlicePane";
import { sliceNames, SliceView, type SliceName } from "./SliceView";

// Pixels of the head's picture that a machine without a GPU draws in time.
const softwarePixels = { slice: 600_000, sceneTurning: 30_000, sceneStill: 110_000 };
const stillAfter = 260; // ms without a change, then 3D is drawn finely

const movesHead: readonly (keyof State)[] = ["crosshair", "window", "isRadiological", "cut", "headFailure"];
const movesMarks: readonly (keyof State)[] = [
  ...movesHead,
  "passing",
  "selection",
  "current",
  "colourBy",
  "toleranceMm",
  "areArrowsShown",
  "areLabelsShown",
];

export class Panes {
  readonly store: Store;
  readonly head: Head | null;
  readonly elements: Readonly<Record<PaneName, PaneElements>>;
  readonly grid: Grid;
  readonly slices: Readonly<Record<SliceName, SliceView>>;
  readonly scene: SceneView;
  readonly marks: Record<PaneName, readonly Mark[]> = { axial: [], coronal: [], sagittal: [], scene: [] };
  zoom = 1; // of the slices, beside the whole head
  #heads = new Set<PaneName>(); // pictures of the head to be drawn anew
  #overlays = new Set<PaneName>();
  #drawn = new Map<string, string>(); // what the pictures show
  #version = 0; // of all that marks are drawn by but the crosshair
  #frame = 0;
  #still = 0;
  #colourOf: (row: number) => string;
  #crosshair: Vector; // where it was last

  constructor(store: Store, elements: Readonly<Record<PaneName, PaneElements>>, head: Head | null) {
    this.store = store;
    this.head = head;
    this.elements = elements;
    this.grid = head?.grid ?? gridWithoutHead(store.data);
    this.slices = {
      axial: new SliceView("axial", this.grid),
      coronal: new SliceView("coronal", this.grid),
      sagittal: new SliceView("sagittal", this.grid),
    };
    this.scene = head === null ? this.#sceneWithoutHead() : new SceneView(head.middle, head.reach);
    faceCut(this.scene, store.state);
    this.#crosshair = store.state.crosshair;
    this.#colourOf = colourFunction(store.data, store.state.colourBy);
    this.#takeSides();
    if (head !== null) {
      head.onLost = () => this.failHead(new Error("the browser lost its graphics. Open the page anew."));
    }
    store.onChange((changed) => {
      if (changed.has("colourBy")) {
        this.#colourOf = colourFunction(store.data, store.state.colourBy);
      }
      if (changed.has("isRadiological")) {
        this.#takeSides();
      }
      if (changed.has("large")) {
        this.#arrange();
      }
      if (changed.has("cut")) {
        faceCut(this.scene, store.state);
      }
      if (changed.has("crosshair")) {
        this.#follow(this.#crosshair, store.state.crosshair);
        this.#crosshair = store.state.crosshair;
      }
      if (movesMarks.some((name) => changed.has(name))) {
        this.#version += movesMarks.some((name) => name !== "crosshair" && changed.has(name)) ? 1 : 0;
        this.invalidate(movesHead.some((name) => changed.has(name)));
      }
    });
    new ResizeObserver(() => this.invalidate(true)).observe(elements.axial.frame.parentElement ?? document.body);
    this.#arrange();
  }

  // At once, not with the next picture: a key that is pressed before it goes by the new sides.
  #takeSides(): void {
    for (const name of sliceNames) {
      this.slices[name].isMirrored = this.store.state.isRadiological && name !== "sagittal";
    }
  }

  // A zoomed pane goes to where the crosshair went, when it left the pane in that plane.
  #follow(from: Vector, to: Vector): void {
    const [before, now] = [inGrid(this.grid, from), inGrid(this.grid, to)];
    for (const name of sliceNames) {
      const view = this.slices[name];
      const { low, high } = view.span;
      const isAway = [view.column, view.row].some((axis, i) => {
        const value = now[axis];
        return Math.abs(value - before[axis]) > 1e-6 && (value < (low[i] ?? value) || value > (high[i] ?? value));
      });
      if (isAway && this.zoom > 1) {
        view.middle = [now[view.column], now[view.row]];
      } else if (isAway) {
        view.center();
      }
    }
  }

  // Without a head, or when only what lies over it changes, `isHeadMoved` is false.
  invalidate(isHeadMoved: boolean): void {
    for (const name of [...sliceNames, "scene"] as const) {
      this.#overlays.add(name);
      if (isHeadMoved) {
        this.#heads.add(name);
      }
    }
    this.#schedule();
  }

  invalidateScene(): void {
    this.#overlays.add("scene");
    this.#heads.add("scene");
    this.#schedule();
  }

  get shownHead(): Head | null {
    return this.store.state.headFailure === "" ? this.head : null;
  }

  // No picture of the head is left to be taken for one of what is shown; the panes say why.
  failHead(error: unknown): void {
    this.#drawn.clear();
    for (const { head } of Object.values(this.elements)) {
      this.#contextOf(head)?.clearRect(0, 0, head.width, head.height);
    }
    this.store.set({ headFailure: failureText(error) });
  }

  // Null: there is no picture of the head, and the panes say why.
  headPicture(draw: (head: Head) => HTMLCanvasElement): HTMLCanvasElement | null {
    const head = this.shownHead;
    if (head === null) {
      return null;
    }
    try {
      if (this.store.state.window !== null) {
        head.setWindow(this.store.state.window);
      }
      return draw(head);
    } catch (error) {
      this.failHead(error);
      return null;
    }
  }

  // Draws at once all that waits, 3D finely; for pictures that leave the page.
  drawNow(): void {
    cancelAnimationFrame(this.#frame);
    this.#frame = 0;
    this.#drawAll(true);
  }

  textHeight(): number {
    return Number.parseFloat(getComputedStyle(document.documentElement).fontSize);
  }

  pixelRatio(): number {
    return window.devicePixelRatio || 1;
  }

  #sceneWithoutHead(): SceneView {
    const { low, high } = this.grid.box;
    const half = [0, 1, 2].map((i) => ((high[i] ?? 0) - (low[i] ?? 0)) / 2);
    const middle = [0, 1, 2].map((i) => ((high[i] ?? 0) + (low[i] ?? 0)) / 2);
    return new SceneView([middle[0] ?? 0, middle[1] ?? 0, middle[2] ?? 0], Math.hypot(...half));
  }

  #arrange(): void {
    const { large } = this.store.state;
    const grid = this.elements.axial.frame.parentElement;
    grid?.classList.toggle("one", large !== null);
    for (const [name, { frame }] of Object.entries(this.elements)) {
      frame.hidden = large !== null && name !== large;
    }
    this.invalidate(true);
  }

  #schedule(): void {
    this.#frame ||= requestAnimationFrame(() => {
      this.#frame = 0;
      this.#drawAll(!this.#isSlow);
    });
  }

  get #isSlow(): boolean {
    return this.head?.isSoftware ?? false;
  }

  #drawAll(isFine: boolean): void {
    const { headFailure } = this.store.state;
    this.#measure();
    for (const name of sliceNames) {
      this.#drawSlice(name);
    }
    this.#drawScene(isFine);
    if (this.store.state.headFailure !== headFailure) {
      this.#drawAll(isFine); // what was drawn before says nothing of it yet
    }
    this.#overlays.clear();
    this.#heads.clear();
  }

  // Sizes, scales and sides that all panes are drawn with.
  #measure(): void {
    const ratio = this.pixelRatio();
    const views = [...sliceNames.map((name) => this.slices[name]), this.scene];
    ([...sliceNames, "scene"] as const).forEach((name, i) => {
      const pane = this.elements[name];
      const view = views[i];
      if (pane.frame.hidden || view === undefined) {
        return;
      }
      if (fitToPixels(pane, ratio)) {
        this.#overlays.add(name);
        this.#heads.add(name);
      }
      [view.width, view.height] = [pane.marks.width / ratio, pane.marks.height / ratio];
    });
    const shown = sliceNames.filter((name) => !this.elements[name].frame.hidden);
    const scale = Math.min(...shown.map((name) => this.slices[name].fittingScale)) * this.zoom;
    for (const name of sliceNames) {
      this.slices[name].scale = scale;
    }
    this.scene.cuts = cutsOf(this.store.state, this.grid, this.scene);
  }

  #drawSlice(name: SliceName): void {
    const { frame, head, lines, marks } = this.elements[name];
    if (frame.hidden) {
      return;
    }
    const view = this.slices[name];
    const { data, state } = this.store;
    const ratio = this.pixelRatio();
    const shown = this.#sliceKey(view);
    if (this.shownHead !== null && this.#heads.has(name)) {
      const [width, height] = headSize(view, ratio, this.#isSlow ? softwarePixels.slice : Infinity);
      if (this.#isNew(name, "head", [shown, state.window].join())) {
        this.#copy(head, (whole) => whole.slice(view, state.crosshair, width, height));
      }
    }
    if (!this.#overlays.has(name)) {
      return;
    }
    drawCrosshair(this.#cleared(lines, ratio), view, state.crosshair);
    if (this.#isNew(name, "marks", [shown, this.#version].join())) {
      const context = this.#cleared(marks, ratio);
      const size = { width: view.width, height: view.height, text: this.textHeight() };
      const radius = (data.settings.glyphPixels * size.text) / 28;
      const found = marksOnSlice(data, state, view, this.#colourOf, radius);
      this.marks[name] = found.marks;
      drawSliceMarks(context, { data, state, view, size, ...found, pixelRatio: ratio });
    }
  }

  #drawScene(isFine: boolean): void {
    const { frame, head, marks } = this.elements.scene;
    if (frame.hidden) {
      return;
    }
    const view = this.scene;
    const { data, state } = this.store;
    const ratio = this.pixelRatio();
    if (this.shownHead !== null && this.#heads.has("scene")) {
      const most = isFine ? softwarePixels.sceneStill : softwarePixels.sceneTurning;
      const [width, height] = headSize(view, ratio, this.#isSlow ? most : Infinity);
      const isNew = this.#isNew("scene", "head", [this.#sceneKey(), state.window].join());
      if (isNew || (isFine && head.width < width)) {
        this.#copy(head, (whole) => whole.scene(view, width, height));
        clearTimeout(this.#still);
        if (!isFine) {
          this.#still = window.setTimeout(() => this.#drawStill(), stillAfter);
        }
      }
    }
    // The crosshair is seen in 3D by the cut alone.
    if (this.#overlays.has("scene") && this.#isNew("scene", "marks", [this.#sceneKey(), this.#version].join())) {
      const context = this.#cleared(marks, ratio);
      const size = { width: view.width, height: view.height, text: this.textHeight() };
      const found = marksInScene(data, state, view, this.#colourOf, size.text / 7);
      this.marks.scene = found;
      drawSceneMarks(context, { data, state, view, size, marks: found, pixelRatio: ratio });
    }
  }

  // Is that picture another one than was drawn last? From now on it is the one that was.
  #isNew(name: PaneName, layer: "head" | "marks", shown: string): boolean {
    const key = `${name} ${layer}`;
    const isNew = this.#drawn.get(key) !== shown;
    this.#drawn.set(key, shown);
    return isNew;
  }

  // Which slice, what of it, and how large.
  #sliceKey(view: SliceView): string {
    const depth = view.project([0, 0, 0], this.store.state.crosshair).depth.toFixed(3);
    const { low, high } = view.span;
    return [depth, ...low, ...high, view.width, view.height, this.pixelRatio(), this.textHeight(), view.isMirrored].join();
  }

  // What 3D is seen from, how it is cut, and how large.
  #sceneKey(): string {
    const { azimuth, elevation, zoom, cuts, width, height } = this.scene;
    const planes = cuts.map(({ place, normal }) => [dot(place, normal).toFixed(3), ...normal]);
    return [azimuth, elevation, zoom, width, height, this.pixelRatio(), this.textHeight(), ...planes.flat()].join();
  }

  #drawStill(): void {
    this.#heads.add("scene");
    this.#drawAll(true);
  }

  #copy(to: HTMLCanvasElement, draw: (head: Head) => HTMLCanvasElement): void {
    const from = this.headPicture(draw);
    if (from !== null) {
      [to.width, to.height] = [from.width, from.height];
      this.#contextOf(to)?.drawImage(from, 0, 0);
    }
  }

  // Without a GPU a browser draws faster on canvases that it does not leave to one.
  #contextOf(canvas: HTMLCanvasElement): CanvasRenderingContext2D | null {
    return canvas.getContext("2d", { willReadFrequently: this.#isSlow });
  }

  #cleared(canvas: HTMLCanvasElement, ratio: number): CanvasRenderingContext2D {
    const context = this.#contextOf(canvas);
    if (context === null) {
      throw new Error("This browser draws no pictures.");
    }
    context.setTransform(1, 0, 0, 1, 0, 0);
    context.clearRect(0, 0, canvas.width, canvas.height);
    context.scale(ratio, ratio);
    return context;
  }
}
