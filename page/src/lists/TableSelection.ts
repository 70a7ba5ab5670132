// What a click or a key in the list selects.

import { chooseRow } from "../model/Choose";
import type { Store } from "../model/Store";

export interface Choice {
  isRange: boolean; // all from the row that was chosen last
  isAdded: boolean; // to what is selected, or taken from it
}

export function selectRows(store: Store, rows: readonly number[], current: number): void {
  const place = current === -1 ? null : (store.data.dipoles.places[current] ?? null);
  const selection = [...new Set(rows)].sort((a, b) => a - b);
  store.set(place === null ? { selection, current } : { selection, current, crosshair: place });
}

// Selected, but no limit lets them pass: they are in no picture and in no row.
export function notListed(store: Store): readonly number[] {
  const isPassing = new Set(store.state.passing);
  return store.state.selection.filter((row) => !isPassing.has(row));
}

function range(order: readonly number[], from: number, to: number): readonly number[] {
  const first = order.indexOf(from);
  const last = order.indexOf(to);
  return first === -1 || last === -1 ? [to] : order.slice(Math.min(first, last), Math.max(first, last) + 1);
}

// `order` is that of the list;
export function chooseInList(store: Store, order: readonly number[], row: number, choice: Choice): void {
  const { selection, current } = store.state;
  if (choice.isRange) {
    const last = ranges.get(store);
    const anchor = last?.end === current ? last.anchor : current;
    const chosen = anchor === -1 ? [row] : range(order, anchor, row);
    selectRows(store, choice.isAdded ? [...selection, ...chosen] : chosen, row);
    ranges.set(store, { anchor: anchor === -1 ? row : anchor, end: row });
  } else {
    chooseRow(store, row, choice.isAdded);
  }
}

// The range that was chosen last: while its end is the current row, the next one begins where it began.
const ranges = new WeakMap<Store, { anchor: number; end: number }>();
