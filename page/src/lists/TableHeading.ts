// What stands over a column: its name and unit, which sort by it, and what its cells are filtered by.

import type { ColumnData } from "../data/PageData";
import { columnTest } from "../model/ColumnFilter";
import type { Sorting } from "../model/RowOrder";
import type { Store } from "../model/Store";
import { button, element } from "../shell/Element";


const pause = 150; // ms without a key, before what is typed filters

const numberHelp =
  "12 finds what rounds to it, 12..20 a range; > >= < <= with a number; ? what is unknown; nan what is no number";

export interface HeadingEvents {
  onSort(index: number): void;
}

function filterHelp({ kind }: ColumnData): string {
  switch (kind) {
    case "number":
      return numberHelp;
    case "flag":
      return "yes or no";
    default:
      return "A part of the text; ? what is unknown";
  }
}

function makeFilter(store: Store, column: ColumnData, index: number): HTMLInputElement {
  const input = element("input", {
    class: "list-filter",
    type: "search",
    spellcheck: "false",
    autocomplete: "off",
    placeholder: "filter",
    title: filterHelp(column),
    "aria-label": `Filter ${column.label}`,
  });
  let timer = 0;
  const apply = () => {
    clearTimeout(timer);
    const isUnderstood = input.value.trim() === "" || columnTest(column, input.value) !== null;
    input.setAttribute("aria-invalid", String(!isUnderstood));
    const columns = new Map(store.state.columns);
    columns.delete(index);
    if (input.value.trim() !== "" && isUnderstood) {
      columns.set(index, input.value.trim());
    }
    if (columns.get(index) !== store.state.columns.get(index)) {
      store.set({ columns });
    }
  };
  input.addEventListener("input", () => {
    clearTimeout(timer);
    timer = window.setTimeout(apply, pause);
  });
  input.addEventListener("change", apply);
  for (const kind of ["click", "mousedown", "keydown", "keyup"]) {
    input.addEventListener(kind, (event) => event.stopPropagation());
  }
  store.onChange((changed, state) => {
    if (changed.has("columns") && document.activeElement !== input) {
      input.value = state.columns.get(index) ?? "";
      input.setAttribute("aria-invalid", "false");
    }
  });
  return input;
}

export function makeHeading(
  store: Store,
  column: ColumnData,
  index: number,
  events: HeadingEvents,
): HTMLElement {
  const unit = column.unit === "" ? "\u00a0" : column.unit;
  const sort = button("", `Sort by ${column.label}${column.unit === "" ? "" : ` in ${column.unit}`}`, () =>
    events.onSort(index),
  );
  sort.className = "list-sort";
  sort.title = `${column.label} (${column.title}): sort by it`;
  sort.dataset["column"] = String(index);
  sort.append(
    element("span", { class: "list-name" }, column.label),
    element("span", { class: "list-unit" }, unit),
  );
  const isFiltered = index < store.data.dipoles.columns.length;
  const heading = element("div", { class: "list-head" }, sort);
  if (isFiltered) {
    heading.append(makeFilter(store, column, index));
  }
  return heading;
}

// The arrow beside the column that the list is sorted by, and what screen readers say of it.
export function showSorting(table: HTMLElement, sorting: Sorting | null): void {
  for (const sort of table.querySelectorAll<HTMLElement>(".list-sort")) {
    const isSorted = sorting !== null && sort.dataset["column"] === String(sorting.column);
    const way = isSorted ? (sorting.isFalling ? "descending" : "ascending") : "none";
    sort.dataset["way"] = way;
    sort.closest(".tabulator-col")?.setAttribute("aria-sort", way);
  }
}
