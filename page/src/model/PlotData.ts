// What the plots show of the dipoles: points over latency, and how many dipoles have an error of about so much.

import type { PageData } from "../data/PageData";
import { numberOf } from "./Filter";

// Rows whose latency is known, in its order.
export function byLatency(data: PageData): number[] {
  const values = data.dipoles.columns[data.dipoles.roles.latency]?.values ?? [];
  const rows: number[] = [];
  values.forEach((value, row) => {
    if (Number.isFinite(numberOf(value))) {
      rows.push(row);
    }
  });
  return rows.sort((a, b) => numberOf(values[a]) - numberOf(values[b]));
}

export function finiteValues(data: PageData, column: number): number[] {
  return (data.dipoles.columns[column]?.values ?? []).map(numberOf);
}

// 1, 2 or 5 times a power of ten: the least that is not below `width`.
export function roundWidth(width: number): number {
  const power = 10 ** Math.floor(Math.log10(width));
  const digit = [1, 2, 5].find((step) => step * power >= width * (1 - 1e-9)) ?? 10;
  return digit * power;
}

export interface Bins {
  first: number; // lower edge of the first one
  width: number;
  count: number;
}

const usualBins = 30;

// For all finite values; a value on an edge belongs to the bin above it. None: there is no such value, or they lie
// so far apart that the edges of bins are no numbers.
export function binsOf(values: readonly number[]): Bins | null {
  const finite = values.filter(Number.isFinite);
  if (finite.length === 0) {
    return null;
  }
  const least = finite.reduce((a, b) => Math.min(a, b));
  const most = finite.reduce((a, b) => Math.max(a, b));
  const width = most > least ? roundWidth((most - least) / usualBins) : 1;
  const first = Math.floor(least / width) * width;
  const count = Math.floor((most - first) / width) + 1;
  const isNumber = Number.isFinite(first) && Number.isFinite(first + width * count);
  return isNumber && count <= 3 * usualBins ? { first, width, count } : null;
}

export function binOf({ first, width, count }: Bins, value: number): number {
  return Math.min(count - 1, Math.max(0, Math.floor((value - first) / width)));
}

export function counted(bins: Bins, values: readonly number[], rows: Iterable<number>): number[] {
  const counts = new Array<number>(bins.count).fill(0);
  for (const row of rows) {
    const value = values[row] ?? NaN;
    if (Number.isFinite(value)) {
      const bin = binOf(bins, value);
      counts[bin] = (counts[bin] ?? 0) + 1;
    }
  }
  return counts;
}
