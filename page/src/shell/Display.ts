// How the dipoles and the head are shown.

import type { ColourBy, PageData } from "../data/PageData";
import type { CutName, State, Store } from "../model/Store";
import { conventionWords } from "../panes/Sides";
import { button, element } from "./Element";
import { checkBox, labelled, select, slider, type Choice } from "./Field";
import { makeLegend } from "./Legend";

const anyDistance = 31; // the slider's last step

export const cuts: readonly (Choice & { value: CutName })[] = [
  { value: "none", text: "whole head" },
  { value: "sagittal", text: "cut sagittally" },
  { value: "coronal", text: "cut coronally" },
  { value: "axial", text: "cut axially" },
  { value: "corner", text: "corner taken out" },
];

export function colourChoices(data: PageData): readonly (Choice & { value: ColourBy })[] {
  const { roles } = data.dipoles;
  const all: readonly (Choice & { value: ColourBy; isThere: boolean })[] = [
    { value: "own", text: "each dipole's own", isThere: true },
    { value: "latency", text: "latency", isThere: roles.latency >= 0 },
    { value: "fitError", text: "fit error", isThere: roles.fitError >= 0 },
    { value: "moment", text: "moment", isThere: roles.moment >= 0 },
    { value: "cluster", text: "cluster", isThere: data.clusters.clusters.length > 0 },
  ];
  return all.filter(({ isThere }) => isThere);
}

export function toleranceWords(mm: number | null): string {
  return mm === null ? "at any distance" : `within ${mm} mm`;
}

function toleranceField(store: Store): HTMLElement {
  const said = element("output");
  const input = slider("How far from a slice dipoles are shown on it", { least: 0.5, most: anyDistance, step: 0.5 }, (mm) =>
    store.set({ toleranceMm: mm >= anyDistance ? null : mm }),
  );
  const show = ({ toleranceMm }: Readonly<State>): void => {
    input.value = String(toleranceMm ?? anyDistance);
    said.textContent = toleranceWords(toleranceMm);
    input.setAttribute("aria-valuetext", said.textContent);
  };
  show(store.state);
  store.onChange((changed, state) => changed.has("toleranceMm") && show(state));
  return labelled("On slices", input, said);
}

function windowField(store: Store): HTMLElement {
  const { head } = store.data;
  if (head === null) {
    return element("span", { hidden: "" });
  }
  const [least, most] = head.range;
  const step = (most - least) / 255;
  const set = (at: 0 | 1, value: number): void => {
    const [low, high] = store.state.window ?? head.window;
    const least = step / 2;
    store.set({
      window: at === 0 ? [Math.min(value, high - least), high] : [low, Math.max(value, low + least)],
    });
  };
  const black = slider("Grey value shown as black", { least, most, step }, (value) => set(0, value));
  const white = slider("Grey value shown as white", { least, most, step }, (value) => set(1, value));
  const show = ({ window }: Readonly<State>): void => {
    [black.value, white.value] = [String(window?.[0]), String(window?.[1])];
  };
  show(store.state);
  store.onChange((changed, state) => changed.has("window") && show(state));
  const reset = button("Reset", "Grey values as at first", () => store.set({ window: head.window }), "w");
  const name = element("span", { class: "field-name" }, "Black, white");
  return element("div", { class: "field" }, name, black, white, reset);
}

function bound<Name extends keyof State>(
  store: Store,
  name: Name,
  title: string,
  choices: readonly Choice[],
  read: (value: string) => Partial<State>,
  write: (state: Readonly<State>) => string,
): HTMLElement {
  const made = select(title, choices, (value) => store.set(read(value)));
  made.value = write(store.state);
  store.onChange((changed, state) => {
    if (changed.has(name)) {
      made.value = write(state);
    }
  });
  return labelled(title, made);
}

function flag(store: Store, name: "areArrowsShown" | "areLabelsShown" | "areHiddenShown", text: string, key: string) {
  const box = checkBox(text, key, (isOn) => store.set({ [name]: isOn }));
  box.input.checked = store.state[name];
  store.onChange((changed, state) => {
    if (changed.has(name)) {
      box.input.checked = state[name];
    }
  });
  return box.element;
}

export function mountDisplay(store: Store, root: HTMLElement): void {
  const { data } = store;
  const sides = [
    { value: "radiological", text: "radiological" },
    { value: "neurological", text: "neurological" },
  ];
  const words = element("p", { class: "words" }, conventionWords(store.state.isRadiological));
  store.onChange((changed, state) => {
    if (changed.has("isRadiological")) {
      words.textContent = conventionWords(state.isRadiological);
    }
  });
  const hasHidden = (data.dipoles.columns[data.dipoles.roles.shown]?.values ?? []).includes(false);
  root.append(
    element("h2", {}, "Display"),
    element(
      "div",
      { class: "fields" },
      bound(store, "colourBy", "Colour by", colourChoices(data), (by) => ({ colourBy: by as ColourBy }), (s) => s.colourBy),
      bound(
        store,
        "isRadiological",
        "Sides",
        sides,
        (value) => ({ isRadiological: value === "radiological" }),
        (state) => (state.isRadiological ? "radiological" : "neurological"),
      ),
      toleranceField(store),
      bound(store, "cut", "3D", cuts, (value) => ({ cut: value as CutName }), (state) => state.cut),
      windowField(store),
      element(
        "div",
        { class: "field checks" },
        flag(store, "areArrowsShown", "Arrows", "a"),
        flag(store, "areLabelsShown", "Labels", "l"),
        ...(hasHidden ? [flag(store, "areHiddenShown", "Hidden dipoles", "h")] : []),
      ),
    ),
    makeLegend(store),
    words,
  );
}
