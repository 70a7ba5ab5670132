// What a number of dipoles have in common, by the definitions of the clusters, which the conventions tell.
// The spread is the distance of the dipoles from their mean place; the cone around their mean orientation is the
// smallest that holds 95 percent of the orientations: of fewer than 20 it holds all. It takes no model, and is no
// confidence cone of the mean.

import type { ColumnData, PageData, Vector } from "../data/PageData";
import { numberOf } from "./Filter";
import { dot, length, minus, times } from "./Vector";

const coneShare = 0.95;
const leastResultant = 1e-12; // below is rounding

export interface Spread {
  count: number; // dipoles with a place
  mean: Vector;
  rms: number; // mm
  largest: number; // mm
}

export interface Orientation {
  count: number; // dipoles with an orientation
  resultant: number; // length of the mean of the unit vectors, 0 (all around) to 1 (all alike)
  mean: Vector | null; // of unit length, in the head frame; none when they cancel each other
  cone: number; // degrees
}

export interface Summary {
  count: number; // known and finite
  mean: number;
  deviation: number; // standard deviation of a sample, divided by count - 1; NaN of one
  least: number;
  most: number;
}

function meanVector(vectors: readonly Vector[]): Vector {
  const mean = (axis: 0 | 1 | 2) => vectors.reduce((sum, vector) => sum + vector[axis], 0) / vectors.length;
  return [mean(0), mean(1), mean(2)];
}

function unitOf(vector: Vector): Vector | null {
  const size = length(vector);
  return size > 0 ? times(vector, 1 / size) : null;
}

function known(vectors: readonly (Vector | null)[], rows: readonly number[]): Vector[] {
  return rows.map((row) => vectors[row] ?? null).filter((vector) => vector !== null);
}

export function spreadOf(data: PageData, rows: readonly number[]): Spread | null {
  const places = known(data.dipoles.places, rows);
  if (places.length === 0) {
    return null;
  }
  const mean = meanVector(places);
  let squares = 0;
  let largest = 0;
  for (const place of places) {
    const distance = length(minus(place, mean));
    squares += distance * distance;
    largest = Math.max(largest, distance);
  }
  return { count: places.length, mean, rms: Math.sqrt(squares / places.length), largest };
}

// By the tangent, which is exact for small angles too.
export function degreesBetween(a: Vector, b: Vector): number {
  const across = length([
    a[1] * b[2] - a[2] * b[1],
    a[2] * b[0] - a[0] * b[2],
    a[0] * b[1] - a[1] * b[0],
  ]);
  return (Math.atan2(across, dot(a, b)) * 180) / Math.PI;
}

// Of length 1, in the head frame. Not of the arrows, which have no length where their moment is unknown.
function directionsOf(data: PageData, rows: readonly number[]): Vector[] {
  const titles = ["orientation_x_left", "orientation_y_up", "orientation_z_front"];
  const [x, y, z] = titles.map((wanted) => data.dipoles.columns.find(({ title }) => title === wanted));
  const component = (column: ColumnData | undefined, row: number) => numberOf(column?.values[row]);
  return rows
    .map((row): Vector => [component(x, row), component(y, row), component(z, row)])
    .map((vector) => (Number.isFinite(length(vector)) ? unitOf(vector) : null))
    .filter((direction) => direction !== null);
}

export function orientationOf(data: PageData, rows: readonly number[]): Orientation | null {
  const directions = directionsOf(data, rows);
  const count = directions.length;
  if (count === 0) {
    return null;
  }
  const sum = meanVector(directions);
  const resultant = Math.min(1, length(sum));
  const mean = resultant < leastResultant ? null : unitOf(sum);
  if (mean === null) {
    return { count, resultant, mean, cone: NaN };
  }
  const angles = directions.map((direction) => degreesBetween(direction, mean)).sort((a, b) => a - b);
  return { count, resultant, mean, cone: angles[Math.ceil(coneShare * count) - 1] ?? NaN };
}

export function summaryOf(data: PageData, column: number, rows: readonly number[]): Summary | null {
  const values = data.dipoles.columns[column]?.values ?? [];
  let count = 0;
  let mean = 0;
  let squares = 0; // of the distances from the mean, brought along value by value
  let least = Infinity;
  let most = -Infinity;
  for (const row of rows) {
    const value = numberOf(values[row]);
    if (Number.isFinite(value)) {
      ++count;
      const away = value - mean;
      mean += away / count;
      squares += away * (value - mean);
      least = Math.min(least, value);
      most = Math.max(most, value);
    }
  }
  const deviation = count > 1 ? Math.sqrt(squares / (count - 1)) : NaN;
  return count === 0 ? null : { count, mean, deviation, least, most };
}
