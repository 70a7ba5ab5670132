// The colour of a dipole in every picture and in the list.

import type { ColourBy, PageData } from "../data/PageData";
import { numberOf } from "./Filter";
import { judgedRows } from "./Judged";

const plain = "#ff0000"; // of a set without own colours, as the module makes new dipoles

// More colours would be told apart by nobody: all clusters behind the last one share white.
export const furtherClusters = "#ffffff";

// 1: the first cluster; 0: none.
export function clusterColour(data: PageData, number: number): string {
  const { scattered, clusterColours } = data.settings;
  return number === 0 ? scattered : (clusterColours[number - 1] ?? furtherClusters);
}

// "#rrggbb" for a row of the set.
export function colourFunction(data: PageData, by: ColourBy): (row: number) => string {
  const { columns, roles, clusters } = data.dipoles;
  const { scale, noValue, ranges } = data.settings;
  if (by === "own") {
    const own = columns[roles.colour]?.values;
    return (row) => {
      const colour = own?.[row];
      return typeof colour === "string" ? `#${colour.slice(-6)}` : plain;
    };
  }
  if (by === "cluster") {
    const isJudged = judgedRows(data);
    return (row) => {
      const cluster = clusters[row] ?? 0;
      return cluster !== 0 || isJudged(row) ? clusterColour(data, cluster) : noValue;
    };
  }
  const values = columns[roles[by]]?.values;
  const range = ranges[by];
  return (row) => {
    const value = numberOf(values?.[row]);
    if (range === undefined || Number.isNaN(value)) {
      return noValue;
    }
    const share = range.high > range.low ? (value - range.low) / (range.high - range.low) : 0.5;
    const place = Math.round(Math.min(1, Math.max(0, share)) * (scale.length - 1));
    return scale[place] ?? noValue;
  };
}
