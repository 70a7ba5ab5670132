// The legend of the colours, in the control bar.

import { legendOf } from "../model/Legend";
import type { Store } from "../model/Store";
import { element } from "./Element";

function patch(colour: string): HTMLElement {
  const made = element("span", { class: "patch", "aria-hidden": "true" });
  made.style.background = colour;
  return made;
}

export function legendParts(store: Store): HTMLElement[] {
  const { title, scale, low, high, entries } = legendOf(store.data, store.state);
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
  root.append(...legendParts(store));
  store.onChange((changed) => {
    const isOther = changed.has("colourBy") || (changed.has("passing") && store.state.colourBy === "cluster");
    if (isOther) {
      root.replaceChildren(...legendParts(store));
    }
  });
  return root;
}
