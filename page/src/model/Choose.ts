// Choosing a dipole, wherever it is clicked: it becomes the current one, and the crosshair goes there.

import type { Store } from "./Store";

// `isAdding`: the others stay selected; a dipole that was selected already is left out again.
export function chooseRow(store: Store, row: number, isAdding: boolean): void {
  const { selection } = store.state;
  const place = store.data.dipoles.places[row];
  const crosshair = place ?? store.state.crosshair;
  if (!isAdding) {
    store.set({ selection: [row], current: row, crosshair });
  } else if (selection.includes(row)) {
    const rest = selection.filter((other) => other !== row);
    store.set({ selection: rest, current: rest.at(-1) ?? -1 });
  } else {
    store.set({ selection: [...selection, row].sort((a, b) => a - b), current: row, crosshair });
  }
}

// The dipole `step` places before or behind the current one among those that pass.
export function stepRow(store: Store, step: number): void {
  const { passing, current } = store.state;
  if (passing.length === 0) {
    return;
  }
  const at = passing.indexOf(current);
  const next = at < 0 ? (step > 0 ? 0 : passing.length - 1) : at + step;
  const row = passing[Math.min(passing.length - 1, Math.max(0, next))];
  if (row !== undefined) {
    chooseRow(store, row, false);
  }
}
