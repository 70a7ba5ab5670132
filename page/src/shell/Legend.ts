// The legend of the colours, in the control bar.

import type { PageData } from "../data/PageData";
import { legendOf } from "../model/Legend";
import type { State, Store } from "../model/Store";
import { element } from "./Element";

function patch(colour: string): HTMLElement {
  const made = element("span", { class: "patch", "aria-hidden": "true" });
  made.style.background = colour;
  return made;
}

export function legendParts(data: PageData, state: Readonly<State>): HTMLElement[] {
  const { title, scale, low, high, entries } = legendOf(data, state);
  const parts: HTMLElement[] = [element("span", { class: "legend-title" }, title)];
  if (scale.length > 0) {
    const bar = element("span", { class: "scale", "aria-hidden": "true" });
    bar.style.background = `linear-gradient(to right, ${scale.join(", ")})`;
    parts.push(element("span", { class: "legend-scale" }, low, bar, high));
  }
  for (const { colour, text } of entries) {
    parts.push(element("span", { class: "legend-entry" }, patch(colour), text));
  }
  return parts;
}

export function makeLegend(store: Store): HTMLElement {
  const root = element("div", { class: "legend", role: "group", "aria-label": "Legend of the colours" });
  root.append(...legendParts(store.data, store.state));
  store.onChange((changed) => {
    const isOther = changed.has("colourBy") || (changed.has("passing") && store.state.colourBy === "cluster");
    if (isOther) {
      root.replaceChildren(...legendParts(store.data, store.state));
    }
  });
  return root;
}
