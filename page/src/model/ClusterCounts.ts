// How many dipoles of each cluster are shown: clusters stay those of the limits that the command was given, whatever
// is left out afterwards.

import type { PageData } from "../data/PageData";

// At 0 those in no cluster, at 1 those of the first cluster.
export function shownOfClusters(data: PageData, passing: readonly number[]): readonly number[] {
  const counts = [0, ...data.clusters.clusters.map(() => 0)];
  for (const row of passing) {
    const cluster = data.dipoles.clusters[row] ?? 0;
    counts[cluster] = (counts[cluster] ?? 0) + 1;
  }
  return counts;
}

// "34", "12 of 34 shown"
export function countText(count: number, shown: number): string {
  return shown === count ? String(count) : `${shown} of ${count} shown`;
}
