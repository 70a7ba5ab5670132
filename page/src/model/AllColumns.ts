// The columns of the set, and the cluster of each dipole behind them.

import type { ColumnData, PageData } from "../data/PageData";

export const inNone = "none"; // a dipole in no cluster

function clusterColumn({ dipoles }: PageData): ColumnData {
  const values = dipoles.clusters.map((cluster) => (cluster === 0 ? inNone : cluster));
  return { title: "cluster", label: "Cluster", unit: "", kind: "number", values: values as ColumnData["values"] };
}

const made = new WeakMap<PageData, readonly ColumnData[]>();

export function allColumns(data: PageData): readonly ColumnData[] {
  const { columns } = data.dipoles;
  const known = made.get(data);
  const all = known ?? (data.clusters.clusters.length > 0 ? [...columns, clusterColumn(data)] : columns);
  made.set(data, all);
  return all;
}
