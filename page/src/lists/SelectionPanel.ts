// What the selected dipoles have in common.

import type { PageData } from "../data/PageData";
import { orientationOf, spreadOf } from "../model/Statistics";
import type { Store } from "../model/Store";
import { transformed } from "../model/Vector";
import { element } from "../shell/Element";
import { directionText, lineTable, placeText, valueLines, type Line } from "./Lines";

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
    lines.push([`Mean orientation, ${host.title} (${host.axes.join(", ")})`, directionText(mean)]);
  }
  lines.push(["Cone around it, 95 %", `${cone.toFixed(1)}\u00b0`]);
  lines.push(["Resultant length (1: all alike)", resultant.toFixed(3)]);
  if (count < rows.length) {
    lines.push(["Without an orientation", String(rows.length - count)]);
  }
  return lines;
}

function commonLines(data: PageData, rows: readonly number[], isGoodness: boolean): Line[] {
  return [...places(data, rows), ...orientations(data, rows), ...valueLines(data, rows, isGoodness)];
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
