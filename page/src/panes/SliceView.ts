// Where a place of the world lands in a slice pane, and back.

import type { Vector } from "../data/PageData";
import { replaced } from "../model/Vector";
import { inGrid, inWorld, type Grid } from "./Grid";

export type Axis = 0 | 1 | 2;
export type SliceName = "axial" | "coronal" | "sagittal";

export const sliceNames: readonly SliceName[] = ["axial", "coronal", "sagittal"];

// Axes of the grid: to the right of the picture (when the patient is seen from behind or above), up, and through
// the slice.
const axes: Readonly<Record<SliceName, readonly [Axis, Axis, Axis]>> = {
  axial: [0, 1, 2],
  coronal: [0, 2, 1],
  sagittal: [1, 2, 0],
};

export interface Point {
  x: number; // pixels from the left
  y: number; // pixels from the top
  depth: number; // mm from the slice, along the axis through it
}

// What a pane shows of the slice.
export interface Span {
  low: readonly [number, number]; // mm of the grid, at the left (without mirroring) and at the bottom
  high: readonly [number, number];
}

export class SliceView {
  readonly name: SliceName;
  readonly column: Axis;
  readonly row: Axis;
  readonly through: Axis;
  readonly grid: Grid;
  width = 1; // CSS pixels
  height = 1;
  scale = 1; // pixels a mm
  isMirrored = false; // the patient's left on the right
  middle: [number, number]; // mm of the grid shown in the middle of the pane

  constructor(name: SliceName, grid: Grid) {
    this.name = name;
    [this.column, this.row, this.through] = axes[name];
    this.grid = grid;
    this.middle = this.#middleOfBox();
  }

  // The scale at which the whole box is seen.
  get fittingScale(): number {
    const { low, high } = this.grid.box;
    const letters = 36; // pixels for the letters of the sides
    const across = Math.max(this.width - letters, 8) / (high[this.column] - low[this.column]);
    const up = Math.max(this.height - letters, 8) / (high[this.row] - low[this.row]);
    return Math.min(across, up);
  }

  center(): void {
    this.middle = this.#middleOfBox();
  }

  get span(): Span {
    const [across, up] = [this.width / this.scale / 2, this.height / this.scale / 2];
    const [column, row] = this.middle;
    return { low: [column - across, row - up], high: [column + across, row + up] };
  }

  // `crosshair` is that of the world.
  project(place: Vector, crosshair: Vector): Point {
    const at = inGrid(this.grid, place);
    const sign = this.isMirrored ? -1 : 1;
    return {
      x: this.width / 2 + sign * (at[this.column] - this.middle[0]) * this.scale,
      y: this.height / 2 - (at[this.row] - this.middle[1]) * this.scale,
      depth: at[this.through] - inGrid(this.grid, crosshair)[this.through],
    };
  }

  // The place on the slice through the crosshair.
  placeAt(x: number, y: number, crosshair: Vector): Vector {
    const sign = this.isMirrored ? -1 : 1;
    const column = this.middle[0] + (sign * (x - this.width / 2)) / this.scale;
    const row = this.middle[1] - (y - this.height / 2) / this.scale;
    const at = replaced(inGrid(this.grid, crosshair), this.column, column);
    return inWorld(this.grid, replaced(at, this.row, row));
  }

  #middleOfBox(): [number, number] {
    const { low, high } = this.grid.box;
    const middle = (axis: Axis): number => (low[axis] + high[axis]) / 2;
    return [middle(this.column), middle(this.row)];
  }
}
