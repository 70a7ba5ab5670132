// What lies over the head in 3D: the dipoles, those farther away behind the nearer ones, the points, the sphere.

import type { PageData, Vector } from "../data/PageData";
import type { State } from "../model/Store";
import { dot, minus, plus, times } from "../model/Vector";
import { warningsOf } from "../model/Warnings";
import { line, write } from "./Ink";
import { drawChosenMarks, type Mark } from "./Marks";
import { drawScale, drawSides, drawTitle, drawWarnings, type Size } from "./PaneFurniture";
import type { SceneView } from "./SceneView";
import { drawLabels, drawPoint, labelWords } from "./SlicePane";
import { sideLetter } from "./Sides";

const farPoint = 0.6; // how clearly a fiducial point on the far side is seen
const insideHead = 0.55; // how clearly a dipole is seen through half of the head, or what the cut leaves before it

function isInNearPart(place: Vector, view: SceneView): boolean {
  if (view.cuts.length === 0) {
    return view.project(place).depth >= 0;
  }
  return view.cuts.every((cut) => dot(minus(place, cut.place), cut.normal) >= -0.5);
}

export function marksInScene(
  data: PageData,
  state: Readonly<State>,
  view: SceneView,
  colourOf: (row: number) => string,
  leastRadius: number,
): Mark[] {
  const { places, arrows } = data.dipoles;
  const radius = Math.max(leastRadius, data.settings.ballRadius * view.scale);
  const marks: Mark[] = [];
  for (const row of state.passing) {
    const place = places[row];
    if (!place) {
      continue;
    }
    const arrow = state.areArrowsShown ? arrows[row] : null;
    marks.push({
      row,
      at: view.project(place),
      tip: arrow ? view.project(plus(place, arrow)) : null,
      colour: colourOf(row),
      radius,
      alpha: isInNearPart(place, view) ? 1 : insideHead,
    });
  }
  return marks.sort((a, b) => a.at.depth - b.at.depth);
}

const directions: readonly { direction: Vector; words: string }[] = [
  { direction: [1, 0, 0], words: "from the patient's right" },
  { direction: [-1, 0, 0], words: "from the patient's left" },
  { direction: [0, 1, 0], words: "from the front" },
  { direction: [0, -1, 0], words: "from behind" },
  { direction: [0, 0, 1], words: "from above" },
  { direction: [0, 0, -1], words: "from below" },
];

// The side that looks at the eye.
function viewWords(view: SceneView): string {
  const near = (direction: Vector): number => view.turned(direction)[2];
  const best = directions.reduce((a, b) => (near(b.direction) > near(a.direction) ? b : a));
  return near(best.direction) > 0.98 ? best.words : `obliquely ${best.words}`;
}

// The letter of the side that an edge of the picture shows.
function edgeLetter(view: SceneView, x: number, y: number, areSidesStated: boolean): string {
  const towards = ({ direction }: { direction: Vector }): number => {
    const [right, up] = view.turned(direction);
    return right * x + up * y;
  };
  const best = directions.reduce((a, b) => (towards(b) > towards(a) ? b : a));
  return towards(best) > 0.8 ? sideLetter(best.direction, areSidesStated) : "";
}

function drawAxes(context: CanvasRenderingContext2D, view: SceneView, size: Size, areSidesStated: boolean): void {
  const long = size.text * 2;
  const [x, y] = [size.width - long * 1.7, size.height - long * 1.7];
  const axes = [
    { direction: [1, 0, 0], colour: "#ff7a7a" },
    { direction: [0, 1, 0], colour: "#5fd38a" },
    { direction: [0, 0, 1], colour: "#6aa5ff" },
  ] as const;
  for (const { direction, colour } of axes) {
    const [right, up, near] = view.turned(direction);
    // The half that looks at the eye is named.
    const sign = near >= -1e-9 ? 1 : -1;
    const tip: readonly [number, number] = [x + sign * right * long, y - sign * up * long];
    context.strokeStyle = colour;
    context.lineWidth = 2;
    line(context, [x, y], tip);
    write(context, sideLetter(times(direction, sign), areSidesStated), tip[0], tip[1], {
      size: size.text * 0.85,
      align: "center",
      baseline: "middle",
      colour,
      weight: 600,
    });
  }
}

