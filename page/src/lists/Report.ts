// The page as it is printed: a report of a few pages of A4, black on white. It is made when the browser prints,
// of what is shown then.

import type { ColourBy, Vector } from "../data/PageData";
import type { Store } from "../model/Store";
import { element } from "../shell/Element";
import { legendParts } from "../shell/Legend";
import { rowsOfCluster } from "./ClusterTable";
import {
  clusters,
  conventions,
  filesAndHead,
  findings,
  fitStatistics,
  heading,
  limitsUsed,
  part,
} from "./ReportText";

export type PictureView = "axial" | "coronal" | "sagittal" | "left" | "right" | "above";

export interface PictureSize {
  width: number; // pixels
  height: number;
}

// What the page shows, around a place. It is drawn at once: a browser that prints waits for nothing.
export type Snapshot = (
  crosshair: Vector,
  view: PictureView,
  size: PictureSize,
  colourBy: ColourBy,
) => HTMLCanvasElement;

const slices: readonly PictureView[] = ["axial", "coronal", "sagittal"];
const scenes: readonly PictureView[] = ["left", "right", "above"];
const sliceSize: PictureSize = { width: 440, height: 400 };
const sceneSize: PictureSize = { width: 440, height: 400 };
const mostWide = 3; // clusters whose pictures are as wide as the page
const mostPictured = 12;

function row(
  snapshot: Snapshot,
  views: readonly PictureView[],
  place: Vector,
  size: PictureSize,
  colourBy: ColourBy,
): HTMLElement {
  return element("div", { class: "report-row" }, ...views.map((view) => snapshot(place, view, size, colourBy)));
}

function legend({ data, state }: Store, colourBy: ColourBy): HTMLElement {
  const parts = legendParts(data, { ...state, colourBy });
  return element("div", { class: "legend" }, "Colours of the dipoles: ", ...parts);
}

function figure(caption: string, pictures: HTMLElement): HTMLElement {
  return element("figure", {}, element("figcaption", {}, caption), pictures);
}

function clusterPictures(store: Store, snapshot: Snapshot): HTMLElement[] {
  const { data } = store;
  const { clusters: found } = data.clusters;
  if (found.length === 0) {
    return [];
  }
  const isPassing = new Set(store.state.passing);
  const figures = found.slice(0, mostPictured).map(({ count, centroid }, index) => {
    const shown = rowsOfCluster(data, index + 1).filter((at) => isPassing.has(at)).length;
    const some = shown === count ? "" : ` (${shown} of them shown)`;
    return figure(
      `Cluster ${index + 1}: ${count} dipoles${some}, slices through its centroid`,
      row(snapshot, slices, centroid, sliceSize, "cluster"),
    );
  });
  const kind = found.length > mostWide ? "report-pictures narrow" : "report-pictures";
  const made = [legend(store, "cluster"), element("div", { class: kind }, ...figures)];
  if (found.length > mostPictured) {
    const rest = `Of ${found.length} clusters the first ${mostPictured} have pictures; the table has all.`;
    made.push(element("p", {}, rest));
  }
  return [part("Slices through the clusters", ...made)];
}

const sceneCaption =
  "From the patient's left, from the right, from above: there the patient's left is on the left of the picture";

function scenePictures(store: Store, snapshot: Snapshot): HTMLElement {
  const { crosshair, colourBy } = store.state;
  const pictures = row(snapshot, scenes, crosshair, sceneSize, colourBy);
  return part("In 3D", legend(store, colourBy), figure(sceneCaption, pictures));
}

function placePictures(store: Store, snapshot: Snapshot): HTMLElement {
  const { crosshair, colourBy } = store.state;
  const pictures = row(snapshot, slices, crosshair, sliceSize, colourBy);
  return part("Slices", legend(store, colourBy), figure("Through the crosshair", pictures));
}

export function makeReport(store: Store, snapshot: Snapshot | null): HTMLElement[] {
  const { data } = store;
  const pictures: HTMLElement[] = []; // first: when they fail, the heading says so
  if (snapshot !== null) {
    const shown = clusterPictures(store, snapshot);
    pictures.push(...(shown.length > 0 ? shown : [placePictures(store, snapshot)]), scenePictures(store, snapshot));
  }
  const texts = [heading(store), filesAndHead(data), limitsUsed(store), fitStatistics(store), findings(data), clusters(store)];
  return [...texts, ...pictures, conventions(store)];
}

export function mountReport(store: Store, parent: HTMLElement, snapshot: Snapshot | null): void {
  addEventListener("beforeprint", () => parent.replaceChildren(...makeReport(store, snapshot)));
  addEventListener("afterprint", () => parent.replaceChildren());
}
