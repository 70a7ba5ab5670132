// The panes as one picture, as they are seen, with what has to be known about them.

import { legendOf, type Legend } from "../model/Legend";
import type { Store } from "../model/Store";
import { cut, isolated, visible } from "../model/Foreign";
import { fitted, fontOf, linesOf } from "./Ink";
import type { Panes } from "./Panes";
import { conventionWords } from "./Sides";
import { madeText } from "../model/Made";
import { warningsOf } from "../model/Warnings";

const ground = "#0e1217";
const ink = "#e6eaf0";
const faint = "#9aa6b5";

const lineHeight = 1.45; // of letters
const nameLength = 60; // characters of a file's name

function headingLines(store: Store): string[] {
  const { data, state } = store;
  const named = (name: string | null): string => (name === null ? "" : `${isolated(cut(name, nameLength))} `);
  const head = data.head === null ? "no head" : `head ${named(data.head.name)}${data.head.format}`;
  const files = data.files.map(({ name, format }) => `${named(name)}${format}`).join("; ");
  const shown = `${state.passing.length} of ${data.dipoles.count} dipoles`;
  // A line that is too long loses the last of many names, not the count.
  return [visible(data.patient ?? data.title), `${shown}; ${head}; ${files}`];
}

interface LegendPlace {
  x: number;
  y: number;
  right: number; // no line goes farther
  text: number; // height of letters
}

// The number of lines that it takes.
function drawLegend(context: CanvasRenderingContext2D, legend: Legend, place: LegendPlace): number {
  const { text } = place;
  let { x, y } = place;
  let lines = 1;
  const makeRoom = (width: number): void => {
    if (x > place.x && x + width > place.right) {
      [x, y] = [place.x, y + text * lineHeight];
      ++lines;
    }
  };
  const put = (words: string, colour: string): void => {
    context.fillStyle = colour;
    context.fillText(words, x, y);
    x += context.measureText(words).width + text * 0.6;
  };
  context.font = fontOf({ size: text });
  context.textBaseline = "middle";
  context.textAlign = "left";
  put(legend.title, faint);
  if (legend.scale.length > 0) {
    put(legend.low, ink);
    const width = text * 10;
    const scale = context.createLinearGradient(x, 0, x + width, 0);
    legend.scale.forEach((colour, i) => scale.addColorStop(i / Math.max(1, legend.scale.length - 1), colour));
    context.fillStyle = scale;
    context.fillRect(x, y - text * 0.4, width, text * 0.8);
    x += width + text * 0.6;
    put(legend.high, ink);
  }
  for (const { colour, text: words } of legend.entries) {
    makeRoom(text * 1.1 + context.measureText(words).width);
    context.fillStyle = colour;
    context.beginPath();
    context.arc(x + text * 0.4, y, text * 0.4, 0, 2 * Math.PI);
    context.fill();
    x += text * 1.1;
    put(words, ink);
  }
  return lines;
}

export function pictureOf(panes: Panes): HTMLCanvasElement {
  panes.drawNow();
  const { store } = panes;
  const ratio = panes.pixelRatio();
  const text = panes.textHeight();
  const frames = Object.values(panes.elements).filter(({ frame }) => !frame.hidden);
  const grid = panes.elements.axial.frame.parentElement?.getBoundingClientRect() ?? new DOMRect();
  const canvas = document.createElement("canvas");
  const context = canvas.getContext("2d");
  if (context === null) {
    throw new Error("This browser draws no pictures.");
  }
  const inset = text * 0.7;
  const below = [
    conventionWords(store.state.isRadiological),
    `${madeText(store.data)}. No medical device.`,
  ];
  const warnings = warningsOf(store.data, store.state).flatMap((line) =>
    linesOf(context, `⚠ ${visible(line)}`, grid.width - 2 * inset, { size: text, weight: 600 }),
  );
  const line = text * lineHeight;
  const legend = legendOf(store.data, store.state);
  const legendPlace = { x: inset, y: 0, right: grid.width - inset, text };
  const legendLines = drawLegend(context, legend, legendPlace); // only to count them
  const top = Math.round(inset + line * 2.2 + warnings.length * line);
  canvas.width = Math.round(grid.width * ratio);
  canvas.height = Math.round((top + grid.height + inset * 2 + line * (below.length + legendLines)) * ratio);
  context.scale(ratio, ratio);
  context.fillStyle = ground;
  context.fillRect(0, 0, canvas.width, canvas.height);
  const write = (words: string, y: number, colour: string, weight = 400): void => {
    context.font = fontOf({ size: text, weight });
    context.textBaseline = "middle";
    context.fillStyle = colour;
    context.fillText(fitted(context, words, grid.width - 2 * inset), inset, y);
  };
  headingLines(store).forEach((words, i) => {
    write(words, inset + line * (i + 0.5), i === 0 ? ink : faint, i === 0 ? 600 : 400);
  });
  warnings.forEach((words, i) => write(words, inset + line * (i + 2.5), "#ffc24d", 600));
  // Pixel by pixel, as on the screen.
  context.setTransform(1, 0, 0, 1, 0, 0);
  for (const { head, lines, marks } of frames) {
    const box = marks.getBoundingClientRect();
    const x = Math.round((box.left - grid.left) * ratio);
    const y = Math.round((top + box.top - grid.top) * ratio);
    context.fillStyle = "#000";
    context.fillRect(x, y, marks.width, marks.height);
    if (panes.shownHead !== null) {
      context.drawImage(head, x, y, marks.width, marks.height);
    }
    context.drawImage(lines, x, y);
    context.drawImage(marks, x, y);
  }
  context.scale(ratio, ratio);
  const bottom = top + grid.height + inset;
  drawLegend(context, legend, { ...legendPlace, y: bottom + line * 0.5 });
  below.forEach((words, i) => write(words, bottom + line * (i + legendLines + 0.5), faint));
  return canvas;
}

export function savePicture(panes: Panes): void {
  pictureOf(panes).toBlob((blob) => {
    if (blob !== null) {
      const link = document.createElement("a");
      link.href = URL.createObjectURL(blob);
      link.download = "dipoles.png"; // names no one
      link.click();
      setTimeout(() => URL.revokeObjectURL(link.href), 1000);
    }
  }, "image/png");
}
