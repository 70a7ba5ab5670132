// Rows in the order of one column.

import type { ColumnData } from "../data/PageData";
import { numberOf } from "./Filter";

export interface Sorting {
  column: number;
  isFalling: boolean;
}

// Ranks of texts, so that each is compared once and not with every row that it meets.
function textRanks(values: ColumnData["values"]): Float64Array {
  const texts = [...new Set(values.filter((value): value is string => typeof value === "string"))];
  const collator = new Intl.Collator(undefined, { numeric: true });
  // Long texts are told apart by their beginning: comparing the whole of many takes seconds.
  const keys = new Map(texts.map((text) => [text, text.slice(0, 200)]));
  texts.sort((a, b) => collator.compare(keys.get(a) ?? "", keys.get(b) ?? ""));
  const ranks = new Map(texts.map((text, rank) => [text, rank]));
  return Float64Array.from(values, (value) => (typeof value === "string" ? (ranks.get(value) ?? NaN) : NaN));
}

const infinities: Readonly<Record<string, number>> = { inf: Infinity, "-inf": -Infinity };

// NaN: unknown, or no number.
export function sortKeys({ kind, values }: ColumnData): Float64Array {
  switch (kind) {
    case "number":
      return Float64Array.from(values, (value) => infinities[String(value)] ?? numberOf(value));
    case "flag":
      return Float64Array.from(values, (value) => (typeof value === "boolean" ? Number(value) : NaN));
    default:
      return textRanks(values);
  }
}

// What has no key comes last in both directions; equals keep the order of the set.
export function sorted(rows: readonly number[], keys: Float64Array, isFalling: boolean): number[] {
  const sign = isFalling ? -1 : 1;
  return [...rows].sort((a, b) => {
    const first = keys[a] ?? NaN;
    const second = keys[b] ?? NaN;
    if (first === second) {
      return a - b;
    }
    if (Number.isNaN(first) || Number.isNaN(second)) {
      return Number(Number.isNaN(first)) - Number(Number.isNaN(second)) || a - b;
    }
    return first < second ? -sign : sign;
  });
}
