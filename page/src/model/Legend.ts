// What the colours of the dipoles mean: a scale with its ends, or one colour for each cluster.

import type { PageData } from "../data/PageData";
import { countText, shownOfClusters } from "./ClusterCounts";
import { clusterColour, furtherClusters } from "./Colours";
import { judgedRows } from "./Judged";
import type { State } from "./Store";

export interface LegendEntry {
  colour: string;
  text: string;
}

export interface Legend {
  title: string;
  scale: readonly string[]; // from low to high; empty: none
  low: string;
  high: string;
  entries: readonly LegendEntry[];
}

const titles = { latency: "Latency", fitError: "Fit error", moment: "Moment" } as const;

function numberText(value: number): string {
  return String(Number(value.toPrecision(4)));
}

// The first clusters have a colour of their own, all further ones share one.
function clusterLegend(data: PageData, passing: readonly number[]): Pick<Legend, "title" | "entries"> {
  const { clusters, text, scattered } = data.clusters;
  const own = data.settings.clusterColours.length;
  const shown = shownOfClusters(data, passing);
  const entries = clusters.slice(0, own).map(({ count }, i) => ({
    colour: clusterColour(data, i + 1),
    text: `Cluster ${i + 1} (${countText(count, shown[i + 1] ?? 0)})`,
  }));
  if (clusters.length > own) {
    const sum = (counts: readonly number[]): number => counts.reduce((all, count) => all + count, 0);
    const count = countText(sum(clusters.slice(own).map((further) => further.count)), sum(shown.slice(own + 1)));
    const names = clusters.length === own + 1 ? `Cluster ${own + 1}` : `Clusters ${own + 1} to ${clusters.length}`;
    entries.push({ colour: furtherClusters, text: `${names} (${count})` });
  }
  const isJudged = judgedRows(data);
  const unjudged = passing.filter((row) => data.dipoles.clusters[row] === 0 && !isJudged(row)).length;
  const none = countText(scattered, (shown[0] ?? 0) - unjudged);
  entries.push({ colour: data.settings.scattered, text: `in none (${none})` });
  if (unjudged > 0) {
    entries.push({ colour: data.settings.noValue, text: `beyond the command's limits, not judged (${unjudged})` });
  }
  return { title: text === "" ? "No clusters were looked for" : `Clusters by the command's limits: ${text}`, entries };
}

export function legendOf(data: PageData, state: Readonly<State>): Legend {
  const { settings, dipoles } = data;
  const none = { scale: [], low: "", high: "", entries: [] };
  const by = state.colourBy;
  if (by === "own") {
    return { ...none, title: "Each dipole's own colour" };
  }
  if (by === "cluster") {
    return { ...none, ...clusterLegend(data, state.passing) };
  }
  const unit = dipoles.columns[dipoles.roles[by]]?.unit ?? "";
  const title = unit === "" ? titles[by] : `${titles[by]}, ${unit}`;
  const unknown = { colour: settings.noValue, text: "unknown" };
  const range = settings.ranges[by];
  if (range === undefined) {
    return { ...none, title, entries: [unknown] };
  }
  return {
    title,
    scale: settings.scale,
    low: `${range.isCutLow ? "≤ " : ""}${numberText(range.low)}`,
    high: `${range.isCutHigh ? "≥ " : ""}${numberText(range.high)}`,
    entries: [unknown],
  };
}
