// What the audit of the imported files found, over everything: what is wrong or doubtful cannot be overlooked,
// notes are collapsed.

import type { FindingData, Severity } from "../data/PageData";
import type { Store } from "../model/Store";
import { button, element } from "../shell/Element";
import { foreign } from "./Foreign";
import { selectRows } from "./TableSelection";

const words: Readonly<Record<Severity, string>> = { wrong: "Wrong", doubtful: "Doubtful", note: "Note" };

// Drawn, because fonts without such signs are common: an octagon, a triangle, a circle, each with its mark.
const outlines: Readonly<Record<Severity, string>> = {
  wrong: "M7 1h10l6 6v10l-6 6H7l-6-6V7zM7 8l4 4-4 4 1 1 4-4 4 4 1-1-4-4 4-4-1-1-4 4-4-4z",
  doubtful: "M12 1l12 22H0zM11 9v7h2V9zM11 18v2h2v-2z",
  note: "M12 1a11 11 0 1 0 0 22a11 11 0 1 0 0-22zM11 10v8h2v-8zM11 6v2h2V6z",
};

export function severityWord(severity: Severity): string {
  return words[severity];
}

function icon(severity: Severity): SVGElement {
  const space = "http://www.w3.org/2000/svg";
  const picture = document.createElementNS(space, "svg");
  picture.setAttribute("viewBox", "0 0 24 24");
  picture.setAttribute("class", "finding-icon");
  picture.setAttribute("aria-hidden", "true");
  const path = document.createElementNS(space, "path");
  path.setAttribute("d", outlines[severity]);
  path.setAttribute("fill", "currentColor");
  path.setAttribute("fill-rule", "evenodd");
  picture.append(path);
  return picture;
}

const sentenceLength = 1000; // characters

function placeOf({ file, line }: FindingData): (Node | string)[] {
  const parts: (Node | string)[] = [];
  if (file !== null) {
    parts.push(foreign(file));
  }
  if (line > 0) {
    parts.push(`${file === null ? "line" : ", line"} ${line}`);
  }
  return parts;
}

export function findingText(finding: FindingData): HTMLElement {
  const place = placeOf(finding);
  const text = element("span", { class: "finding-text" }, foreign(finding.sentence, sentenceLength));
  if (finding.remedy !== "") {
    text.append(" ", element("em", {}, foreign(finding.remedy, sentenceLength)));
  }
  if (place.length > 0) {
    text.append(" ", element("span", { class: "finding-place" }, "(", ...place, ")"));
  }
  return text;
}

function badge(severity: Severity): HTMLElement {
  return element("span", { class: "finding-badge" }, icon(severity), ` ${severityWord(severity)}: `);
}

function findingItem(store: Store, finding: FindingData): HTMLElement {
  const item = element("li", { class: `finding ${finding.severity}` });
  item.append(badge(finding.severity), findingText(finding));
  const { rows } = finding;
  if (rows.length > 0) {
    const words = `Select ${rows.length === 1 ? "1 dipole" : `${rows.length} dipoles`}`;
    item.append(" ", button(words, `${words} that this concerns`, () => selectRows(store, rows, rows[0] ?? -1)));
  }
  return item;
}

function textItem(kind: Severity, text: string): HTMLElement {
  const item = element("li", { class: `finding ${kind}` });
  item.append(badge(kind), foreign(text, sentenceLength));
  return item;
}

function folded(summary: string, items: readonly HTMLElement[], isOpen: boolean): HTMLElement[] {
  if (items.length === 0) {
    return [];
  }
  const list = element("ul", { class: "finding-list" }, ...items);
  const details = element("details", {}, element("summary", {}, summary), list);
  details.open = isOpen;
  return [details];
}

const mostShown = 4; // of what is doubtful; the others are behind a fold

export function mountFindings(store: Store, parent: HTMLElement): void {
  const { findings, repaired } = store.data;
  const of = (severity: Severity) =>
    findings.filter((finding) => finding.severity === severity).map((finding) => findingItem(store, finding));
  const wrong = of("wrong");
  const doubtful = of("doubtful");
  const notes = [...of("note"), ...repaired.map((text) => textItem("note", `Repaired: ${text}`))];
  const open = [...wrong, ...doubtful.slice(0, mostShown)];
  const rest = doubtful.slice(mostShown);
  if (open.length > 0) {
    parent.append(element("ul", { class: "finding-list", role: "alert" }, ...open));
  }
  parent.append(
    ...folded(`${rest.length} more doubtful`, rest, false),
    ...folded(`${notes.length} ${notes.length === 1 ? "note" : "notes"}`, notes, false),
  );
  parent.hidden = parent.childElementCount === 0;
}
