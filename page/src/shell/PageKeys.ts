// What each key does.

import { stepRow } from "../model/Choose";
import { tabNames, type ListActions } from "../lists/lists";
import type { Store } from "../model/Store";
import { changeWindow, nudge, resetViews, stepThrough, turnScene, zoomScene, zoomSlices } from "../panes/Mouse";
import type { PaneName } from "../panes/PaneName";
import type { Panes } from "../panes/Panes";
import type { SliceName } from "../panes/SliceView";
import { colourChoices, cuts } from "./Display";
import { clearFilters } from "./Filters";
import type { Key } from "./Keys";
import { stepCursor, timeSpanOf, toggleCursor, togglePlay } from "./Time";

export interface PageActions {
  savePicture: () => void;
  turnTheme: () => void;
  showKeys: () => void;
  showAbout: () => void;
  list: ListActions;
  search: () => void;
}

// The one behind `value`, from the last on to the first.
function following<T>(values: readonly T[], value: T): T {
  return values[(values.indexOf(value) + 1) % values.length] ?? value;
}

// The pane that keys move: the one with the focus, else the one that the pointer was over last.
function paneFinder(panes: Panes): () => PaneName {
  let pointed: PaneName = "axial";
  const names = ["axial", "coronal", "sagittal", "scene"] as const;
  for (const name of names) {
    panes.elements[name].marks.addEventListener("pointerenter", () => (pointed = name));
  }
  const focused = () => names.find((name) => panes.elements[name].marks === document.activeElement);
  return () => panes.store.state.large ?? focused() ?? pointed;
}

function moveKeys(panes: Panes, current: () => PaneName): Key[] {
  const move = (right: number, up: number) => (event: KeyboardEvent) => {
    const name = current();
    const step = event.shiftKey ? 10 : 1;
    if (name === "scene") {
      turnScene(panes, -right * step * 3, up * step * 3);
    } else {
      nudge(panes, name, right * step, up * step);
    }
  };
  const through = (step: number) => (event: KeyboardEvent) => {
    const name = current();
    stepThrough(panes, name === "scene" ? "axial" : (name as SliceName), event.shiftKey ? 10 * step : step);
  };
  const zoom = (factor: number) => () => {
    if (current() === "scene") {
      zoomScene(panes, factor);
    } else {
      zoomSlices(panes, factor, null);
    }
  };
  return [
    { key: "ArrowLeft", isMoving: true, shown: "←", words: "crosshair in the pane, 1 mm (Shift: 10 mm); turns the head in 3D", run: move(-1, 0) },
    { key: "ArrowRight", isMoving: true, shown: "→", words: "", run: move(1, 0) },
    { key: "ArrowUp", isMoving: true, shown: "↑", words: "", run: move(0, 1) },
    { key: "ArrowDown", isMoving: true, shown: "↓", words: "", run: move(0, -1) },
    { key: "PageUp", isMoving: true, shown: "Page ↑", words: "through the pane's slices, 1 mm (Shift: 10 mm)", run: through(1) },
    { key: "PageDown", isMoving: true, shown: "Page ↓", words: "", run: through(-1) },
    { key: "+", words: "zoom", run: zoom(1.2) },
    { key: "-", words: "", run: zoom(1 / 1.2) },
    { key: "0", words: "the whole head again", run: () => resetViews(panes) },
  ];
}

function paneKeys(store: Store): Key[] {
  const names = ["axial", "coronal", "sagittal", "scene"] as const;
  const words = "axial, coronal, sagittal, 3D alone, and all four again";
  return [
    ...names.map((name, i) => ({
      key: String(i + 1),
      words: i === 0 ? words : "",
      run: () => store.set({ large: store.state.large === name ? null : name }),
    })),
    { key: "Escape", shown: "Esc", words: "all four panes, nothing selected", run: () => store.set({ large: null, selection: [], current: -1 }) },
  ];
}

