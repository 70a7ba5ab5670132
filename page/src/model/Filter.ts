// Which dipoles pass the limits, and what each limit removes. Both ends of a window pass; what is unknown or no
// number passes no limit that is set: what cannot be judged is not shown as if it were within the limits.

import type { Limits, PageData } from "../data/PageData";
import { allColumns } from "./AllColumns";
import { columnTest } from "./ColumnFilter";
import { isSet, limitText, passes, turnedOver } from "./Limits";
import type { State } from "./Store";

// NaN for what is unknown or no number; the infinities of a file are no numbers either.
export function numberOf(cell: unknown): number {
  return typeof cell === "number" ? cell : NaN;
}

// A limit in words, and which rows it lets pass.
interface Condition {
  limit: string;
  isPassing: (row: number) => boolean;
}

function windowOf(data: PageData, column: number, limit: string, limits: Limits): Condition {
  const values = data.dipoles.columns[column]?.values ?? [];
  return { limit, isPassing: (row) => passes(numberOf(values[row]), limits) };
}

function fitLimit({ fitError, isGoodness }: Readonly<State>): string {
  return isGoodness
    ? `goodness of fit ${limitText(turnedOver(fitError), "%")}`
    : `fit error ${limitText(fitError, "%")}`;
}

function windows(data: PageData, state: Readonly<State>): Condition[] {
  const { roles, columns } = data.dipoles;
  const found: Condition[] = [];
  if (isSet(state.fitError)) {
    found.push(windowOf(data, roles.fitError, fitLimit(state), state.fitError));
  }
  if (isSet(state.moment)) {
    const unit = columns[roles.moment]?.unit ?? "";
    found.push(windowOf(data, roles.moment, `moment ${limitText(state.moment, unit)}`, state.moment));
  }
  if (isSet(state.latency)) {
    found.push(windowOf(data, roles.latency, `latency ${limitText(state.latency, "ms")}`, state.latency));
  }
  if (state.cursor !== null) {
    const { at, width } = state.cursor;
    const limits = { least: at - width / 2, most: at + width / 2 };
    found.push(windowOf(data, roles.latency, `latency cursor ${Number(at.toPrecision(6))} ms, ${width} ms wide`, limits));
  }
  return found;
}

function choices(data: PageData, state: Readonly<State>): Condition[] {
  const { columns, roles, clusters } = data.dipoles;
  const found: Condition[] = [];
  const shown = columns[roles.shown]?.values;
  if (!state.areHiddenShown && shown?.includes(false) === true) {
    found.push({ limit: "hidden by its own switch", isPassing: (row) => shown[row] !== false });
  }
  if (state.isolated !== 0) {
    found.push({
      limit: `cluster ${state.isolated} alone`,
      isPassing: (row) => clusters[row] === state.isolated,
    });
  }
  if (state.label !== "") {
    const wanted = state.label.toLowerCase();
    const labels = columns[roles.label]?.values ?? [];
    found.push({
      limit: `label with "${state.label}"`,
      isPassing: (row) => String(labels[row] ?? "").toLowerCase().includes(wanted),
    });
  }
  for (const [index, text] of state.columns) {
    const column = allColumns(data)[index];
    const test = column === undefined ? null : columnTest(column, text);
    if (column !== undefined && test !== null) {
      found.push({ limit: `${column.label}: ${text}`, isPassing: (row) => test(column.values[row]) });
    }
  }
  return found;
}

function conditions(data: PageData, state: Readonly<State>): readonly Condition[] {
  return [...windows(data, state), ...choices(data, state)];
}

// The rows of the set that the state lets pass, in the order of the set. Dipoles without a place pass too: they
// stand in the list, though in no picture.
export function passingRows(data: PageData, state: Readonly<State>): readonly number[] {
  const all = conditions(data, state);
  const rows: number[] = [];
  for (let row = 0; row < data.dipoles.count; ++row) {
    if (all.every(({ isPassing }) => isPassing(row))) {
      rows.push(row);
    }
  }
  return rows;
}

export interface Removed {
  limit: string;
  count: number;
}

// What each limit that is set removes, in order: a dipole counts with the first limit that it does not pass, so
// that all counts and what passes make the whole set.
export function removedBy(data: PageData, state: Readonly<State>): readonly Removed[] {
  const all = conditions(data, state);
  const counts = all.map(() => 0);
  for (let row = 0; row < data.dipoles.count; ++row) {
    const first = all.findIndex(({ isPassing }) => !isPassing(row));
    if (first !== -1) {
      counts[first] = (counts[first] ?? 0) + 1;
    }
  }
  return all.map(({ limit }, index) => ({ limit, count: counts[index] ?? 0 }));
}
