// What the selected dipoles have in common.

import type { PageData, Vector } from "../data/PageData";
import { roundedNumber } from "../model/CellText";
import { orientationOf, spreadOf, summaryOf, type Summary } from "../model/Statistics";
import type { Store } from "../model/Store";
import { transformed, turned } from "../model/Vector";
import { element } from "../shell/Element";

export type Line = readonly [name: string, value: string];

export function placeText(place: Vector): string {
  return `${place.map((value) => value.toFixed(1)).join(", ")} mm`;
}

function directionText(direction: Vector): string {
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

function places(data: PageData, rows: readonly number[]): Line[] {
  const spread = spreadOf(data, rows);
  if (spread === null) {
    return [["Mean place", "no dipole has a place"]];
  }
  const lines: Line[] = data.frames.map(({ title, axes, fromWorld }) => [
    `Mean place, ${title} (${axes.join(", ")})`,
    placeText(transformed(fromWorld, spread.mean)),
  ]);
  lines.push(["Distance from it, rms", `${spread.rms.toFixed(1)} mm`]);
  lines.push(["Distance from it, largest", `${spread.largest.toFixed(1)} mm`]);
  if (spread.count < rows.length) {
    lines.push(["Without a place", String(rows.length - spread.count)]);
  }
  return lines;
}

function orientations(data: PageData, rows: readonly number[]): Line[] {
  const orientation = orientationOf(data, rows);
  if (orientation === null) {
    return [["Mean orientation", "no dipole has an orientation"]];
  }
  const { count, mean, cone, resultant } = orientation;
  if (mean === null) {
    return [["Mean orientation", "none: the orientations cancel each other"]];
  }
  const host = data.frames[0];
  const lines: Line[] = [];
  if (host !== undefined) {
    const shown = turned(host.fromWorld, mean);
    lines.push([`Mean orientation, ${host.title} (${host.axes.join(", ")})`, directionText(shown)]);
  }
  lines.push(["Cone around it, 95 %", `${cone.toFixed(1)}\u00b0`]);
  lines.push(["Resultant length (1: all alike)", resultant.toFixed(3)]);
  if (count < rows.length) {
    lines.push(["Without an orientation", String(rows.length - count)]);
  }
  return lines;
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

export function commonLines(data: PageData, rows: readonly number[], isGoodness: boolean): Line[] {
  return [...places(data, rows), ...orientations(data, rows), ...valueLines(data, rows, isGoodness)];
}

export function lineTable(lines: readonly Line[]): HTMLElement {
  const rows = lines.map(([name, value]) =>
    element("tr", {}, element("th", { scope: "row" }, name), element("td", {}, value)),
  );
  return element("table", { class: "list-lines" }, element("tbody", {}, ...rows));
}

export function mountSelection(store: Store, parent: HTMLElement): void {
  const show = () => {
    const { selection, passing, isGoodness } = store.state;
    if (selection.length < 2) {
      parent.replaceChildren(
        element("p", { class: "list-note" }, "Select several dipoles to see what they have in common."),
      );
      return;
    }
    const isPassing = new Set(passing);
    const beyond = selection.filter((row) => !isPassing.has(row)).length;
    const hidden = beyond === 0 ? "" : `, ${beyond} of them not listed: they do not pass the limits, but count here`;
    parent.replaceChildren(
      element("h2", {}, `${selection.length} dipoles selected${hidden}`),
      lineTable(commonLines(store.data, selection, isGoodness)),
      element("p", { class: "list-note" }, "\u00b1 is one standard deviation of a sample."),
    );
  };
  show();
  store.onChange((changed) => {
    if (changed.has("selection") || changed.has("passing") || changed.has("isGoodness")) {
      show();
    }
  });
}
