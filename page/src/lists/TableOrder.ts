// Which rows Tabulator shows, and in which order. Its own sorting and filtering ask columns for the value of a row
// at every comparison, which takes a second for 30000 rows; here the order is made of the columns at once, and the
// table only takes it over, at the place of its data pipeline where its sorter would stand.

import { Module, type RowComponent, type Tabulator } from "tabulator-tables";

export interface RowData {
  row: number; // of the set
}

// What is used of the table's own rows. An element is made when the row is shown first, and kept.
export interface TableRow {
  data: RowData;
  element: HTMLElement | false;
  getComponent(): RowComponent;
}

// Of the module, what its declarations leave out.
export interface TableOrder {
  registerDataHandler(handler: (rows: TableRow[]) => TableRow[], priority: number): void;
  refreshData(renderInPosition: boolean): void;
}

const prioritySorted = 20; // behind filters, which the table itself has none of

export class TableOrder extends Module {
  static override moduleName = "tableOrder";
  #rows: TableRow[] = []; // in the order of the set
  #order: readonly number[] = [];

  constructor(table: Tabulator) {
    super(table);
    this.registerTableFunction("setOrder", (order) => this.setOrder(order as readonly number[]));
    this.registerTableFunction("madeRows", () => this.#rows.filter(({ element }) => element !== false));
    this.registerTableFunction("rowOf", (row) => this.#rows[row as number]?.getComponent());
  }

  override initialize(): void {
    this.registerDataHandler((rows) => {
      this.#rows = rows;
      return this.#order.map((row) => rows[row]).filter((row) => row !== undefined);
    }, prioritySorted);
  }

  // Rows of the set, as they shall stand in the table.
  setOrder(order: readonly number[]): void {
    this.#order = order;
    this.refreshData(false);
  }
}

// A table with what the module adds to it.
export interface OrderedTable extends Tabulator {
  setOrder(order: readonly number[]): void;
  madeRows(): TableRow[]; // those that have an element
  rowOf(row: number): RowComponent | undefined;
}
