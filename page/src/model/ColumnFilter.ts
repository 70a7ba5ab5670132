// What is typed over a column of the list: which of its cells it lets pass.
//
// Numbers: "12" finds what rounds to it (11.5 to 12.5; "12.0" finds 11.95 to 12.05), "12..20", ">12", ">=12",
// "<12", "<=12", "?" what is unknown, "nan" what the file holds instead of a number,
// "none" what is in no cluster. Texts: a part of them, large
// or small; "?" alone what is unknown. Switches: "yes", "no".

import type { ColumnData } from "../data/PageData";
import { inNone } from "./AllColumns";
import { typedNumber } from "./TypedNumber";

export type CellTest = (cell: unknown) => boolean;

export const unknownMark = "?";

// Half of the last digit that is written.
function halfDigit(text: string): number {
  const [, decimals = "", exponent = "0"] = /^[^.,e]*[.,]?(\d*)(?:e([+-]?\d+))?$/i.exec(text) ?? [];
  return 0.5 * 10 ** (Number(exponent) - decimals.length);
}

function ofNumber(test: (value: number) => boolean): CellTest {
  return (cell) => typeof cell === "number" && test(cell);
}

function numberTest(text: string): CellTest | null {
  if (["nan", "inf", "-inf", inNone].includes(text.toLowerCase())) {
    return (cell) => cell === text.toLowerCase();
  }
  const between = text.split("..").map((part) => typedNumber(part.trim()));
  const [low = NaN, high = NaN] = between;
  if (between.length === 2 && !Number.isNaN(low) && !Number.isNaN(high)) {
    return ofNumber((value) => value >= low && value <= high);
  }
  const [, sign = "", rest = ""] = /^(<=|>=|<|>|)\s*(.*)$/s.exec(text) ?? [];
  const number = typedNumber(rest);
  if (Number.isNaN(number)) {
    return null;
  }
  switch (sign) {
    case "<":
      return ofNumber((value) => value < number);
    case ">":
      return ofNumber((value) => value > number);
    case "<=":
      return ofNumber((value) => value <= number);
    case ">=":
      return ofNumber((value) => value >= number);
    default: {
      const half = halfDigit(rest);
      return ofNumber((value) => value === number || (value >= number - half && value < number + half));
    }
  }
}

// Nothing when the text is not understood; then it filters nothing, and has to be marked.
export function columnTest(column: ColumnData, text: string): CellTest | null {
  const wanted = text.trim();
  if (wanted === unknownMark) {
    return (cell) => cell === null || cell === undefined;
  }
  if (column.kind === "number") {
    return numberTest(wanted);
  }
  const part = wanted.toLowerCase();
  if (column.kind === "flag") {
    const isYes = "yes".startsWith(part);
    return isYes || "no".startsWith(part) ? (cell) => cell === isYes : null;
  }
  return (cell) => typeof cell === "string" && cell.toLowerCase().includes(part);
}
