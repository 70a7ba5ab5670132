// What an atlas calls a place: the label of the voxel around it, else the nearest one within its reach.

import { inverse, transformed } from "../model/Vector";
import type { AtlasData, FrameData, Matrix, Vector } from "./PageData";

export interface NearLabel {
  name: string;
  distance: number; // mm to the middle of the nearest voxel with a label; 0: the place lies in one
}

interface LabelVolume {
  dimensions: Vector;
  toMm: Matrix; // from voxel indices
  labels: Uint8Array | Uint16Array;
}

async function unpacked(base64: string): Promise<ArrayBuffer> {
  const packed = Uint8Array.from(atob(base64), (letter) => letter.charCodeAt(0));
  const stream = new Blob([packed]).stream().pipeThrough(new DecompressionStream("gzip"));
  return new Response(stream).arrayBuffer();
}

// Of a NIfTI-1 file with the lower byte first, as `dipole page` writes it.
function volumeOf(file: ArrayBuffer): LabelVolume {
  const header = new DataView(file);
  const uint16 = 512;
  const dimension = (axis: number): number => header.getInt16(42 + 2 * axis, true);
  const dimensions: Vector = [dimension(0), dimension(1), dimension(2)];
  const count = dimensions[0] * dimensions[1] * dimensions[2];
  const offset = header.getFloat32(108, true);
  const rows = Array.from({ length: 12 }, (_, i) => header.getFloat32(280 + 4 * i, true));
  const isWide = header.getInt16(70, true) === uint16;
  const labels = isWide ? new Uint16Array(file, offset, count) : new Uint8Array(file, offset, count);
  return { dimensions, toMm: [...rows, 0, 0, 0, 1], labels };
}

export class AtlasLookup {
  readonly data: AtlasData;
  readonly #volume: LabelVolume;
  readonly #fromMm: Matrix;
  readonly #fromWorld: Matrix;

  private constructor(data: AtlasData, fromWorld: Matrix, volume: LabelVolume) {
    this.data = data;
    this.#volume = volume;
    this.#fromMm = inverse(volume.toMm);
    this.#fromWorld = fromWorld;
  }

  // Null: nothing is known to lead from the world to the atlas.
  static async load(text: string, data: AtlasData, frames: readonly FrameData[]): Promise<AtlasLookup | null> {
    const frame = frames.find(({ name }) => name === "mni");
    return frame === undefined ? null : new AtlasLookup(data, frame.fromWorld, volumeOf(await unpacked(text)));
  }

  // Of a place of the world; null: no label is within reach.
  at(place: Vector): NearLabel | null {
    const mni = transformed(this.#fromWorld, place);
    const index = transformed(this.#fromMm, mni);
    const own = this.#labelAt(Math.floor(index[0] + 0.5), Math.floor(index[1] + 0.5), Math.floor(index[2] + 0.5));
    return own !== 0 ? { name: this.#nameOf(own), distance: 0 } : this.#nearest(mni, index);
  }

  say(place: Vector): string {
    const found = this.at(place);
    if (found === null) {
      return `no label within ${this.data.reach} mm`;
    }
    return found.distance === 0 ? found.name : `near ${found.name}, ${found.distance.toFixed(1)} mm`;
  }

  #nameOf(label: number): string {
    return this.data.names[String(label)] ?? String(label);
  }

  #labelAt(i: number, j: number, k: number): number {
    const [width, height, depth] = this.#volume.dimensions;
    const isInside = i >= 0 && j >= 0 && k >= 0 && i < width && j < height && k < depth;
    return isInside ? (this.#volume.labels[i + width * (j + height * k)] ?? 0) : 0;
  }

  // Of labels that are equally near, that with the smallest number.
  #nearest(mni: Vector, index: Vector): NearLabel | null {
    const { reach } = this.data;
    const { dimensions, toMm } = this.#volume;
    const range = (axis: 0 | 1 | 2): [number, number] => {
      const row = this.#fromMm.slice(4 * axis, 4 * axis + 3);
      const steps = reach * Math.hypot(...row);
      const last = dimensions[axis] - 1;
      return [Math.max(0, Math.ceil(index[axis] - steps)), Math.min(last, Math.floor(index[axis] + steps))];
    };
    const [[i0, i1], [j0, j1], [k0, k1]] = [range(0), range(1), range(2)];
    let best = 0;
    let square = reach * reach;
    for (let k = k0; k <= k1; ++k) {
      for (let j = j0; j <= j1; ++j) {
        for (let i = i0; i <= i1; ++i) {
          const label = this.#labelAt(i, j, k);
          if (label !== 0) {
            const [x, y, z] = transformed(toMm, [i, j, k]);
            const away = (x - mni[0]) ** 2 + (y - mni[1]) ** 2 + (z - mni[2]) ** 2;
            if (away < square || (away === square && best !== 0 && label < best)) {
              [best, square] = [label, away];
            }
          }
        }
      }
    }
    return best === 0 ? null : { name: this.#nameOf(best), distance: Math.sqrt(square) };
  }
}
