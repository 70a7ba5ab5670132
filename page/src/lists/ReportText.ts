// The parts of the report that are text and tables.

import type { FindingData, PageData, Severity } from "../data/PageData";
import { removedBy } from "../model/Filter";
import type { Store } from "../model/Store";
import { element } from "../shell/Element";
import { clusterRule, clusterTable } from "./ClusterTable";
import { findingText, severityWord } from "./Findings";
import { foreign } from "./Foreign";
import { lineTable, valueLines, type LineValue } from "./Lines";
import { madeText } from "../model/Made";
import { warningsOf } from "../model/Warnings";

const textLength = 300; // characters of a text of a file

export function part(title: string, ...children: (Node | string)[]): HTMLElement {
  return element("section", { class: "report-part" }, element("h2", {}, title), ...children);
}

function list(items: readonly (Node | string)[]): HTMLElement {
  return element("ul", {}, ...items.map((item) => element("li", {}, item)));
}

function named(name: string | null): Node | string {
  return name === null ? "name left out" : foreign(name, textLength);
}

function sentence(...parts: (Node | string)[]): HTMLElement {
  return element("span", {}, ...parts);
}

export function heading({ data, state }: Store): HTMLElement {
  const patient = data.isAnonymous ? "names left out" : data.patient;
  return element(
    "header",
    {},
    element("h1", {}, "Dipoles: ", foreign(data.title, textLength)),
    lineTable([
      ["Patient", patient === null ? "unknown" : foreign(patient, textLength)],
      ["Page made by", madeText(data)],
      ["Printed", new Date().toISOString().slice(0, 16).replace("T", " ") + " UTC"],
    ]),
    ...warningsOf(data, state).map((warning) =>
      element("p", { class: "report-warning" }, element("b", {}, "Doubtful: "), foreign(warning, textLength)),
    ),
  );
}

export function filesAndHead(data: PageData): HTMLElement {
  const { files, head, atlas, registration, world, sphere } = data;
  const lines: [string, LineValue][] = files.map(({ name, format, dipoles }) => [
    "Dipoles from",
    sentence(named(name), ` (${format}, ${dipoles} dipoles)`),
  ]);
  if (head !== null) {
    lines.push(["Head", sentence(named(head.name), ` (${head.format})`)]);
    lines.push(["Left and right", `${head.sides}${head.areSidesStated ? "" : " (only assumed)"}`]);
  } else {
    const radius = sphere === null ? "" : `; the sphere has a radius of ${sphere.radius.toFixed(1)} mm`;
    lines.push(["Head", `none${radius}`]);
  }
  lines.push(["Places", world.description]);
  if (atlas !== null) {
    lines.push(["Atlas", sentence(foreign(atlas.name), atlas.doubt === null ? "" : ` (${atlas.doubt})`)]);
  }
  const residuals = (registration?.residuals ?? []).map(({ name, mm }) => `${name} ${mm.toFixed(1)} mm`);
  lines.push(["Registration", registration === null ? "none" : foreign(registration.text, textLength)]);
  lines.push(["Residuals", residuals.length === 0 ? "none known" : residuals.join(", ")]);
  return part("Files, head and registration", lineTable(lines));
}

export function limitsUsed(store: Store): HTMLElement {
  const removed = removedBy(store.data, store.state);
  const { passing } = store.state;
  const sum = element("p", {}, element("b", {}, `${passing.length} of ${store.data.dipoles.count} dipoles`), " shown.");
  const lines = removed.map(({ limit, count }) => sentence(foreign(limit), `: ${count} removed`));
  return part("Limits", sum, lines.length === 0 ? "No limit is set." : list(lines));
}

export function clusters(store: Store): HTMLElement {
  const rule = element("p", {}, clusterRule(store));
  return store.data.clusters.clusters.length === 0
    ? part("Clusters", rule)
    : part("Clusters", rule, clusterTable(store));
}

export function fitStatistics(store: Store): HTMLElement {
  const { passing, isGoodness } = store.state;
  return part(
    "Fit of the dipoles shown",
    lineTable(valueLines(store.data, passing, isGoodness)),
    element("p", { class: "list-note" }, "Mean \u00b1 one standard deviation of a sample, and range."),
  );
}

const severities: readonly Severity[] = ["wrong", "doubtful", "note"];
const mostFindings = 12;

// "2 more wrong, 5 more doubtful"
function moreText(rest: readonly FindingData[]): string {
  const counts = severities.map((severity) => {
    const count = rest.filter((finding) => finding.severity === severity).length;
    const word = `${severityWord(severity).toLowerCase()}${severity === "note" && count > 1 ? "s" : ""}`;
    return count === 0 ? "" : `${count} more ${word}`;
  });
  return counts.filter((text) => text !== "").join(", ");
}

export function findings(data: PageData): HTMLElement {
  const sorted = severities.flatMap((severity) => data.findings.filter((finding) => finding.severity === severity));
  const items = sorted.slice(0, mostFindings).map((finding) => {
    const rows = finding.rows.length === 0 ? "" : ` (${finding.rows.length} dipoles)`;
    return sentence(element("b", {}, `${severityWord(finding.severity)}: `), findingText(finding), rows);
  });
  if (sorted.length > mostFindings) {
    items.push(sentence(element("b", {}, moreText(sorted.slice(mostFindings))), " stand in the page."));
  }
  items.push(...data.repaired.map((text) => sentence("Repaired: ", foreign(text, textLength))));
  return part("Findings of the audit", items.length === 0 ? "None." : list(items));
}

export function conventions(store: Store): HTMLElement {
  const side = store.state.isRadiological ? "right" : "left";
  const slices = `Axial and coronal slices show the patient's left on the ${side}.`;
  return part(
    "Conventions",
    list([slices, ...store.data.conventions]),
    element("p", { class: "list-note" }, `Made by ${store.data.program}.`),
  );
}
