// Which dipoles the clusters were looked for among: those within the limits that the command was given, by which the
// page opens. One beyond them is in no cluster, but it is not scattered either: nobody looked.

import type { PageData } from "../data/PageData";
import { numberOf } from "./Filter";
import { passes } from "./Limits";

export function judgedRows(data: PageData): (row: number) => boolean {
  const { columns, roles, places } = data.dipoles;
  const { settings } = data;
  const windows = [
    { values: columns[roles.fitError]?.values, limits: settings.fitError },
    { values: columns[roles.moment]?.values, limits: settings.moment },
    { values: columns[roles.latency]?.values, limits: settings.latency },
  ];
  return (row) =>
    (places[row] ?? null) !== null && windows.every(({ values, limits }) => passes(numberOf(values?.[row]), limits));
}
