// Which dipoles are shown.

import type { Limits, PageData } from "../data/PageData";
import { turnedOver } from "../model/Limits";
import type { State, Store } from "../model/Store";
import { button, element } from "./Element";
import { checkBox, labelled, numberInput, select, showNumber } from "./Field";

type Limited = "fitError" | "moment" | "latency";

const unset: Limits = { least: null, most: null };

function unitOf(data: PageData, name: Limited): string {
  return data.dipoles.columns[data.dipoles.roles[name]]?.unit ?? "";
}

// Two numbers; `said` turns the limits of the store to those that are said, and back.
function limitField(
  store: Store,
  name: Limited,
  title: () => string,
  said: (limits: Limits) => Limits = (limits) => limits,
): HTMLElement {
  const text = element("span", { class: "field-name" });
  const set = (change: Partial<Limits>): void => store.set({ [name]: said({ ...said(store.state[name]), ...change }) });
  const doubt = element("span", { class: "said", role: "status" });
  const doubts = { least: "", most: "" };
  const tell = (): void => {
    const { least: from, most: to } = said(store.state[name]);
    const isTurned = from !== null && to !== null && from > to;
    const turnedWords = isTurned ? `${from} is more than ${to}: no dipole passes` : "";
    doubt.textContent = [doubts.least, doubts.most, turnedWords].filter((words) => words !== "").join("; ");
  };
  const field = (end: "least" | "most"): HTMLInputElement =>
    numberInput("", {
      onValue: (value) => set({ [end]: value }),
      onDoubt: (words) => {
        doubts[end] = words;
        tell();
      },
      unit: () => unitOf(store.data, name),
    });
  const [least, most] = [field("least"), field("most")];
  const group = element("div", { class: "field", role: "group" }, text, least, element("span", {}, "to"), most, doubt);
  const show = (): void => {
    text.textContent = title();
    group.setAttribute("aria-label", title());
    least.setAttribute("aria-label", `${title()}, at least`);
    most.setAttribute("aria-label", `${title()}, at most`);
    [least.title, most.title] = ["at least", "at most"];
    const limits = said(store.state[name]);
    showNumber(least, limits.least);
    showNumber(most, limits.most);
    for (const [end, input] of [["least", least], ["most", most]] as const) {
      doubts[end] = input.getAttribute("aria-invalid") === "true" ? doubts[end] : "";
    }
    tell();
  };
  show();
  store.onChange((changed) => (changed.has(name) || changed.has("isGoodness")) && show());
  return group;
}

function labelField(store: Store): HTMLElement {
  const input = element("input", { type: "search", "aria-label": "Label contains", class: "text" });
  input.addEventListener("input", () => store.set({ label: input.value }));
  store.onChange((changed, state) => {
    if (changed.has("label") && input.value !== state.label) {
      input.value = state.label;
    }
  });
  return labelled("Label has", input);
}

function clusterField(store: Store): HTMLElement {
  const choices = store.data.clusters.clusters.map(({ count }, i) => ({
    value: String(i + 1),
    text: `only ${i + 1} (${count})`,
  }));
  const all = { value: "0", text: "all dipoles" };
  const made = select("Cluster", [all, ...choices], (value) => store.set({ isolated: Number(value) }));
  store.onChange((changed, state) => {
    if (changed.has("isolated")) {
      made.value = String(state.isolated);
    }
  });
  return labelled("Cluster", made);
}

// Dipoles that their own switch hides are shown then too: all is all.
export function clearFilters(store: Store): void {
  store.set({
    areHiddenShown: true,
    fitError: unset,
    moment: unset,
    latency: unset,
    label: "",
    isolated: 0,
    cursor: null,
    isPlaying: false,
    columns: new Map(),
  });
}

function goodnessBox(store: Store): HTMLElement {
  const box = checkBox("as goodness of fit", "g", (isGoodness) => store.set({ isGoodness }));
  store.onChange((changed, state) => {
    if (changed.has("isGoodness")) {
      box.input.checked = state.isGoodness;
    }
  });
  return box.element;
}

export function mountFilters(store: Store, root: HTMLElement): void {
  const { data } = store;
  const { roles } = data.dipoles;
  const fields: HTMLElement[] = [];
  const named = (text: string, name: Limited): string => {
    const unit = unitOf(data, name);
    return unit === "" ? text : `${text}, ${unit}`;
  };
  if (roles.fitError >= 0) {
    const title = (): string => (store.state.isGoodness ? "Goodness of fit, %" : named("Fit error", "fitError"));
    const said = (limits: Limits): Limits => (store.state.isGoodness ? turnedOver(limits) : limits);
    fields.push(limitField(store, "fitError", title, said), goodnessBox(store));
  }
  if (roles.moment >= 0) {
    fields.push(limitField(store, "moment", () => named("Moment", "moment")));
  }
  if (roles.latency >= 0) {
    fields.push(limitField(store, "latency", () => named("Latency", "latency")));
  }
  if (roles.label >= 0) {
    fields.push(labelField(store));
  }
  if (data.clusters.clusters.length > 0) {
    fields.push(clusterField(store));
  }
  const count = element("output", { class: "count", "aria-live": "polite" });
  const show = ({ passing, isPlaying }: Readonly<State>): void => {
    count.setAttribute("aria-live", isPlaying ? "off" : "polite"); // not each step
    count.textContent = `${passing.length} of ${data.dipoles.count} dipoles`;
    count.classList.toggle("some", passing.length < data.dipoles.count);
  };
  show(store.state);
  store.onChange((changed, state) => (changed.has("passing") || changed.has("isPlaying")) && show(state));
  const clear = button("Show all", "Show all: take every filter away, show hidden dipoles too", () => clearFilters(store), "Shift+C");
  root.append(
    element("div", { class: "heading" }, element("h2", {}, "Filters"), count, clear),
    element("div", { class: "fields" }, ...fields),
  );
}
