// What stands over the list: how many dipoles it shows and what removed the others, export, and which columns.

import type { ColumnData } from "../data/PageData";
import { removedBy } from "../model/Filter";
import { tableOf } from "../model/Csv";
import type { Store } from "../model/Store";
import { button, element } from "../shell/Element";
import { foreign } from "./Foreign";
import type { Table } from "./Table";
import { notListed } from "./TableSelection";

export function countText(store: Store): string {
  const { passing, selection } = store.state;
  const beyond = notListed(store).length;
  const hidden = beyond === 0 ? "" : ` (${beyond === selection.length ? "not" : `${beyond} not`} listed)`;
  const selected = selection.length === 0 ? "" : `, ${selection.length} selected${hidden}`;
  return `${passing.length} of ${store.data.dipoles.count} dipoles${selected}`;
}

// One line for each limit that is set.
export function removedList(store: Store): HTMLElement | null {
  const removed = removedBy(store.data, store.state);
  const lines = removed.map(({ limit, count }) =>
    element("li", {}, foreign(limit), ": ", element("b", {}, String(count)), " removed"),
  );
  return lines.length === 0 ? null : element("ul", { class: "list-removed" }, ...lines);
}

function makeCounts(store: Store): HTMLElement {
  const counts = element("div", { class: "list-counts" });
  const show = () => {
    const removed = removedList(store);
    counts.replaceChildren(element("b", {}, countText(store)), ...(removed === null ? [] : [removed]));
  };
  show();
  store.onChange((changed) => {
    if (changed.has("passing") || changed.has("selection") || changed.has("isGoodness")) {
      show();
    }
  });
  return counts;
}

// What is filtered, in the order of the list, with every column.
export function exportTable(table: Table): void {
  const text = tableOf(table.columns, table.order);
  const address = URL.createObjectURL(new Blob([text], { type: "text/csv;charset=utf-8" }));
  const link = element("a", { href: address, download: "dipoles.csv" });
  link.click();
  setTimeout(() => URL.revokeObjectURL(address), 60_000);
}

function makeChooser(table: Table): HTMLElement {
  const boxes = table.columnOrder.map((index) => {
    const { label, title } = table.columns[index] as ColumnData;
    const box = element("input", { type: "checkbox" });
    box.checked = table.isColumnShown(index);
    box.addEventListener("change", () => table.showColumn(index, box.checked));
    return element("label", { title }, box, " ", label);
  });
  const summary = element("summary", { title: "Show or hide columns of the list" }, "Columns");
  const chooser = element("details", { class: "list-columns" }, summary, element("div", {}, ...boxes));
  chooser.addEventListener("keydown", (event) => {
    if (event.key === "Escape" && chooser.open) {
      chooser.open = false;
      summary.focus();
      event.preventDefault();
      event.stopPropagation();
    }
  });
  return chooser;
}

// The first of its boxes has the focus then.
export function openChooser(parent: HTMLElement): void {
  const chooser = parent.querySelector<HTMLDetailsElement>(".list-columns");
  if (chooser !== null) {
    chooser.open = true;
    chooser.querySelector("input")?.focus();
  }
}

export function makeTools(store: Store, table: Table): HTMLElement {
  const save = button("CSV", "CSV: save the dipoles that are listed as a table", () =>
    exportTable(table),
  );
  save.classList.add("list-csv");
  const noFilters = button("No column filters", "No column filters: take away what is typed over the columns", () =>
    store.set({ columns: new Map() }),
  );
  const buttons = element("div", { class: "list-buttons" }, makeChooser(table), noFilters, save);
  return element("div", { class: "list-tools" }, makeCounts(store), buttons);
}
