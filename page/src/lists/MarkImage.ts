// Thousands of small marks in one picture. Written pixel by pixel: as paths of a canvas, 30000 of them keep a
// renderer without a GPU busy for seconds.

export type Shape = "square" | "cross" | "ring";

const ringWidth = 0.3; // of the radius

const isIn: Readonly<Record<Shape, (x: number, y: number, radius: number) => boolean>> = {
  square: () => true,
  cross: (x, y) => Math.abs(x) === Math.abs(y),
  ring: (x, y, radius) => {
    const away = Math.hypot(x, y) / radius;
    return away <= 1 && away >= 1 - ringWidth;
  },
};

function pixelsOf(shape: Shape, radius: number): (readonly [x: number, y: number])[] {
  const pixels: (readonly [number, number])[] = [];
  for (let y = -radius; y <= radius; ++y) {
    for (let x = -radius; x <= radius; ++x) {
      if (isIn[shape](x, y, radius)) {
        pixels.push([x, y]);
      }
    }
  }
  return pixels;
}

// "rgb(1, 2, 3)" as a pixel of an image, red first in memory.
function pixelOf(colour: string): number {
  const [red = 0, green = 0, blue = 0] = (colour.match(/\d+/g) ?? []).map(Number);
  return (255 << 24) | (blue << 16) | (green << 8) | red;
}

export class MarkImage {
  readonly #canvas = document.createElement("canvas");
  readonly #image: ImageData;
  readonly #pixels: Uint32Array;

  // In device pixels.
  constructor(width: number, height: number) {
    this.#canvas.width = Math.max(1, Math.round(width));
    this.#canvas.height = Math.max(1, Math.round(height));
    this.#image = new ImageData(this.#canvas.width, this.#canvas.height);
    this.#pixels = new Uint32Array(this.#image.data.buffer);
  }

  // Of one shape and colour, at places that `each` tells one by one; what is no number has no mark.
  stamp(shape: Shape, radius: number, colour: string, each: (mark: (x: number, y: number) => void) => void): void {
    const { width, height } = this.#canvas;
    const shapePixels = pixelsOf(shape, Math.max(1, Math.round(radius)));
    const pixel = pixelOf(colour);
    each((x, y) => {
      if (!Number.isFinite(x) || !Number.isFinite(y)) {
        return;
      }
      const [middle, level] = [Math.round(x), Math.round(y)];
      for (const [dx, dy] of shapePixels) {
        const [column, row] = [middle + dx, level + dy];
        if (column >= 0 && column < width && row >= 0 && row < height) {
          this.#pixels[row * width + column] = pixel;
        }
      }
    });
  }

  drawAt(context: CanvasRenderingContext2D, left: number, top: number): void {
    this.#canvas.getContext("2d")?.putImageData(this.#image, 0, 0);
    context.drawImage(this.#canvas, left, top);
  }
}
