// What the selected dipoles have in common.

import type { PageData } from "../data/PageData";
import { orientationOf, spreadOf } from "../model/Statistics";
import type { Store } from "../model/Store";
import { transformed } from "../model/Vector";
import { button, element } from "../shell/Element";
import { clearFilters } from "../shell/Filters";
import { directionText, lineTable, placeText, valueLines, type Line } from "./Lines";
import { notListed } from "./TableSelection";

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

// Of what is selected but not to be seen, with a way to see it.
function hiddenNote(store: Store): HTMLElement[] {
  const count = notListed(store).length;
  if (count === 0) {
    return [];
  }
  const some = count === 1 ? "1 selected dipole does" : `${count} selected dipoles do`;
  const words = `${some} not pass the limits: no picture and no row of the list shows it, though it counts here. `;
  const show = button("Show all dipoles", "Show all dipoles: take every filter away", () => clearFilters(store));
  return [element("p", { class: "list-hidden" }, count === 1 ? words : words.replace("shows it, though it counts", "shows them, though they count"), show)];
}

export function mountSelection(store: Store, parent: HTMLElement): void {
  let isStale = false;
  const show = () => {
    isStale = false;
    const { selection, isGoodness } = store.state;
    const beyond = hiddenNote(store);
    if (selection.length < 2) {
      const help = "Select several dipoles to see what they have in common.";
      parent.replaceChildren(...beyond, element("p", { class: "list-note" }, help));
      return;
    }
    parent.replaceChildren(
      element("h2", {}, `${selection.length} dipoles selected`),
      ...beyond,
      lineTable(commonLines(store.data, selection, isGoodness)),
      element("p", { class: "list-note" }, "\u00b1 is one standard deviation of a sample."),
    );
  };
  show();
  // Of thousands of dipoles it takes a while: behind another tab not before it is seen.
  const showIfSeen = () => {
    if (isStale && !parent.hidden) {
      show();
    }
  };
  new MutationObserver(showIfSeen).observe(parent, { attributes: true, attributeFilter: ["hidden"] });
  store.onChange((changed) => {
    isStale ||= changed.has("selection") || changed.has("passing") || changed.has("isGoodness");
    showIfSeen();
  });
}
