// The list of the dipoles that pass the limits: sorted, filtered, selected in.

import {
  FormatModule,
  InteractionModule,
  ResizeColumnsModule,
  ResizeTableModule,
  Tabulator,
  type RowComponent,
} from "tabulator-tables";
import type { ColumnData } from "../data/PageData";
import { colourFunction } from "../model/Colours";
import { sortKeys, sorted, type Sorting } from "../model/RowOrder";
import type { Changed, State, Store } from "../model/Store";
import { element } from "../shell/Element";
import { columnDefinitions, listColumns } from "./TableColumns";
import { listenToHeadings, makeHeading, showSorting } from "./TableHeading";
import { TableOrder, type OrderedTable, type RowData } from "./TableOrder";
import { chooseInList, type Choice } from "./TableSelection";

Tabulator.registerModule([
  FormatModule,
  InteractionModule,
  ResizeColumnsModule,
  ResizeTableModule,
  TableOrder,
]);

const rowHeight = 1.75; // of the page's letters

function rowId(row: number): string {
  return `dipole-${row}`;
}

// The grid itself has the focus, not the part of it that scrolls, so that screen readers know what they stand in.
function nameGrid(grid: HTMLElement): void {
  grid.setAttribute("aria-label", "Dipoles");
  grid.setAttribute("aria-multiselectable", "true");
  grid.tabIndex = 0;
  grid.querySelector(".tabulator-tableholder")?.setAttribute("tabindex", "-1");
}

export class Table {
  readonly columns: readonly ColumnData[]; // of the set, the cluster behind them
  readonly columnOrder: readonly number[]; // as they stand from left to right
  readonly element: HTMLElement;
  readonly #store: Store;
  readonly #table: OrderedTable;
  #isBuilt = false;
  #sorting: Sorting | null = null;
  #keys = new Map<number, Float64Array>(); // by column, made when it is sorted by first
  #whole: readonly number[]; // all rows of the set in the order of #sorting
  #order: readonly number[] = []; // what is listed
  #places: ReadonlyMap<number, number> = new Map(); // of each row in it
  #colour: (row: number) => string;
  #selected: ReadonlySet<number>;
  #isChoosing = false;
  #hidden = new Set<number>(); // columns

