// What stands beside the pictures: the table, the plots, the clusters, the findings, the report.

import type { Store } from "../model/Store";
import { mountClusters } from "./ClusterTable";
import { ErrorHistogram } from "./ErrorHistogram";
import { mountFindings } from "./Findings";
import { LatencyPlot } from "./LatencyPlot";
import { mountSelection } from "./SelectionPanel";
import { Table } from "./Table";
import { listenToKeys } from "./TableKeys";
import { focusFirstFilter } from "./TableHeading";
import { exportTable, makeTools, openChooser } from "./TableTools";
import { notListed } from "./TableSelection";
import { mountTabs } from "./Tabs";

// Elements of the page that are its own; each is empty at first.
export interface ListElements {
  findings: HTMLElement; // a bar over everything
  table: HTMLElement;
  selection: HTMLElement; // what the selected dipoles have in common
  plots: HTMLElement;
  clusters: HTMLElement;
  report: HTMLElement; // seen on paper only
}

export const tabNames = ["selection", "plots", "clusters"] as const;

// What keys do there.
export interface ListActions {
  focusList(): void;
  focusFilters(): void;
  chooseColumns(): void;
  save(): void;
  showTab(name: (typeof tabNames)[number]): void;
}

export function mountLists(store: Store, elements: ListElements): ListActions {
  mountFindings(store, elements.findings);
  const table = new Table(store, elements.table);
  elements.table.prepend(makeTools(store, table));
  listenToKeys(store, table);
  mountSelection(store, elements.selection);
  const { latency, fitError } = store.data.dipoles.roles;
  if (latency !== -1) {
    elements.plots.append(new LatencyPlot(store).element);
  }
  if (fitError !== -1) {
    elements.plots.append(new ErrorHistogram(store).element);
  }
  mountClusters(store, elements.clusters);
  const { selection, plots, clusters } = elements;
  const tabs = mountTabs([
    { name: "selection", title: () => `Selected (${store.state.selection.length})`, section: selection },
    { name: "plots", title: () => "Plots", section: plots },
    { name: "clusters", title: () => `Clusters (${store.data.clusters.clusters.length})`, section: clusters },
  ]);
  tabs.show(store.data.clusters.clusters.length > 0 || plots.childElementCount === 0 ? "clusters" : "plots");
  store.onChange((changed) => {
    if (changed.has("selection")) {
      tabs.retitle();
      const { selection } = store.state;
      if (selection.length > 0 && notListed(store).length === selection.length) {
        tabs.show("selection"); // which says why nothing is marked
      }
    }
  });
  return {
    focusList: () => table.focus(),
    focusFilters: () => focusFirstFilter(table.element),
    chooseColumns: () => openChooser(elements.table),
    save: () => exportTable(table),
    showTab: (name) => tabs.show(name, true),
  };
}
