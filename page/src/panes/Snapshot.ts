// A picture of its own, of what the panes show, around another place: for the report. Drawn at once, since a browser
// that prints waits for nothing.

import type { ColourBy, Vector } from "../data/PageData";
import type { PictureSize, PictureView } from "../lists/Report";
import { colourFunction } from "../model/Colours";
import type { Panes } from "./Panes";
import { drawSceneMarks, marksInScene } from "./ScenePane";
import { SceneView } from "./SceneView";
import { drawCrosshair, drawSliceMarks, marksOnSlice } from "./SlicePane";
import { SliceView, type SliceName } from "./SliceView";

// Where one stands, degrees; from above the patient's front is up.
const stands = {
  left: { azimuth: 90, elevation: 0 },
  right: { azimuth: 270, elevation: 0 },
  above: { azimuth: 0, elevation: 90 },
} as const;

const textShare = 1 / 24; // of the width
const slowPixels = 90_000; // of the head in 3D, without a GPU

function contextOf(canvas: HTMLCanvasElement, { width, height }: PictureSize): CanvasRenderingContext2D {
  [canvas.width, canvas.height] = [width, height];
  const context = canvas.getContext("2d");
  if (context === null) {
    throw new Error("This browser draws no pictures.");
  }
  context.fillStyle = "#000";
  context.fillRect(0, 0, width, height);
  return context;
}

function drawSlice(
  panes: Panes,
  context: CanvasRenderingContext2D,
  name: SliceName,
  at: Vector,
  size: PictureSize,
  colourBy: ColourBy,
): void {
  const { data } = panes.store;
  const view = new SliceView(name, panes.grid);
  [view.width, view.height] = [size.width, size.height];
  view.scale = view.fittingScale;
  view.isMirrored = panes.store.state.isRadiological && name !== "sagittal";
  const head = panes.headPicture((whole) => whole.slice(view, at, size.width, size.height));
  if (head !== null) {
    context.drawImage(head, 0, 0);
  }
  const state = { ...panes.store.state, crosshair: at, selection: [], current: -1 };
  const text = size.width * textShare;
  const radius = (data.settings.glyphPixels * text) / 28;
  const found = marksOnSlice(data, state, view, colourFunction(data, colourBy), radius);
  drawCrosshair(context, view, at);
  drawSliceMarks(context, { data, state, view, size: { ...size, text }, ...found, pixelRatio: 1 });
}

function drawScene(
  panes: Panes,
  context: CanvasRenderingContext2D,
  from: keyof typeof stands,
  size: PictureSize,
  colourBy: ColourBy,
): void {
  const { data } = panes.store;
  const view = new SceneView(panes.scene.middle, panes.scene.reach);
  [view.width, view.height] = [size.width, size.height];
  [view.azimuth, view.elevation] = [stands[from].azimuth, stands[from].elevation];
  const head = panes.headPicture((whole) => {
    const most = whole.isSoftware ? slowPixels : Infinity;
    const share = Math.min(1, Math.sqrt(most / (size.width * size.height)));
    return whole.scene(view, Math.round(size.width * share), Math.round(size.height * share));
  });
  if (head !== null) {
    context.drawImage(head, 0, 0, size.width, size.height);
  }
  const state = { ...panes.store.state, selection: [], current: -1 };
  const text = size.width * textShare;
  const marks = marksInScene(data, state, view, colourFunction(data, colourBy), text / 7);
  drawSceneMarks(context, { data, state, view, size: { ...size, text }, marks, pixelRatio: 1 });
}

export function snapshot(
  panes: Panes,
  place: Vector,
  view: PictureView,
  size: PictureSize,
  colourBy: ColourBy,
): HTMLCanvasElement {
  const canvas = document.createElement("canvas");
  const context = contextOf(canvas, size);
  if (view === "left" || view === "right" || view === "above") {
    drawScene(panes, context, view, size, colourBy);
  } else {
    drawSlice(panes, context, view, place, size, colourBy);
  }
  return canvas;
}
