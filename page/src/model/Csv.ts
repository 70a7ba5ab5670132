// Dipoles as a table of text, as `dipole convert` writes one: quoted as RFC 4180 says, UTF-8, lines end with a line
// feed, every digit, nothing for what is unknown.
//
// A spreadsheet takes a text that begins with = + - @, a tab or a carriage return for a formula, and drops a ' in
// front. Such a text gets a ' in front, one that begins with a ' too; the tool takes it off again.

import type { ColumnData } from "../data/PageData";
import { exactNumber } from "./CellText";

function guarded(text: string): string {
  return /^[=+\-@'\t\r]/.test(text) ? `'${text}` : text;
}

function quoted(text: string): string {
  return text === "" || /[",\r\n]/.test(text) ? `"${text.replaceAll('"', '""')}"` : text;
}

function cellOf({ kind, values }: ColumnData, row: number): string {
  const value = values[row];
  if (value === null || value === undefined) {
    return "";
  }
  if (typeof value === "boolean") {
    return value ? "yes" : "no";
  }
  if (typeof value === "number") {
    return exactNumber(value);
  }
  return kind === "number" ? value : quoted(guarded(value));
}

export function tableOf(columns: readonly ColumnData[], rows: readonly number[]): string {
  const lines = [columns.map(({ title }) => quoted(title)).join(",")];
  for (const row of rows) {
    lines.push(columns.map((column) => cellOf(column, row)).join(","));
  }
  return `${lines.join("\n")}\n`;
}
