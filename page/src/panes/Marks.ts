// Dipoles as balls with arrows, in pixels of a pane. A ball is drawn once for each colour and copied from there.

import type { Point } from "./SliceView";

export interface Mark {
  row: number;
  at: Point;
  tip: Point | null;
  colour: string;
  radius: number; // CSS pixels
  alpha: number;
}

const edge = "rgba(0, 0, 0, 0.85)";
const balls = new Map<string, HTMLCanvasElement>();

function lighter(colour: string, share: number): string {
  const value = Number.parseInt(colour.slice(1), 16);
  const part = (shift: number): number => {
    const old = (value >> shift) & 255;
    return Math.round(share > 0 ? old + (255 - old) * share : old * (1 + share));
  };
  return `rgb(${part(16)}, ${part(8)}, ${part(0)})`;
}

// `radius` is in device pixels.
function ballOf(colour: string, radius: number): HTMLCanvasElement {
  const key = `${colour} ${radius}`;
  const known = balls.get(key);
  if (known !== undefined) {
    return known;
  }
  if (balls.size > 4000) {
    balls.clear();
  }
  const side = 2 * radius + 4;
  const ball = document.createElement("canvas");
  ball.width = ball.height = Math.ceil(side);
  const context = ball.getContext("2d");
  if (context !== null) {
    const middle = ball.width / 2;
    const shine = context.createRadialGradient(
      middle - radius * 0.35,
      middle - radius * 0.4,
      radius * 0.1,
      middle,
      middle,
      radius,
    );
    shine.addColorStop(0, lighter(colour, 0.55));
    shine.addColorStop(0.45, colour);
    shine.addColorStop(1, lighter(colour, -0.35));
    context.fillStyle = shine;
    context.strokeStyle = edge;
    context.lineWidth = Math.max(1, radius * 0.16);
    context.beginPath();
    context.arc(middle, middle, radius, 0, 2 * Math.PI);
    context.fill();
    context.stroke();
  }
  balls.set(key, ball);
  return ball;
}

// A straight arrow as one shape, `grown` pixels wider on every side. Filling is far faster than stroking.
function arrowShape(context: CanvasRenderingContext2D, mark: Mark, tip: Point, grown: number): void {
  const [x, y] = [tip.x - mark.at.x, tip.y - mark.at.y];
  const long = Math.hypot(x, y);
  const [ux, uy] = [x / long, y / long];
  const head = Math.min(mark.radius * 1.7, long);
  const thin = Math.max(0.6, mark.radius * 0.21) + grown;
  const wide = head * 0.42 + thin * 0.5 + grown;
  const corner = (along: number, across: number): void =>
    context.lineTo(mark.at.x + ux * along - uy * across, mark.at.y + uy * along + ux * across);
  context.beginPath();
  corner(0, thin);
  corner(long - head, thin);
  corner(long - head - grown, wide);
  corner(long + grown * 2, 0);
  corner(long - head - grown, -wide);
  corner(long - head, -thin);
  corner(0, -thin);
  context.fill();
}

function arrow(context: CanvasRenderingContext2D, mark: Mark, tip: Point, isCrowd: boolean): void {
  if (Math.hypot(tip.x - mark.at.x, tip.y - mark.at.y) < 1.5) {
    return; // it points at the eye, or away from it
  }
  if (!isCrowd) {
    context.fillStyle = edge;
    arrowShape(context, mark, tip, 0.9);
  }
  context.fillStyle = mark.colour;
  arrowShape(context, mark, tip, 0);
}

const crowd = 3000; // marks: arrows of more have no dark edge, which nobody would see

// In the order given: the last one lies on top.
function drawMarks(
  context: CanvasRenderingContext2D,
  marks: readonly Mark[],
  pixelRatio: number,
): void {
  const isCrowd = marks.length > crowd;
  for (const mark of marks) {
    context.globalAlpha = mark.alpha;
    if (mark.tip !== null) {
      arrow(context, mark, mark.tip, isCrowd);
    }
    const ball = ballOf(mark.colour, Math.max(1, Math.round(mark.radius * pixelRatio * 2) / 2));
    const side = ball.width / pixelRatio;
    context.drawImage(ball, mark.at.x - side / 2, mark.at.y - side / 2, side, side);
  }
  context.globalAlpha = 1;
}

const fewRings = 12; // so many may be strong; around all of a cluster they would hide its dipoles
const mostHalos = 2000; // more are a white cloud that tells nothing

interface Chosen {
  selection: readonly number[]; // rows
  current: number;
}

function ringedOf(marks: readonly Mark[], { selection }: Chosen): Mark[] {
  const selected = new Set(selection);
  return selected.size === 0 ? [] : marks.filter(({ row }) => selected.has(row));
}

// What a ring is around one dipole a rim is behind many: it covers none of them.
function drawHalos(context: CanvasRenderingContext2D, marks: readonly Mark[]): void {
  context.fillStyle = "#ffffff";
  for (const { at, radius } of marks) {
    context.beginPath();
    context.arc(at.x, at.y, radius + 2.5, 0, 2 * Math.PI);
    context.fill();
  }
}

// In the order given, those that are selected with rings or, many of them, with a rim; the current one with a strong
// ring in any case.
export function drawChosenMarks(
  context: CanvasRenderingContext2D,
  marks: readonly Mark[],
  chosen: Chosen,
  pixelRatio: number,
): void {
  const ringed = ringedOf(marks, chosen);
  if (ringed.length > fewRings && ringed.length <= mostHalos) {
    drawHalos(context, ringed);
  }
  drawMarks(context, marks, pixelRatio);
  if (ringed.length <= fewRings) {
    ringed.forEach((mark) => drawRing(context, mark, false));
  }
  ringed.filter(({ row }) => row === chosen.current).forEach((mark) => drawRing(context, mark, true));
}

function drawRing(context: CanvasRenderingContext2D, mark: Mark, isCurrent: boolean): void {
  for (const [colour, width] of [[edge, isCurrent ? 5 : 3.5], ["#ffffff", isCurrent ? 2.5 : 1.5]] as const) {
    context.strokeStyle = colour;
    context.lineWidth = width;
    context.beginPath();
    context.arc(mark.at.x, mark.at.y, mark.radius + (isCurrent ? 4.5 : 3), 0, 2 * Math.PI);
    context.stroke();
  }
}

// The topmost mark under a pixel, with some reach for a hand that is not exact; null: none.
export function markAt(marks: readonly Mark[], x: number, y: number): Mark | null {
  const reach = 3;
  let nearest: Mark | null = null;
  let best = Infinity;
  for (let i = marks.length - 1; i >= 0; --i) {
    const mark = marks[i];
    if (mark === undefined) {
      continue;
    }
    const distance = Math.hypot(mark.at.x - x, mark.at.y - y);
    if (distance <= mark.radius) {
      return mark;
    }
    if (distance <= mark.radius + reach && distance < best) {
      [nearest, best] = [mark, distance];
    }
  }
  return nearest;
}
