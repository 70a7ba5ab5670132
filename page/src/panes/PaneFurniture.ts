// What every pane shows beside the head and the dipoles: letters of the sides, its name, a scale, warnings.

import { visible } from "../model/Foreign";
import { fitted, line, linesOf, write } from "./Ink";

export interface Size {
  width: number; // CSS pixels
  height: number;
  text: number; // height of the page's letters, CSS pixels
}

export interface SideLetters {
  left: string;
  right: string;
  top: string;
  bottom: string;
}

export function drawSides(context: CanvasRenderingContext2D, size: Size, sides: SideLetters): void {
  const how = { size: Math.round(size.text * 1.35), weight: 600, baseline: "middle" } as const;
  const inset = size.text * 0.55;
  write(context, sides.left, inset, size.height / 2, { ...how, align: "left" });
  write(context, sides.right, size.width - inset, size.height / 2, { ...how, align: "right" });
  write(context, sides.top, size.width / 2, inset, { ...how, align: "center", baseline: "top" });
  write(context, sides.bottom, size.width / 2, size.height - inset, { ...how, align: "center", baseline: "bottom" });
}

// In the corner at the left: the name, and what is seen.
export function drawTitle(
  context: CanvasRenderingContext2D,
  size: Size,
  title: string,
  details: readonly string[],
): void {
  const inset = size.text * 0.6;
  write(context, title, inset, inset, { size: size.text * 1.05, weight: 600, baseline: "top" });
  const how = { size: size.text * 0.9, baseline: "top", colour: "#c3cad4" } as const;
  const lines = details.flatMap((text) => linesOf(context, text, size.width - 2 * inset, how));
  lines.forEach((text, i) => write(context, text, inset, inset + size.text * (1.45 + i * 1.25), how));
}

const lengths = [1, 2, 5, 10, 20, 50, 100]; // mm

export function drawScale(context: CanvasRenderingContext2D, size: Size, pixelsPerMm: number): void {
  const most = size.width * 0.28;
  const mm = lengths.filter((length) => length * pixelsPerMm <= most).at(-1);
  if (mm === undefined) {
    return;
  }
  const [x, y] = [size.text * 0.7, size.height - size.text * 0.8];
  const end = x + mm * pixelsPerMm;
  for (const [colour, width] of [["rgba(0, 0, 0, 0.8)", 3.5], ["#dfe4ea", 1.5]] as const) {
    context.strokeStyle = colour;
    context.lineWidth = width;
    line(context, [x, y], [end, y]);
    line(context, [x, y - 4], [x, y + 4]);
    line(context, [end, y - 4], [end, y + 4]);
  }
  write(context, `${mm} mm`, end + 6, y, { size: size.text * 0.85, baseline: "middle" });
}

const mostLines = 2; // of warnings: more would hide the head and the dipoles

// As many as there is room for, the first one in any case, and how many are left out.
function boundedLines(warnings: readonly string[], linesFor: (text: string) => string[]): string[] {
  const lines: string[] = [];
  let whole = 0;
  for (const text of warnings) {
    const own = linesFor(`⚠ ${visible(text)}`);
    if (lines.length + own.length > mostLines) {
      if (lines.length === 0) {
        lines.push(...own.slice(0, mostLines - 1), `${own[mostLines - 1] ?? ""} …`);
        whole = 1;
      }
      break;
    }
    lines.push(...own);
    ++whole;
  }
  const more = warnings.length - whole;
  return more === 0 ? lines : [...lines, `⚠ and ${more} more, see above`];
}

// Over the lower edge, so that no picture goes anywhere without them.
export function drawWarnings(context: CanvasRenderingContext2D, size: Size, warnings: readonly string[]): void {
  const letters = size.text * 0.85;
  const how = { size: letters, weight: 600 };
  const width = size.width - 2 * size.text;
  const lines = boundedLines(warnings, (text) => linesOf(context, text, width, how)).map((text) =>
    fitted(context, text, width),
  );
  const height = letters * 1.25;
  const bottom = size.height - size.text * 2.3;
  lines.forEach((text, i) => {
    const y = bottom - (lines.length - 1 - i) * height;
    write(context, text, size.text * 0.6, y, { ...how, colour: "#ffc24d" });
  });
}
