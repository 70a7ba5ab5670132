// Named values in a table of two columns, and how places and values are written there.

import type { PageData, Vector } from "../data/PageData";
import { roundedNumber } from "../model/CellText";
import { summaryOf, type Summary } from "../model/Statistics";
import { element } from "../shell/Element";

export type LineValue = Node | string;
export type Line = readonly [name: string, value: LineValue];

export function placeText(place: Vector): string {
  return `${place.map((value) => value.toFixed(1)).join(", ")} mm`;
}

export function directionText(direction: Vector): string {
  return direction.map((value) => value.toFixed(3)).join(", ");
}

function summaryText(summary: Summary | null, unit: string): string {
  if (summary === null) {
    return "unknown";
  }
  const { count, mean, deviation, least, most } = summary;
  const end = unit === "" ? "" : ` ${unit}`;
  const spread = count > 1 ? ` \u00b1 ${roundedNumber(deviation, 2)}` : "";
  const range = `${roundedNumber(least, 1)} to ${roundedNumber(most, 1)}`;
  return `${roundedNumber(mean, 2)}${spread}${end} (${range}; ${count} known)`;
}

// Mean, standard deviation of a sample and range of what is known.
export function valueLines(data: PageData, rows: readonly number[], isGoodness: boolean): Line[] {
  const { roles, columns } = data.dipoles;
  const error = summaryOf(data, roles.fitError, rows);
  const goodness =
    error === null
      ? null
      : { ...error, mean: 100 - error.mean, least: 100 - error.most, most: 100 - error.least };
  return [
    ["Latency", summaryText(summaryOf(data, roles.latency, rows), "ms")],
    ["Moment", summaryText(summaryOf(data, roles.moment, rows), columns[roles.moment]?.unit ?? "")],
    isGoodness
      ? ["Goodness of fit", summaryText(goodness, "%")]
      : ["Fit error", summaryText(error, "%")],
  ];
}

export function lineTable(lines: readonly Line[]): HTMLElement {
  const rows = lines.map(([name, value]) =>
    element("tr", {}, element("th", { scope: "row" }, name), element("td", {}, value)),
  );
  return element("table", { class: "list-lines" }, element("tbody", {}, ...rows));
}
