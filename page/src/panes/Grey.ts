// Grey values as levels of a picture. NiiVue lays the whole volume down anew for another window of grey values, which
// takes seconds without a GPU; so it shows a wide range, and each picture is graded from there.

export type Window = readonly [number, number]; // grey values shown as black and as white

// 256 levels tell all of its values apart.
export function isExact(range: Window, isFull: boolean): boolean {
  return !isFull || range[1] - range[0] <= 255;
}

// What NiiVue is to show of a volume that has `range`: all of it, or, of one too fine for that, what is around the
// window, so that the levels are not spent on what nobody looks at.
export function baseOf(range: Window, window: Window, isFull: boolean): Window {
  if (isExact(range, isFull)) {
    return range;
  }
  const width = window[1] - window[0];
  return [Math.max(range[0], window[0] - width / 2), Math.min(range[1], window[1] + width)];
}

// Can pictures of `base` be graded to `window` without steps that are seen? Beyond the range there is nothing to see.
export function isWithin(base: Window, window: Window, range: Window): boolean {
  const isFine = window[1] - window[0] >= (base[1] - base[0]) / 8;
  return Math.max(window[0], range[0]) >= base[0] && Math.min(window[1], range[1]) <= base[1] && isFine;
}

// For each level of a picture of `base` that for `window`. What is black stays so: around the head there is nothing.
export function gradingOf(base: Window, window: Window): Uint8ClampedArray {
  const levels = new Uint8ClampedArray(256);
  for (let level = 1; level < 256; ++level) {
    const value = base[0] + (level / 255) * (base[1] - base[0]);
    levels[level] = (255 * (value - window[0])) / (window[1] - window[0]);
  }
  return levels;
}

export function grade(context: CanvasRenderingContext2D, levels: Uint8ClampedArray): void {
  const picture = context.getImageData(0, 0, context.canvas.width, context.canvas.height);
  const { data } = picture;
  for (let i = 0; i < data.length; i += 4) {
    const level = levels[data[i] ?? 0] ?? 0;
    data[i] = data[i + 1] = data[i + 2] = level;
    data[i + 3] = 255;
  }
  context.putImageData(picture, 0, 0);
}
