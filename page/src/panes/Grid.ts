// The straight grid that slices run along: mm along the axes of the head's volume, which may stand askew in the
// world. Without a head its axes are those of the world.

import type { Matrix, PageData, Vector } from "../data/PageData";
import { identity, inverse, minus, plus, transformed, turned } from "../model/Vector";

export interface Box {
  low: Vector;
  high: Vector;
}

export interface Grid {
  fromWorld: Matrix; // keeps distances
  toWorld: Matrix;
  box: Box; // mm of the grid
}

export function gridOf(fromWorld: Matrix, box: Box): Grid {
  return { fromWorld, toWorld: inverse(fromWorld), box };
}

const border = 15; // mm around a sphere
const usual: Box = { low: [-100, -120, -80], high: [100, 100, 100] }; // room for a head

// What stands in for a head: room for the sphere, the points and every dipole that lies where a head could be.
export function gridWithoutHead(data: PageData): Grid {
  if (data.sphere === null) {
    return gridOf(identity, usual);
  }
  const { centre, radius } = data.sphere;
  const reach: Vector = [radius + border, radius + border, radius + border];
  let { low, high }: Box = { low: minus(centre, reach), high: plus(centre, reach) };
  for (const { place } of data.points) {
    low = [Math.min(low[0], place[0]), Math.min(low[1], place[1]), Math.min(low[2], place[2])];
    high = [Math.max(high[0], place[0]), Math.max(high[1], place[1]), Math.max(high[2], place[2])];
  }
  return gridOf(identity, { low, high });
}

export function inGrid(grid: Grid, place: Vector): Vector {
  return transformed(grid.fromWorld, place);
}

export function inWorld(grid: Grid, place: Vector): Vector {
  return transformed(grid.toWorld, place);
}

// The largest angle between an axis of the grid and that of the world, degrees.
export function tiltOf(grid: Grid): number {
  const cosines = ([0, 1, 2] as const).map((axis) => axisInWorld(grid, axis)[axis]);
  return (Math.acos(Math.min(1, ...cosines)) * 180) / Math.PI;
}

// World directions of the grid's axes.
export function axisInWorld(grid: Grid, axis: 0 | 1 | 2): Vector {
  return turned(grid.toWorld, [axis === 0 ? 1 : 0, axis === 1 ? 1 : 0, axis === 2 ? 1 : 0]);
}