  constructor(store: Store, parent: HTMLElement) {
    this.#store = store;
    const { dipoles } = store.data;
    const list = listColumns(store.data);
    [this.columns, this.columnOrder] = [list.columns, list.order];
    this.#whole = Array.from({ length: dipoles.count }, (_, row) => row);
    this.#colour = colourFunction(store.data, store.state.colourBy);
    this.#selected = new Set(store.state.selection);
    this.element = element("div", { class: "list-table" });
    parent.append(element("div", { class: "list-frame" }, this.element));
    const letters = Number.parseFloat(getComputedStyle(document.documentElement).fontSize);
    this.#table = new Tabulator(this.element, {
      height: "100%",
      rowHeight: Math.round(rowHeight * letters),
      layout: "fitData",
      renderHorizontal: "virtual",
      index: "row" as never,
      data: this.#whole.map((row): RowData => ({ row })),
      columns: columnDefinitions(list, dipoles.count, letters, (column, index) =>
        makeHeading(store, column, index, { onSort: (by) => this.sortBy(by) }),
      ),
      rowFormatter: (row) => this.#style(row.getElement(), (row.getData() as RowData).row),
      placeholder: element("span", {}, "No dipole passes the limits."),
    }) as OrderedTable;
    this.#listen();
  }

  #listen(): void {
    this.#table.on("tableBuilt", () => {
      this.#isBuilt = true;
      nameGrid(this.element);
      listenToHeadings(this.element, () => this.focus());
      showSorting(this.element, this.#sorting);
      this.#refresh();
    });
    this.#table.on("rowClick", (event: UIEvent, row: RowComponent) => {
      const { shiftKey, ctrlKey, metaKey } = event as MouseEvent;
      this.choose((row.getData() as RowData).row, { isRange: shiftKey, isAdded: ctrlKey || metaKey });
    });
    this.#store.onChange((changed, state) => this.#update(changed, state));
  }

  // Rows of the set, from top to bottom.
  get order(): readonly number[] {
    return this.#order;
  }

  get sorting(): Sorting | null {
    return this.#sorting;
  }

  // A second time turns it around, a third one goes back to the order of the set.
  sortBy(column: number): void {
    const before = this.#sorting;
    if (before?.column !== column) {
      this.#sorting = { column, isFalling: false };
    } else {
      this.#sorting = before.isFalling ? null : { column, isFalling: true };
    }
    const all = Array.from({ length: this.#store.data.dipoles.count }, (_, row) => row);
    this.#whole =
      this.#sorting === null ? all : sorted(all, this.#keysOf(column), this.#sorting.isFalling);
    showSorting(this.element, this.#sorting);
    this.#refresh();
  }

  isColumnShown(index: number): boolean {
    return !this.#hidden.has(index);
  }

  showColumn(index: number, isShown: boolean): void {
    const column = this.#table.getColumn(`c${index}`);
    if (isShown) {
      this.#hidden.delete(index);
      column.show();
    } else {
      this.#hidden.add(index);
      column.hide();
    }
  }

  focus(): void {
    this.element.focus();
  }

  scrollAside(pixels: number): void {
    this.element.querySelector(".tabulator-tableholder")?.scrollBy(pixels, 0);
  }

  choose(row: number, choice: Choice): void {
    this.#isChoosing = true;
    chooseInList(this.#store, this.#order, row, choice);
    this.#isChoosing = false;
  }

  // The table only guesses how far down a row is until it has made its element; then it is where it is.
  scrollTo(row: number): void {
    const holder = this.element.querySelector(".tabulator-tableholder");
    const component = this.#isBuilt ? this.#table.rowOf(row) : undefined;
    if (holder === null || component === undefined || !this.#places.has(row)) {
      return;
    }
    const { scrollLeft, scrollTop } = holder;
    const shown = component.getElement();
    const isSeen =
      shown.isConnected &&
      shown.offsetTop >= scrollTop &&
      shown.offsetTop + shown.offsetHeight <= scrollTop + holder.clientHeight;
    if (!isSeen) {
      void this.#table.scrollToRow(component, "top", true);
      holder.scrollTop = shown.offsetTop - (holder.clientHeight - shown.offsetHeight) / 2;
      holder.scrollLeft = scrollLeft;
    }
  }

  #keysOf(index: number): Float64Array {
    const column = this.columns[index];
    const keys = this.#keys.get(index) ?? (column === undefined ? new Float64Array() : sortKeys(column));
    this.#keys.set(index, keys);
    return keys;
  }

  #refresh(): void {
    const isPassing = new Uint8Array(this.#whole.length);
    for (const row of this.#store.state.passing) {
      isPassing[row] = 1;
    }
    this.#order = this.#whole.filter((row) => isPassing[row] === 1);
    this.#places = new Map(this.#order.map((row, place) => [row, place]));
    if (!this.#isBuilt) {
      return;
    }
    const holder = this.element.querySelector(".tabulator-tableholder");
    const left = holder?.scrollLeft ?? 0;
    this.element.setAttribute("aria-rowcount", String(this.#order.length + 1)); // with the headings
    this.#table.setOrder(this.#order);
    this.#restyle();
    this.#tellRows();
    if (holder) {
      holder.scrollLeft = left;
    }
  }

  #update(changed: Changed, state: Readonly<State>): void {
    if (changed.has("passing")) {
      this.#refresh();
    }
    if (changed.has("colourBy")) {
      this.#colour = colourFunction(this.#store.data, state.colourBy);
    }
    if (changed.has("selection")) {
      this.#selected = new Set(state.selection);
    }
    if (changed.has("colourBy") || changed.has("selection") || changed.has("current")) {
      this.#restyle();
    }
    if (changed.has("current") && state.current !== -1 && !this.#isChoosing) {
      this.scrollTo(state.current);
    }
    if (changed.has("current")) {
      this.#tellRows();
    }
  }

  // Which of its rows screen readers stand on: the current one, when the list shows it.
  #tellRows(): void {
    const id = rowId(this.#store.state.current);
    const isThere = this.#places.has(this.#store.state.current) && document.getElementById(id) !== null;
    if (isThere) {
      this.element.setAttribute("aria-activedescendant", id);
    } else {
      this.element.removeAttribute("aria-activedescendant");
    }
  }

  #restyle(): void {
    if (this.#isBuilt) {
      for (const { data, element } of this.#table.madeRows()) {
        this.#style(element as HTMLElement, data.row);
      }
    }
  }

  #style(element: HTMLElement, row: number): void {
    element.id = rowId(row);
    element.setAttribute("aria-rowindex", String((this.#places.get(row) ?? -2) + 2));
    const isSelected = this.#selected.has(row);
    element.classList.toggle("selected", isSelected);
    element.classList.toggle("current", this.#store.state.current === row);
    element.setAttribute("aria-selected", String(isSelected));
    element.style.setProperty("--dipole-colour", this.#colour(row));
  }
}
