// The clusters: where dipoles are many and near each other, and nothing else.

import type { ClusterData, PageData } from "../data/PageData";
import type { Store } from "../model/Store";
import { button, element } from "../shell/Element";
import { foreign } from "./Foreign";
import { placeText } from "./Lines";
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
    "Cone, \u00b0",
    "Latency, ms",
    "Fit error, %",
  ];
  if (data.clusters.clusters.some(({ label }) => label !== null)) {
    titles.push("Atlas label of the centroid");
  }
  return titles.map((title) => element("th", { scope: "col" }, title));
}

function cells(data: PageData, cluster: ClusterData): HTMLElement[] {
  const texts = [
    String(cluster.count),
    ...data.frames.map(({ name }) => placeIn(cluster, name)),
    `${cluster.rms.toFixed(1)}, ${cluster.farthest.toFixed(1)}`,
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
  const colours = data.settings.clusterColours;
  const made = element("span", { class: "list-patch", "aria-hidden": "true" });
  made.style.backgroundColor = colours[(number - 1) % colours.length] ?? "";
  return made;
}

// Without anything to click at: for paper.
export function clusterTable(data: PageData): HTMLTableElement {
  const rows = data.clusters.clusters.map((cluster, index) =>
    element(
      "tr",
      {},
      element("th", { scope: "row" }, patch(data, index + 1), String(index + 1)),
      ...cells(data, cluster),
    ),
  );
  return element(
    "table",
    { class: "list-clusters" },
    element("thead", {}, element("tr", {}, ...heads(data))),
    element("tbody", {}, ...rows),
  );
}

export function clusterRule(data: PageData): string {
  const { text, scattered, removed, clusters } = data.clusters;
  const limits = removed.map(({ limit, count }) => `${count} removed by ${limit}`);
  if (text === "") {
    return "No clusters were looked for.";
  }
  const many = clusters.length === 1 ? "1 cluster" : `${clusters.length} clusters`;
  return [`${text}: ${many}`, `${scattered} dipoles scattered, in none`, ...limits].join("; ") + ".";
}

export function mountClusters(store: Store, parent: HTMLElement): void {
  const { data } = store;
  const { clusters } = data.clusters;
  const table = clusterTable(data);
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
  store.onChange((changed) => {
    if (changed.has("isolated")) {
      mark();
    }
  });
  const rule = element("p", { class: "list-note" }, clusterRule(data));
  parent.append(rule);
  if (clusters.length > 0) {
    parent.append(element("div", { class: "list-wide" }, table));
  }
}
