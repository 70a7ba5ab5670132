// What the user has chosen, in one place; whoever shows something listens to the members that concern it.

import type { ColourBy, Limits, PageData, Vector } from "../data/PageData";

// What is taken away of the head in 3D, at the crosshair, on the side of the eye.
export type CutName = "none" | "axial" | "coronal" | "sagittal" | "corner";

export interface State {
  crosshair: Vector; // world mm
  selection: readonly number[]; // rows of the set, in rising order
  current: number; // the row that was chosen last; -1: none
  colourBy: ColourBy;
  toleranceMm: number | null; // null: any distance from the slice
  fitError: Limits; // percent
  isGoodness: boolean; // the same limits are said as goodness of fit, 100 percent minus the error
  moment: Limits;
  latency: Limits; // ms
  label: string; // part of a label, large or small letters; empty: any
  columns: ReadonlyMap<number, string>; // what is typed over columns of the list; see ColumnFilter.ts
  isolated: number; // cluster that is shown alone, 1 the first; 0: all dipoles
  cursor: { at: number; width: number } | null; // ms: only dipoles within the window around it; null: off
  isPlaying: boolean;
  areHiddenShown: boolean; // dipoles that their own switch hides
  areArrowsShown: boolean;
  areLabelsShown: boolean;
  isRadiological: boolean; // the patient's left on the right
  window: readonly [number, number] | null; // grey values; null: no head
  cut: CutName;
  headFailure: string; // why the head of the page is not shown, a sentence; empty: it is
  large: "axial" | "coronal" | "sagittal" | "scene" | null; // the pane that is shown alone
  passing: readonly number[]; // rows that pass all of that, in the order of the set; see Filter.ts
}

export type Changed = ReadonlySet<keyof State>;

export class Store {
  readonly data: PageData;
  #state: State;
  #listeners: ((changed: Changed, state: Readonly<State>) => void)[] = [];
  #derive: (data: PageData, state: Readonly<State>) => readonly number[];

  // `derive` makes `passing` of all else.
  constructor(data: PageData, derive: (data: PageData, state: Readonly<State>) => readonly number[]) {
    this.data = data;
    this.#derive = derive;
    const { settings } = data;
    const state: State = {
      crosshair: settings.crosshair,
      selection: [],
      current: -1,
      colourBy: settings.colourBy,
      toleranceMm: settings.toleranceMm,
      fitError: settings.fitError,
      isGoodness: false,
      moment: settings.moment,
      latency: settings.latency,
      label: "",
      columns: new Map(),
      isolated: 0,
      cursor: null,
      isPlaying: false,
      areHiddenShown: false,
      areArrowsShown: settings.areArrowsShown,
      areLabelsShown: settings.areLabelsShown,
      isRadiological: true,
      window: data.head === null ? null : data.head.window,
      cut: "sagittal",
      headFailure: "",
      large: null,
      passing: [],
    };
    this.#state = { ...state, passing: derive(data, state) };
  }

  get state(): Readonly<State> {
    return this.#state;
  }

  // Listeners hear once of all members that differ now, `passing` with those that it follows from.
  set(change: Partial<Omit<State, "passing">>): void {
    const next: State = { ...this.#state, ...change };
    const changed = new Set<keyof State>();
    for (const name of Object.keys(change) as (keyof State)[]) {
      if (this.#state[name] !== next[name]) {
        changed.add(name);
      }
    }
    if (changed.size === 0) {
      return;
    }
    if (filtering.some((name) => changed.has(name))) {
      next.passing = this.#derive(this.data, next);
      changed.add("passing");
    }
    this.#state = next;
    for (const listener of this.#listeners) {
      listener(changed, next);
    }
  }

  onChange(listener: (changed: Changed, state: Readonly<State>) => void): void {
    this.#listeners.push(listener);
  }
}

const filtering: readonly (keyof State)[] = [
  "fitError",
  "moment",
  "latency",
  "label",
  "columns",
  "isolated",
  "cursor",
  "areHiddenShown",
];
