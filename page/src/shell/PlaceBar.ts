// Where the crosshair is, in every frame that is known, and what the atlas calls it.

import type { FrameData } from "../data/PageData";
import type { AtlasLookup } from "../data/Atlas";
import type { Store } from "../model/Store";
import { transformed } from "../model/Vector";
import { element } from "./Element";

const axisNames = ["x", "y", "z"] as const;

function frameLine(frame: FrameData): { root: HTMLElement; numbers: readonly HTMLElement[] } {
  const numbers = axisNames.map(() => element("span", { class: "number" }));
  const parts = axisNames.map((name, i) => element("span", { class: "axis" }, `${name} `, numbers[i] ?? ""));
  const axes = axisNames.map((name, i) => `${name} ${frame.axes[i] ?? ""}`).join(", ");
  const root = element(
    "span",
    { class: "frame", title: frame.description, "data-frame": frame.name },
    element("b", {}, frame.title),
    ...parts,
    element("span", { class: "axes" }, ` mm (${axes})`),
  );
  return { root, numbers };
}

export function mountPlace(store: Store, root: HTMLElement, atlas: AtlasLookup | null): void {
  const { frames } = store.data;
  const lines = frames.map(frameLine);
  root.setAttribute("aria-live", "off");
  root.append(...lines.map((line) => line.root));
  const label = element("span", { class: "atlas" });
  if (atlas !== null) {
    root.append(label);
  }
  const show = (): void => {
    frames.forEach((frame, i) => {
      const place = transformed(frame.fromWorld, store.state.crosshair);
      lines[i]?.numbers.forEach((number, axis) => {
        // No minus before a zero.
        number.textContent = (Math.round((place[axis] ?? NaN) * 10) / 10 + 0).toFixed(1).replace("-", "−");
      });
    });
    if (atlas !== null) {
      const { doubt, name } = atlas.data;
      const said = element("b", {}, `${name}: `);
      const doubtful = element("span", { class: "doubt" }, doubt === null ? "" : ` (${doubt})`);
      label.replaceChildren(said, atlas.say(store.state.crosshair), doubtful);
    }
  };
  show();
  store.onChange((changed) => changed.has("crosshair") && show());
}