function drawSphere(
  context: CanvasRenderingContext2D,
  data: PageData,
  view: SceneView,
  { headFailure }: Readonly<State>,
): void {
  if (data.sphere === null) {
    return;
  }
  const { centre, radius } = data.sphere;
  const at = view.project(centre);
  context.strokeStyle = "rgba(127, 147, 178, 0.55)";
  context.lineWidth = 1;
  context.beginPath();
  context.arc(at.x, at.y, radius * view.scale, 0, 2 * Math.PI);
  context.stroke();
  if (data.head !== null && headFailure === "") {
    return;
  }
  const steps = 72;
  for (const [a, b] of [[0, 1], [0, 2], [1, 2]] as const) {
    context.beginPath();
    for (let i = 0; i <= steps; ++i) {
      const angle = (2 * Math.PI * i) / steps;
      const around = [0, 0, 0];
      around[a] = Math.cos(angle) * radius;
      around[b] = Math.sin(angle) * radius;
      const point = view.project(plus(centre, [around[0] ?? 0, around[1] ?? 0, around[2] ?? 0]));
      context.lineTo(point.x, point.y);
    }
    context.stroke();
  }
}

// What paler dipoles mean, where there are some.
function paleWords(view: SceneView, marks: readonly Mark[]): string[] {
  const pale = marks.filter(({ alpha }) => alpha < 1).length;
  if (pale === 0) {
    return [];
  }
  return [view.cuts.length === 0 ? `${pale} paler: in the far half of the head` : `${pale} paler: behind the cut`];
}

// Nearer ones over farther ones, which are paler. The far ear behind the near one, as from the side, is left out: its
// letter would stand where the other ear is.
function drawPoints(context: CanvasRenderingContext2D, data: PageData, view: SceneView, size: Size): void {
  const points = data.points.map((point) => ({ point, at: view.project(point.place) }));
  points.sort((a, b) => a.at.depth - b.at.depth);
  points.forEach(({ point, at }, i) => {
    const isCovered = points
      .slice(i + 1)
      .some((other) => other.point.letter !== point.letter && Math.hypot(other.at.x - at.x, other.at.y - at.y) < 2 * size.text);
    if (!isCovered) {
      context.globalAlpha = at.depth < 0 ? farPoint : 1;
      drawPoint(context, point, at.x, at.y, size.text);
    }
  });
  context.globalAlpha = 1;
}

export interface ScenePicture {
  data: PageData;
  state: Readonly<State>;
  view: SceneView;
  size: Size;
  marks: readonly Mark[];
  pixelRatio: number;
}

export function drawSceneMarks(context: CanvasRenderingContext2D, picture: ScenePicture): void {
  const { data, state, view, size, marks } = picture;
  const stated = data.head?.areSidesStated ?? true;
  drawSphere(context, data, view, state);
  drawChosenMarks(context, marks, state, picture.pixelRatio);
  drawPoints(context, data, view, size);
  if (state.areLabelsShown) {
    drawLabels(context, data, marks, size.text);
  }
  const edge = (x: number, y: number): string => edgeLetter(view, x, y, stated);
  drawSides(context, size, { left: edge(-1, 0), right: edge(1, 0), top: edge(0, 1), bottom: edge(0, -1) });
  drawAxes(context, view, size, stated);
  drawTitle(context, size, "3D", [
    viewWords(view),
    `${marks.length} dipoles`,
    ...paleWords(view, marks),
    ...labelWords(data, state, marks),
  ]);
  drawScale(context, size, view.scale);
  drawWarnings(context, size, warningsOf(data, state));
}
