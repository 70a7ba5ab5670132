// Texts and lines over a picture, readable on black and on white.

import { cut } from "../model/Foreign";

export const paneFont = '"Segoe UI", "Helvetica Neue", Arial, "DejaVu Sans", sans-serif';

export interface Writing {
  align?: CanvasTextAlign;
  baseline?: CanvasTextBaseline;
  size: number; // CSS pixels
  colour?: string;
  weight?: number | undefined;
}

export function fontOf({ size, weight }: Pick<Writing, "size" | "weight">): string {
  return `${weight ?? 400} ${size}px ${paneFont}`;
}

// No wider than `width` in the font that is set: what is too long ends with an ellipsis.
export function fitted(context: CanvasRenderingContext2D, text: string, width: number): string {
  if (context.measureText(text).width <= width) {
    return text;
  }
  let [low, high] = [0, text.length];
  while (low < high) {
    const middle = Math.ceil((low + high) / 2);
    if (context.measureText(cut(text, middle)).width <= width) {
      low = middle;
    } else {
      high = middle - 1;
    }
  }
  return cut(text, low);
}

export function write(context: CanvasRenderingContext2D, text: string, x: number, y: number, how: Writing): void {
  context.font = fontOf(how);
  context.textAlign = how.align ?? "left";
  context.textBaseline = how.baseline ?? "alphabetic";
  context.lineJoin = "round";
  context.lineWidth = Math.max(2.5, how.size / 5);
  context.strokeStyle = "rgba(0, 0, 0, 0.8)";
  context.strokeText(text, x, y);
  context.fillStyle = how.colour ?? "#f2f4f7";
  context.fillText(text, x, y);
}

// Breaks a text at blanks so that no line is wider than `width`.
export function linesOf(
  context: CanvasRenderingContext2D,
  text: string,
  width: number,
  { size, weight }: Pick<Writing, "size" | "weight">,
): string[] {
  context.font = fontOf({ size, weight });
  const lines: string[] = [];
  let line = "";
  for (const word of text.split(/\s+/)) {
    const longer = line === "" ? word : `${line} ${word}`;
    if (line !== "" && context.measureText(longer).width > width) {
      lines.push(line);
      line = word;
    } else {
      line = longer;
    }
  }
  lines.push(line);
  return lines.map((text) => fitted(context, text, width));
}

export function line(
  context: CanvasRenderingContext2D,
  from: readonly [number, number],
  to: readonly [number, number],
): void {
  context.beginPath();
  context.moveTo(from[0], from[1]);
  context.lineTo(to[0], to[1]);
  context.stroke();
}
