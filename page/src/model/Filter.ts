// Which dipoles pass the limits. Both ends of a window pass; what is unknown or no number passes no limit that is
// set: what cannot be judged is not shown as if it were within the limits.

import type { ColumnData, Limits, NumberCell, PageData } from "../data/PageData";
import type { State } from "./Store";

// NaN for what is unknown or no number; the infinities of a file are no numbers either.
export function numberOf(cell: unknown): number {
  return typeof cell === "number" ? cell : NaN;
}

export function isSet(limits: Limits): boolean {
  return limits.least !== null || limits.most !== null;
}

export function passes(value: number, limits: Limits): boolean {
  return (
    !isSet(limits) || (value >= (limits.least ?? -Infinity) && value <= (limits.most ?? Infinity))
  );
}

function valuesOf(data: PageData, column: number): readonly NumberCell[] | null {
  const found: ColumnData | undefined = data.dipoles.columns[column];
  return found === undefined ? null : (found.values as readonly NumberCell[]);
}

// The rows of the set that the state lets pass, in the order of the set. Dipoles without a place pass too: they
// stand in the list, though in no picture.
export function passingRows(data: PageData, state: Readonly<State>): readonly number[] {
  const { columns, roles, clusters, count } = data.dipoles;
  const limited = [
    { values: valuesOf(data, roles.fitError), limits: state.fitError },
    { values: valuesOf(data, roles.moment), limits: state.moment },
    { values: valuesOf(data, roles.latency), limits: state.latency },
  ].filter(({ limits }) => isSet(limits));
  if (state.cursor !== null) {
    const { at, width } = state.cursor;
    limited.push({
      values: valuesOf(data, roles.latency),
      limits: { least: at - width / 2, most: at + width / 2 },
    });
  }
  const wanted = state.label.toLowerCase();
  const labels = wanted === "" ? null : (columns[roles.label]?.values ?? []);
  const shown = state.areHiddenShown ? null : (columns[roles.shown]?.values ?? null);
  const rows: number[] = [];
  for (let row = 0; row < count; ++row) {
    const isPassing =
      (shown === null || shown[row] !== false) &&
      (state.isolated === 0 || clusters[row] === state.isolated) &&
      limited.every(({ values, limits }) => values !== null && passes(numberOf(values[row]), limits)) &&
      (labels === null || String(labels[row] ?? "").toLowerCase().includes(wanted));
    if (isPassing) {
      rows.push(row);
    }
  }
  return rows;
}
