// What lies over a slice: the dipoles near enough, the points, the crosshair.

import type { PageData, PointData, Vector } from "../data/PageData";
import { cut, visible } from "../model/Foreign";
import { numberOf } from "../model/Filter";
import type { State } from "../model/Store";
import { plus, times } from "../model/Vector";
import { warningsOf } from "../model/Warnings";
import { axisInWorld, tiltOf } from "./Grid";
import { line, write } from "./Ink";
import { drawChosenMarks, type Mark } from "./Marks";
import { drawScale, drawSides, drawTitle, drawWarnings, type Size } from "./PaneFurniture";
import { placeLetter, sideLetter } from "./Sides";
import type { Point, SliceView } from "./SliceView";

const titles = { axial: "Axial", coronal: "Coronal", sagittal: "Sagittal" } as const;
const crosshairColour = "rgba(88, 196, 255, 0.75)";
export const pointColours = { N: "#5fd38a", L: "#6aa5ff", R: "#ff7a7a" } as const;

function isInPane(view: SliceView, { x, y }: Point, border: number): boolean {
  return x > -border && y > -border && x < view.width + border && y < view.height + border;
}

export interface SliceMarks {
  marks: Mark[]; // to be drawn, those nearest to the slice last
  near: number; // dipoles within the tolerance, in the pane or not
}

export function marksOnSlice(
  data: PageData,
  state: Readonly<State>,
  view: SliceView,
  colourOf: (row: number) => string,
  radius: number,
): SliceMarks {
  const { places, arrows } = data.dipoles;
  const reach = state.toleranceMm ?? Infinity;
  const border = 60; // pixels: arrows reach into the pane from outside
  const marks: Mark[] = [];
  let near = 0;
  for (const row of state.passing) {
    const place = places[row];
    if (!place) {
      continue;
    }
    const at = view.project(place, state.crosshair);
    if (Math.abs(at.depth) > reach) {
      continue;
    }
    ++near;
    if (isInPane(view, at, border)) {
      const arrow = state.areArrowsShown ? arrows[row] : null;
      const tip = arrow ? view.project(plus(place, arrow), state.crosshair) : null;
      marks.push({ row, at, tip, colour: colourOf(row), radius, alpha: 1 });
    }
  }
  marks.sort((a, b) => Math.abs(b.at.depth) - Math.abs(a.at.depth));
  return { marks, near };
}

export function drawCrosshair(context: CanvasRenderingContext2D, view: SliceView, crosshair: Vector): void {
  const { x, y } = view.project(crosshair, crosshair);
  const gap = 9;
  context.strokeStyle = crosshairColour;
  context.lineWidth = 1;
  line(context, [0, y], [x - gap, y]);
  line(context, [x + gap, y], [view.width, y]);
  line(context, [x, 0], [x, y - gap]);
  line(context, [x, y + gap], [x, view.height]);
}

// Those of the head are rings, those of the dipole files, where they differ, diamonds.
export function drawPoint(context: CanvasRenderingContext2D, point: PointData, x: number, y: number, text: number): void {
  const reach = text * 0.45;
  for (const [colour, width] of [["rgba(0, 0, 0, 0.8)", 3.5], [pointColours[point.letter], 1.8]] as const) {
    context.strokeStyle = colour;
    context.lineWidth = width;
    context.beginPath();
    if (point.of === "head") {
      context.arc(x, y, reach, 0, 2 * Math.PI);
    } else {
      context.moveTo(x, y - reach);
      context.lineTo(x + reach, y);
      context.lineTo(x, y + reach);
      context.lineTo(x - reach, y);
      context.closePath();
    }
    context.stroke();
  }
  write(context, point.letter, x, y - reach - 3, {
    size: text * 0.85,
    align: "center",
    colour: pointColours[point.letter],
    weight: 600,
  });
}

function drawSphere(
  context: CanvasRenderingContext2D,
  data: PageData,
  view: SliceView,
  { crosshair, headFailure }: Readonly<State>,
): void {
  if (data.sphere === null || (data.head !== null && headFailure === "")) {
    return;
  }
  const at = view.project(data.sphere.centre, crosshair);
  const squared = data.sphere.radius ** 2 - at.depth ** 2;
  if (squared > 0) {
    context.strokeStyle = "#7f93b2";
    context.lineWidth = 1.5;
    context.beginPath();
    context.arc(at.x, at.y, Math.sqrt(squared) * view.scale, 0, 2 * Math.PI);
    context.stroke();
  }
}

