// Places and directions in space.

import type { Matrix, Vector } from "../data/PageData";

export function plus(a: Vector, b: Vector): Vector {
  return [a[0] + b[0], a[1] + b[1], a[2] + b[2]];
}

export function minus(a: Vector, b: Vector): Vector {
  return [a[0] - b[0], a[1] - b[1], a[2] - b[2]];
}

export function times(a: Vector, factor: number): Vector {
  return [a[0] * factor, a[1] * factor, a[2] * factor];
}

export function dot(a: Vector, b: Vector): number {
  return a[0] * b[0] + a[1] * b[1] + a[2] * b[2];
}

export function length(a: Vector): number {
  return Math.hypot(a[0], a[1], a[2]);
}

export function replaced(a: Vector, axis: 0 | 1 | 2, value: number): Vector {
  return [axis === 0 ? value : a[0], axis === 1 ? value : a[1], axis === 2 ? value : a[2]];
}

export const identity: Matrix = [1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1];

function at(matrix: Matrix, row: number, column: number): number {
  return matrix[4 * row + column] ?? NaN;
}

function rowTimes(matrix: Matrix, row: number, a: Vector): number {
  return at(matrix, row, 0) * a[0] + at(matrix, row, 1) * a[1] + at(matrix, row, 2) * a[2];
}

// A direction; what the matrix moves is left out.
export function turned(matrix: Matrix, a: Vector): Vector {
  return [rowTimes(matrix, 0, a), rowTimes(matrix, 1, a), rowTimes(matrix, 2, a)];
}

// A place.
export function transformed(matrix: Matrix, a: Vector): Vector {
  return plus(turned(matrix, a), [at(matrix, 0, 3), at(matrix, 1, 3), at(matrix, 2, 3)]);
}

// Of a matrix whose last row is 0 0 0 1.
export function inverse(matrix: Matrix): Matrix {
  const m = (row: number, column: number): number => at(matrix, row, column);
  const minor = (r: number, c: number): number => {
    const [r0, r1] = [(r + 1) % 3, (r + 2) % 3];
    const [c0, c1] = [(c + 1) % 3, (c + 2) % 3];
    return m(r0, c0) * m(r1, c1) - m(r0, c1) * m(r1, c0);
  };
  const determinant = m(0, 0) * minor(0, 0) + m(0, 1) * minor(0, 1) + m(0, 2) * minor(0, 2);
  const linear = [0, 1, 2].map((row) => [0, 1, 2].map((column) => minor(column, row) / determinant));
  const rows = linear.map((row) => {
    const moved = -row.reduce((sum, value, column) => sum + value * m(column, 3), 0);
    return [...row, moved];
  });
  return [...rows.flat(), 0, 0, 0, 1];
}
