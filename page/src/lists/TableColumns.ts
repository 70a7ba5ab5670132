// The columns of the list: one for each of the set's, with the cluster of a dipole behind them.

import type { CellComponent, ColumnDefinition } from "tabulator-tables";
import type { ColumnData, PageData } from "../data/PageData";
import { allColumns } from "../model/AllColumns";
import { shownTexts, wholeText } from "../model/CellText";
import { element } from "../shell/Element";
import { cut } from "../model/Foreign";
import { foreign } from "./Foreign";
import type { RowData } from "./TableOrder";

// Of the page's letters:
const charWidth = 0.53; // a digit in the list
const padding = 1.5;
const patchWidth = 1.4;

const mostChars = 28;
const titleLength = 1000; // characters of a text that a title shows
const cellLength = 60;

// What a dipole is told by comes first; all others follow as in files.
function ranked({ dipoles }: PageData): number[] {
  const { number, label, latency, moment, fitError, atlasLabel, atlasDistance } = dipoles.roles;
  const all = dipoles.columns.map((_, index) => index);
  const first = [number, label, latency, moment, fitError, atlasLabel, atlasDistance];
  return [...new Set([...first.filter((index) => index >= 0), ...all])];
}

export interface ListColumns {
  columns: readonly ColumnData[]; // the set's, and the cluster's
  order: readonly number[]; // of them
}

export function listColumns(data: PageData): ListColumns {
  const columns = allColumns(data);
  const order = ranked(data);
  if (columns.length > order.length) {
    order.splice(Math.min(order.length, 5), 0, order.length);
  }
  return { columns, order };
}

// Wide enough for nearly all cells: the longest hundredth may be cut.
function lettersOf(column: ColumnData, count: number, text: (row: number) => string): number {
  const step = Math.max(1, Math.floor(count / 500));
  const lengths: number[] = [];
  for (let row = 0; row < count; row += step) {
    lengths.push(text(row).length);
  }
  lengths.sort((a, b) => a - b);
  const usual = lengths[Math.floor(lengths.length * 0.99)] ?? 0;
  const words = column.label.split(" ").map((word) => word.length);
  const heading = Math.max(...words, Math.ceil(column.label.length / 2), column.unit.length) + 2;
  const patch = column.kind === "colour" ? patchWidth : 0;
  return Math.min(mostChars, Math.max(usual, heading, 5)) * charWidth + padding + patch;
}

function cellNode(column: ColumnData, row: number, text: string): Node {
  if (column.kind === "text") {
    const cell = foreign(text, cellLength);
    cell.title = cut(wholeText(column, row), titleLength);
    return cell;
  }
  const cell = element("span", { title: wholeText(column, row) }, text);
  if (column.kind === "colour" && /^#[0-9a-f]{6,8}$/i.test(text)) {
    const patch = element("span", { class: "list-patch" });
    patch.style.backgroundColor = `#${text.slice(-6)}`;
    return element("span", {}, patch, cell);
  }
  if (column.values[row] === null) {
    cell.className = "unknown";
  }
  return cell;
}

export type MakeHeading = (column: ColumnData, index: number) => HTMLElement;

export function columnDefinitions(
  { columns, order }: ListColumns,
  count: number,
  letters: number, // pixels, the size of the page's letters
  makeHeading: MakeHeading,
): ColumnDefinition[] {
  return order.map((index) => {
    const column = columns[index] as ColumnData;
    const text = shownTexts(column);
    const isNumber = column.kind === "number";
    return {
      title: "",
      field: `c${index}`,
      hozAlign: isNumber ? "right" : "left",
      headerHozAlign: isNumber ? "right" : "left",
      width: Math.round(lettersOf(column, count, text) * letters),
      cssClass: isNumber ? "list-number" : "list-text",
      titleFormatter: () => makeHeading(column, index),
      formatter: (cell: CellComponent) => {
        const { row } = cell.getData() as RowData;
        return cellNode(column, row, text(row)) as HTMLElement;
      },
    };
  });
}