function shownKeys(store: Store, panes: Panes): Key[] {
  const { data } = store;
  const tolerance = (step: number) => () => {
    const next = Math.max(0.5, (store.state.toleranceMm ?? 31) + step);
    store.set({ toleranceMm: next > 30 ? null : next });
  };
  const choices = colourChoices(data).map(({ value }) => value);
  const resetWindow = (): void => {
    if (data.head !== null) {
      store.set({ window: data.head.window });
    }
  };
  return [
    { key: "n", words: "next, previous dipole", run: () => stepRow(store, 1) },
    { key: "p", words: "", run: () => stepRow(store, -1) },
    { key: "c", words: "colour by the next value", run: () => store.set({ colourBy: following(choices, store.state.colourBy) }) },
    { key: "t", words: "dipoles nearer to, farther from the slice", run: tolerance(-1) },
    { key: "T", shown: "Shift+T", words: "", run: tolerance(1) },
    { key: "a", words: "arrows", run: () => store.set({ areArrowsShown: !store.state.areArrowsShown }) },
    { key: "l", words: "labels", run: () => store.set({ areLabelsShown: !store.state.areLabelsShown }) },
    { key: "h", words: "hidden dipoles", run: () => store.set({ areHiddenShown: !store.state.areHiddenShown }) },
    { key: "r", words: "radiological, neurological", run: () => store.set({ isRadiological: !store.state.isRadiological }) },
    { key: "x", words: "the next way to cut the head in 3D", run: () => store.set({ cut: following(cuts.map(({ value }) => value), store.state.cut) }) },
    { key: "[", words: "grey values: narrower, wider", run: () => changeWindow(panes, -0.02, 0) },
    { key: "]", words: "", run: () => changeWindow(panes, 0.02, 0) },
    { key: "{", words: "brighter, darker", run: () => changeWindow(panes, 0, -0.02) },
    { key: "}", words: "", run: () => changeWindow(panes, 0, 0.02) },
    { key: "w", words: "grey values as at first", run: resetWindow },
    { key: "g", words: "error as goodness of fit", run: () => store.set({ isGoodness: !store.state.isGoodness }) },
    { key: "C", shown: "Shift+C", words: "take every filter away", run: () => clearFilters(store) },
  ];
}

function timeKeys(store: Store): Key[] {
  const span = timeSpanOf(store);
  if (span === null) {
    return [];
  }
  return [
    { key: " ", shown: "Space", words: "play through the latencies, stop", run: () => togglePlay(store, span) },
    { key: "k", words: "latency cursor", run: () => toggleCursor(store, span) },
    { key: ",", words: "cursor earlier, later", run: () => stepCursor(store, span, -1) },
    { key: ".", words: "", run: () => stepCursor(store, span, 1) },
  ];
}

function listKeys(store: Store, list: ListActions): Key[] {
  const clusters = [0, ...store.data.clusters.clusters.map((_, i) => i + 1)];
  const alone = { key: "i", words: "the next cluster alone, all again", run: () => store.set({ isolated: following(clusters, store.state.isolated) }) };
  return [
    { key: "f", words: "to the list", run: list.focusList },
    { key: "u", words: "to what filters the list's columns", run: list.focusFilters },
    { key: "o", words: "which columns the list shows", run: list.chooseColumns },
    { key: "s", words: "save the list as a table (CSV)", run: list.save },
    ...tabNames.map((name, i) => ({ key: String(5 + i), words: i === 0 ? "selected dipoles, plots, clusters" : "", run: () => list.showTab(name) })),
    ...(clusters.length > 1 ? [alone] : []),
  ];
}

export function pageKeys(store: Store, panes: Panes, actions: PageActions): Key[] {
  return [
    ...moveKeys(panes, paneFinder(panes)),
    ...paneKeys(store),
    ...shownKeys(store, panes),
    ...timeKeys(store),
    ...listKeys(store, actions.list),
    { key: "/", words: "filter by label", run: actions.search },
    { key: "e", words: "save the panes as a picture", run: actions.savePicture },
    { key: "d", words: "light, dark", run: actions.turnTheme },
    { key: "b", words: "about this page, licences", run: actions.showAbout },
    { key: "?", words: "these keys", run: actions.showKeys },
  ];
}
