// How the value of a cell is written: short in the list, exact beside it and in files.

import type { ColumnData } from "../data/PageData";
import { unknownMark } from "./ColumnFilter";

const decimalsOfUnit: Readonly<Record<string, number>> = { mm: 1, ms: 1, "%": 1, nAm: 1 };

// Every digit that the value has; "-0" keeps its sign.
export function exactNumber(value: number): string {
  return Object.is(value, -0) ? "-0" : String(value);
}

function decimalsOf(column: ColumnData): number {
  const areWhole = column.values.every((value) => typeof value !== "number" || Number.isInteger(value));
  return areWhole && (decimalsOfUnit[column.unit] ?? 0) === 0 ? 0 : (decimalsOfUnit[column.unit] ?? 3);
}

// `decimals` digits behind the point, but never so few that a small value looks like 0.
export function roundedNumber(value: number, decimals: number): string {
  const size = Math.abs(value);
  if (size !== 0 && size < 10 ** -decimals) {
    return value.toPrecision(2);
  }
  return size >= 1e7 ? value.toPrecision(6) : value.toFixed(decimals);
}

export type CellText = (row: number) => string;

export function shownTexts(column: ColumnData): CellText {
  const decimals = column.kind === "number" ? decimalsOf(column) : 0;
  return (row) => {
    const value = column.values[row];
    if (value === null || value === undefined) {
      return unknownMark;
    }
    if (typeof value === "boolean") {
      return value ? "yes" : "no";
    }
    return typeof value === "number" ? roundedNumber(value, decimals) : value;
  };
}

// The whole of it, for people.
export function wholeText(column: ColumnData, row: number): string {
  const value = column.values[row];
  if (value === null || value === undefined) {
    return "unknown";
  }
  if (typeof value === "boolean") {
    return value ? "yes" : "no";
  }
  if (typeof value === "string") {
    return value;
  }
  return column.unit === "" ? exactNumber(value) : `${exactNumber(value)} ${column.unit}`;
}
