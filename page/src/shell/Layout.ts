// The places of everything on the page.

import type { ListElements } from "../lists/lists";
import type { PaneName } from "../panes/PaneName";
import { element } from "./Element";

export interface PaneElements {
  frame: HTMLElement;
  head: HTMLCanvasElement; // the head alone
  lines: HTMLCanvasElement; // the crosshair over it
  marks: HTMLCanvasElement; // dipoles, points, letters
}

export interface Layout {
  header: HTMLElement;
  warnings: HTMLElement;
  display: HTMLElement; // how it is shown: colours, sides, window and level
  filters: HTMLElement; // what is shown
  place: HTMLElement; // of the crosshair
  time: HTMLElement; // latency cursor
  panes: Readonly<Record<PaneName, PaneElements>>;
  paneGrid: HTMLElement;
  lists: ListElements;
}

function pane(name: PaneName, title: string): PaneElements {
  const head = element("canvas", { class: "head", "aria-hidden": "true" });
  const lines = element("canvas", { class: "lines", "aria-hidden": "true" });
  const marks = element("canvas", { class: "marks", role: "img", "aria-label": title, tabindex: "0" });
  return { frame: element("div", { class: "pane", "data-pane": name }, head, lines, marks), head, lines, marks };
}

function section(name: string, title: string): HTMLElement {
  return element("section", { class: name, "aria-label": title });
}

export function makeLayout(root: HTMLElement): Layout {
  const panes = {
    axial: pane("axial", "Axial slice"),
    coronal: pane("coronal", "Coronal slice"),
    sagittal: pane("sagittal", "Sagittal slice"),
    scene: pane("scene", "Head and dipoles in 3D"),
  };
  const layout: Layout = {
    header: element("header", { class: "header" }),
    warnings: element("div", { class: "warnings", role: "alert" }),
    display: section("display", "Display"),
    filters: section("filters", "Filters"),
    place: section("place", "Place of the crosshair"),
    time: section("time", "Latency cursor"),
    panes,
    paneGrid: element("div", { class: "panes" }, ...Object.values(panes).map(({ frame }) => frame)),
    lists: {
      findings: section("findings", "Findings"),
      table: section("table", "Dipoles"),
      selection: section("selection", "Selected dipoles"),
      plots: section("plots", "Plots"),
      clusters: section("clusters", "Clusters"),
      report: section("report", "Report"),
    },
  };
  const { lists } = layout;
  const pictures = element("div", { class: "pictures" }, layout.paneGrid, layout.place, layout.time);
  const side = element(
    "div",
    { class: "side" },
    layout.display,
    layout.filters,
    lists.table,
    lists.selection,
    lists.plots,
    lists.clusters,
  );
  const screen = element(
    "div",
    { class: "screen" },
    layout.header,
    layout.warnings,
    lists.findings,
    element("main", { class: "main" }, pictures, side),
  );
  root.replaceChildren(screen, lists.report);
  return layout;
}
