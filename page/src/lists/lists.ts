// What stands beside the pictures: the table, the plots, the clusters, the findings, the report.

import type { Store } from "../model/Store";

// Elements of the page that are its own; each is empty at first.
export interface ListElements {
  findings: HTMLElement; // a bar over everything
  table: HTMLElement;
  selection: HTMLElement; // what the selected dipoles have in common
  plots: HTMLElement;
  clusters: HTMLElement;
  report: HTMLElement; // seen on paper only
}

export function mountLists(_store: Store, _elements: ListElements): void {
  return;
}
