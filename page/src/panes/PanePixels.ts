// The canvases of a pane, pixel by pixel.

import type { PaneElements } from "../shell/Layout";

// Puts a pane's pictures on whole pixels of the screen, so that they are not blurred; true: their size is new.
export function fitToPixels({ frame, head, lines, marks }: PaneElements, ratio: number): boolean {
  const box = frame.getBoundingClientRect();
  const [left, top] = [Math.ceil(box.left * ratio), Math.ceil(box.top * ratio)];
  const width = Math.max(1, Math.floor(box.right * ratio) - left);
  const height = Math.max(1, Math.floor(box.bottom * ratio) - top);
  for (const { style } of [head, lines, marks]) {
    style.left = `${left / ratio - box.left}px`;
    style.top = `${top / ratio - box.top}px`;
    style.width = `${width / ratio}px`;
    style.height = `${height / ratio}px`;
  }
  if (marks.width === width && marks.height === height) {
    return false;
  }
  for (const canvas of [lines, marks]) {
    [canvas.width, canvas.height] = [width, height];
  }
  return true;
}

// Of pixels of the screen so many that there are at most `most`, in the same shape.
export function headSize(view: { width: number; height: number }, ratio: number, most: number): [number, number] {
  const [width, height] = [view.width * ratio, view.height * ratio];
  const share = Math.min(1, Math.sqrt(most / (width * height)));
  return [Math.max(1, Math.round(width * share)), Math.max(1, Math.round(height * share))];
}
