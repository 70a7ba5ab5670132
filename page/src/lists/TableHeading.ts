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
    tabindex: "-1",
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
  for (const kind of ["click", "mousedown", "keyup"]) {
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
  sort.tabIndex = -1;
  sort.title = `${column.label} (${column.title}): sort by it`;
  sort.dataset["column"] = String(index);
  sort.append(
    element("span", { class: "list-name" }, column.label),
    element("span", { class: "list-unit" }, unit),
  );
  return element("div", { class: "list-head" }, sort, makeFilter(store, column, index));
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

// The headings are one stop of the Tab key, not two for each column: arrow keys lead from one to the other.
const stops = { sort: ".list-sort", filter: ".list-filter" } as const;

function shownHeadings(table: HTMLElement): HTMLElement[] {
  const all = [...table.querySelectorAll<HTMLElement>(".tabulator-col")];
  return all.filter((heading) => heading.offsetWidth > 0);
}

// Brought into sight by scrolling the rows, which the headings follow.
function stopAt(table: HTMLElement, stop: HTMLElement | null | undefined): void {
  const holder = table.querySelector(".tabulator-tableholder");
  const heading = stop?.closest<HTMLElement>(".tabulator-col");
  if (!stop || !heading || holder === null) {
    return;
  }
  const left = heading.offsetLeft;
  const most = left + heading.offsetWidth - holder.clientWidth;
  holder.scrollLeft = Math.min(left, Math.max(most, holder.scrollLeft));
  table.querySelector(`${stops.sort}[tabindex="0"], ${stops.filter}[tabindex="0"]`)?.setAttribute("tabindex", "-1");
  stop.tabIndex = 0;
  stop.focus({ preventScroll: true });
}

export function focusFirstFilter(table: HTMLElement): void {
  const filters = shownHeadings(table).map((heading) => heading.querySelector<HTMLElement>(stops.filter));
  stopAt(table, filters.find((filter) => filter !== null));
}

// In a text arrows go on at its ends only.
function isWithinText({ target, key }: KeyboardEvent): boolean {
  if (!(target instanceof HTMLInputElement)) {
    return false;
  }
  const { selectionStart, selectionEnd, value } = target;
  const end = key === "ArrowLeft" ? 0 : value.length;
  return selectionStart !== selectionEnd || selectionStart !== end;
}

function onHeadingKey(table: HTMLElement, toRows: () => void, event: KeyboardEvent): void {
  const { target, key, ctrlKey, metaKey, altKey } = event;
  const isFilter = target instanceof HTMLElement && target.matches(stops.filter);
  if (!(target instanceof HTMLElement) || (!isFilter && !target.matches(stops.sort)) || ctrlKey || metaKey || altKey) {
    return;
  }
  const headings = shownHeadings(table);
  const own = headings.findIndex((heading) => heading.contains(target));
  const step = key === "ArrowRight" ? 1 : key === "ArrowLeft" ? -1 : 0;
  if (step !== 0) {
    if (isWithinText(event)) {
      return;
    }
    stopAt(table, headings[own + step]?.querySelector<HTMLElement>(isFilter ? stops.filter : stops.sort));
  } else if (key === "ArrowUp") {
    stopAt(table, headings[own]?.querySelector<HTMLElement>(stops.sort));
  } else if (key === "ArrowDown") {
    const below = isFilter ? null : headings[own]?.querySelector<HTMLElement>(stops.filter);
    if (below) {
      stopAt(table, below);
    } else {
      toRows();
    }
  } else {
    return;
  }
  event.preventDefault();
  event.stopPropagation();
}

export function listenToHeadings(table: HTMLElement, toRows: () => void): void {
  table.querySelector(stops.sort)?.setAttribute("tabindex", "0");
  table.addEventListener("keydown", (event) => onHeadingKey(table, toRows, event));
}
