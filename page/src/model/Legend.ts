// What the colours of the dipoles mean: a scale with its ends, or one colour for each cluster.

import type { PageData } from "../data/PageData";
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

export function legendOf(data: PageData, state: Readonly<State>): Legend {
  const { settings, dipoles, clusters } = data;
  const none = { scale: [], low: "", high: "", entries: [] };
  const by = state.colourBy;
  if (by === "own") {
    return { ...none, title: "Each dipole's own colour" };
  }
  if (by === "cluster") {
    const colours = settings.clusterColours;
    const entries = clusters.clusters.map(({ count }, i) => ({
      colour: colours[i % Math.max(1, colours.length)] ?? settings.scattered,
      text: `Cluster ${i + 1} (${count})`,
    }));
    const scattered = { colour: settings.scattered, text: `in none (${clusters.scattered})` };
    return { ...none, title: `Clusters: ${clusters.text}`, entries: [...entries, scattered] };
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
