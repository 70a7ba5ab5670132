// Keys of the list, while it has the focus: they move the row that was chosen last.

import type { Store } from "../model/Store";
import type { LocalKeys } from "../shell/Keys";
import type { Table } from "./Table";
import { selectRows } from "./TableSelection";

const page = 20; // rows
const aside = 60; // pixels

export const tableKeys: LocalKeys = {
  title: "In the list",
  lines: [
    ["↑ ↓", "the row above, below"],
    ["Page ↑ ↓, Home, End", `${page} rows up or down, the first, the last one`],
    ["Shift with them", "selects all rows from there to here"],
    ["Ctrl + A", "selects all rows that are listed"],
    ["← →", "columns to the left, to the right"],
    ["Esc", "nothing selected"],
    ["in the heading: ← → ↑ ↓", "to the next column, from sorting to filtering and back, to the rows"],
  ],
};

function target(key: string, at: number, count: number): number | null {
  switch (key) {
    case "ArrowDown":
      return Math.min(at + 1, count - 1);
    case "ArrowUp":
      return Math.max(at - 1, 0);
    case "PageDown":
      return Math.min(at + page, count - 1);
    case "PageUp":
      return Math.max(at - page, 0);
    case "Home":
      return 0;
    case "End":
      return count - 1;
    default:
      return null;
  }
}

export function listenToKeys(store: Store, table: Table): void {
  table.element.addEventListener("keydown", (event) => {
    if (event.target instanceof HTMLElement && event.target.closest("input, button") !== null) {
      return;
    }
    const isMenu = event.ctrlKey || event.metaKey;
    if (isMenu && event.key.toLowerCase() === "a") {
      selectRows(store, table.order, store.state.current);
    } else if (event.key === "Escape") {
      selectRows(store, [], -1);
    } else if (!isMenu && !event.altKey && (event.key === "ArrowLeft" || event.key === "ArrowRight")) {
      table.scrollAside(event.key === "ArrowLeft" ? -aside : aside);
    } else {
      const at = table.order.indexOf(store.state.current);
      const next = isMenu || event.altKey ? null : target(event.key, at, table.order.length);
      const row = next === null ? undefined : table.order[next];
      if (row === undefined) {
        return;
      }
      table.choose(row, { isRange: event.shiftKey, isAdded: false });
      table.scrollTo(row);
    }
    event.preventDefault();
    event.stopPropagation();
  });
}