const mostLabels = 400; // more would cover the picture

function labelOf(data: PageData, { row }: Mark): string {
  return String(data.dipoles.columns[data.dipoles.roles.label]?.values[row] ?? "");
}

// What is said where not all labels are written.
export function labelWords(data: PageData, state: Readonly<State>, marks: readonly Mark[]): string[] {
  const left = marks.filter((mark) => labelOf(data, mark) !== "").length - mostLabels;
  return state.areLabelsShown && left > 0 ? [`labels of the ${mostLabels} nearest, ${left} not written`] : [];
}

export function drawLabels(
  context: CanvasRenderingContext2D,
  data: PageData,
  marks: readonly Mark[],
  text: number,
): void {
  const size = text * 0.75;
  for (const mark of marks.filter((one) => labelOf(data, one) !== "").slice(-mostLabels)) {
    const label = visible(cut(labelOf(data, mark), 40));
    write(context, label, mark.at.x + mark.radius + 3, mark.at.y, { size, baseline: "middle" });
  }
}

const leastTilt = 0.5; // degrees that are told

// Where the slice is, in the world that the bar under the panes tells: of a slice that is tilted there only the place
// of the crosshair is one number.
function placeLines(data: PageData, state: Readonly<State>, view: SliceView): string[] {
  const place = `${placeLetter(state.crosshair, view.through, data.head?.areSidesStated ?? true)} mm`;
  const tilt = tiltOf(view.grid);
  if (tilt < leastTilt) {
    return [place];
  }
  return [`${place} at the crosshair`, `tilted ${tilt.toFixed(1)}°: side letters are approximate`];
}

export interface SlicePicture {
  data: PageData;
  state: Readonly<State>;
  view: SliceView;
  size: Size;
  marks: readonly Mark[];
  near: number; // dipoles within the tolerance, those beyond the edges of the pane too
  pixelRatio: number;
}

export function drawSliceMarks(context: CanvasRenderingContext2D, picture: SlicePicture): void {
  const { data, state, view, size, marks } = picture;
  const stated = data.head?.areSidesStated ?? true;
  const sign = view.isMirrored ? -1 : 1;
  const right = times(axisInWorld(view.grid, view.column), sign);
  const up = axisInWorld(view.grid, view.row);
  drawSphere(context, data, view, state);
  const reach = Math.max(state.toleranceMm ?? Infinity, 2);
  for (const point of data.points) {
    const at = view.project(point.place, state.crosshair);
    if (Math.abs(at.depth) <= reach) {
      drawPoint(context, point, at.x, at.y, size.text);
    }
  }
  drawChosenMarks(context, marks, state, picture.pixelRatio);
  if (state.areLabelsShown) {
    drawLabels(context, data, marks, size.text);
  }
  drawSides(context, size, {
    left: sideLetter(times(right, -1), stated),
    right: sideLetter(right, stated),
    top: sideLetter(up, stated),
    bottom: sideLetter(times(up, -1), stated),
  });
  const placed = state.passing.reduce((sum, row) => sum + (data.dipoles.places[row] ? 1 : 0), 0);
  const within = state.toleranceMm === null ? "" : ` within ${numberText(state.toleranceMm)} mm`;
  const beyond = picture.near - marks.filter(({ at }) => isInPane(view, at, 0)).length;
  const edges = beyond === 0 ? "" : `, ${beyond} beyond the edges`;
  drawTitle(context, size, titles[view.name], [
    ...placeLines(data, state, view),
    `${picture.near} of ${placed} dipoles${within}${edges}`,
    ...labelWords(data, state, marks),
  ]);
  drawScale(context, size, view.scale);
  drawWarnings(context, size, warningsOf(data, state));
}

function numberText(value: number): string {
  return Number.isNaN(numberOf(value)) ? "" : String(Math.round(value * 100) / 100);
}
