// The clusters: where dipoles are many and near each other, and nothing else.

import type { ClusterData, PageData } from "../data/PageData";
import { countText, shownOfClusters } from "../model/ClusterCounts";
import { clusterColour } from "../model/Colours";
import type { Store } from "../model/Store";
import { turned } from "../model/Vector";
import { button, element } from "../shell/Element";
import { foreign } from "./Foreign";
import { directionText, placeText } from "./Lines";
import { selectRows } from "./TableSelection";

export function rowsOfCluster(data: PageData, number: number): number[] {
  const rows: number[] = [];
  data.dipoles.clusters.forEach((cluster, row) => {
    if (cluster === number) {
      rows.push(row);
    }
  });
  return rows;
}

function rangeText(range: readonly [number, number] | null): string {
  return range === null ? "unknown" : `${range[0].toFixed(1)} to ${range[1].toFixed(1)}`;
}

// Of a frame that the cluster has no place in: it is unknown there.
function placeIn(cluster: ClusterData, frame: string): string {
  const found = cluster.places.find((place) => place.frame === frame);
  return found === undefined ? "unknown" : placeText(found.place);
}

function heads(data: PageData): HTMLElement[] {
  const titles = [
    "Cluster",
    "Dipoles",
    ...data.frames.map(({ title, axes }) => `Centroid, ${title} (${axes.join(", ")})`),
    "Distance from it, rms and largest, mm",
    ...data.frames.slice(0, 1).map(({ title, axes }) => `Mean orientation, ${title} (${axes.join(", ")})`),
    "Cone, \u00b0",
    "Latency, ms",
    "Fit error, %",
  ];
  if (data.clusters.clusters.some(({ label }) => label !== null)) {
    titles.push("Atlas label of the centroid");
  }
  return titles.map((title) => element("th", { scope: "col" }, title));
}

function cells(data: PageData, cluster: ClusterData, shown: number): HTMLElement[] {
  const texts = [
    countText(cluster.count, shown),
    ...data.frames.map(({ name }) => placeIn(cluster, name)),
    `${cluster.rms.toFixed(1)}, ${cluster.farthest.toFixed(1)}`,
    ...data.frames.slice(0, 1).map(({ fromWorld }) =>
      cluster.direction === null ? "none" : directionText(turned(fromWorld, cluster.direction)),
    ),
    cluster.cone === null ? "none" : cluster.cone.toFixed(1),
    rangeText(cluster.latency),
    rangeText(cluster.fitError),
  ];
  const made = texts.map((text) => element("td", {}, text));
  if (data.clusters.clusters.some(({ label }) => label !== null)) {
    made.push(element("td", {}, cluster.label === null ? "none" : foreign(cluster.label)));
  }
  return made;
}

function patch(data: PageData, number: number): HTMLElement {
  const made = element("span", { class: "list-patch", "aria-hidden": "true" });
  made.style.backgroundColor = clusterColour(data, number);
  return made;
}

// Without anything to click at: for paper.
export function clusterTable({ data, state }: Store): HTMLTableElement {
  const shown = shownOfClusters(data, state.passing);
  const rows = data.clusters.clusters.map((cluster, index) =>
    element(
      "tr",
      {},
      element("th", { scope: "row" }, patch(data, index + 1), String(index + 1)),
      ...cells(data, cluster, shown[index + 1] ?? 0),
    ),
  );
  return element(
    "table",
    { class: "list-clusters" },
    element("thead", {}, element("tr", {}, ...heads(data))),
    element("tbody", {}, ...rows),
  );
}

// The limits that clusters were found by are those of the command; they stay when others are set in the page.
export function clusterRule({ data, state }: Store): string {
  const { text, scattered, removed, clusters } = data.clusters;
  const limits = removed.map(({ limit, count }) => `${count} removed by ${limit}`);
  if (text === "") {
    return "No clusters were looked for.";
  }
  const many = clusters.length === 1 ? "1 cluster" : `${clusters.length} clusters`;
  const found = [`${text}: ${many}`, `${scattered} dipoles scattered, in none`, ...limits].join("; ");
  const all = clusters.reduce((sum, { count }) => sum + count, 0);
  const [, ...shown] = shownOfClusters(data, state.passing);
  const left = shown.reduce((sum, count) => sum + count, 0);
  const some = clusters.length === 0 ? "" : ` ${left} of their ${all} dipoles are shown now.`;
  return `${found}. Clusters are those of the limits that the command was given; limits set in the page do not change them.${some}`;
}

export function mountClusters(store: Store, parent: HTMLElement): void {
  const { data } = store;
  const { clusters } = data.clusters;
  const table = clusterTable(store);
  const alone: HTMLButtonElement[] = [];
  table.querySelectorAll("tbody tr").forEach((row, index) => {
    const number = index + 1;
    const centroid = clusters[index]?.centroid;
    const choose = button(String(number), `Cluster ${number}: select its dipoles and go to its centroid`, () => {
      selectRows(store, rowsOfCluster(data, number), -1);
      store.set({ crosshair: centroid ?? store.state.crosshair });
    });
    const show = button("show alone", `Cluster ${number}: show alone`, () =>
      store.set({ isolated: store.state.isolated === number ? 0 : number }),
    );
    alone.push(show);
    row.querySelector("th")?.replaceChildren(patch(data, number), choose, " ", show);
  });
  const mark = () => {
    alone.forEach((show, index) => {
      show.setAttribute("aria-pressed", String(store.state.isolated === index + 1));
    });
  };
  mark();
  const rule = element("p", { class: "list-note" }, clusterRule(store));
  const count = () => {
    const shown = shownOfClusters(data, store.state.passing);
    rule.textContent = clusterRule(store);
    table.querySelectorAll("tbody tr").forEach((row, index) => {
      const [cell] = row.getElementsByTagName("td");
      cell?.replaceChildren(countText(clusters[index]?.count ?? 0, shown[index + 1] ?? 0));
    });
  };
  store.onChange((changed) => {
    if (changed.has("isolated")) {
      mark();
    }
    if (changed.has("passing")) {
      count();
    }
  });
  parent.append(rule);
  if (clusters.length > 0) {
    parent.append(element("div", { class: "list-wide" }, table));
  }
}
