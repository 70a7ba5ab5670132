// Pointer and wheel in the panes.

import { chooseRow } from "../model/Choose";
import type { Vector } from "../data/PageData";
import { inGrid, inWorld } from "./Grid";
import { plus, replaced } from "../model/Vector";
import { markAt } from "./Marks";
import type { PaneName } from "./PaneName";
import type { Panes } from "./Panes";
import { sliceNames, type SliceName } from "./SliceView";

type Drag = (event: PointerEvent, dx: number, dy: number) => void;

const zooms = { least: 0.5, most: 16 };

// Moves the crosshair `steps` mm through a slice's stack.
export function stepThrough(panes: Panes, name: SliceName, steps: number): void {
  const { store, grid } = panes;
  const view = panes.slices[name];
  const at = inGrid(grid, store.state.crosshair);
  const value = Math.round(at[view.through] + steps);
  store.set({ crosshair: held(panes, inWorld(grid, replaced(at, view.through, value))) });
}

// The crosshair stays where the head, or what stands in for it, is.
export function held(panes: Panes, place: Vector): Vector {
  const { low, high } = panes.grid.box;
  const at = inGrid(panes.grid, place);
  const within = (i: 0 | 1 | 2): number => Math.min(high[i], Math.max(low[i], at[i]));
  return inWorld(panes.grid, [within(0), within(1), within(2)]);
}

export function zoomSlices(panes: Panes, factor: number, name: SliceName | null, x = 0, y = 0): void {
  const before = panes.zoom;
  panes.zoom = Math.min(zooms.most, Math.max(zooms.least, before * factor));
  const grown = panes.zoom / before;
  for (const each of sliceNames) {
    const view = panes.slices[each];
    const { crosshair } = panes.store.state;
    const fixed = each === name ? view.placeAt(x, y, crosshair) : crosshair;
    const at = inGrid(panes.grid, fixed);
    view.middle = [
      at[view.column] + (view.middle[0] - at[view.column]) / grown,
      at[view.row] + (view.middle[1] - at[view.row]) / grown,
    ];
  }
  panes.invalidate(true);
}

export function zoomScene(panes: Panes, factor: number): void {
  panes.scene.zoom = Math.min(8, Math.max(0.4, panes.scene.zoom * factor));
  panes.invalidateScene();
}

export function turnScene(panes: Panes, azimuth: number, elevation: number): void {
  panes.scene.azimuth = (((panes.scene.azimuth + azimuth) % 360) + 360) % 360;
  panes.scene.elevation = Math.min(90, Math.max(-90, panes.scene.elevation + elevation));
  panes.invalidateScene();
}

export function resetViews(panes: Panes): void {
  panes.zoom = 1;
  panes.scene.zoom = 1;
  sliceNames.forEach((name) => panes.slices[name].center());
  panes.invalidate(true);
}

// `dx` and `dy` widen and raise the window, in shares of the grey values there are.
export function changeWindow(panes: Panes, dx: number, dy: number): void {
  const { store } = panes;
  const { head } = store.data;
  if (head === null || store.state.window === null) {
    return;
  }
  const [low, high] = store.state.window;
  const all = head.range[1] - head.range[0];
  const width = Math.min(2 * all, Math.max(all / 250, high - low + dx * all));
  const level = Math.min(head.range[1], Math.max(head.range[0], (low + high) / 2 + dy * all));
  store.set({ window: [level - width / 2, level + width / 2] });
}

function paneDrag(panes: Panes, name: PaneName, event: PointerEvent): Drag | null {
  const { store } = panes;
  if (name === "scene") {
    return event.button === 0 ? (_, dx, dy) => turnScene(panes, -dx * 0.5, dy * 0.5) : null;
  }
  const view = panes.slices[name];
  if (event.button === 2) {
    return (_, dx, dy) => changeWindow(panes, dx / 400, dy / 400);
  }
  if (event.button === 1 || (event.button === 0 && event.altKey)) {
    const sign = view.isMirrored ? -1 : 1;
    return (_, dx, dy) => {
      view.middle = [view.middle[0] - (sign * dx) / view.scale, view.middle[1] + dy / view.scale];
      panes.invalidate(true);
    };
  }
  if (event.button !== 0) {
    return null;
  }
  return (moved) => {
    const [x, y] = within(panes, name, moved);
    store.set({ crosshair: held(panes, view.placeAt(x, y, store.state.crosshair)) });
  };
}

function within(panes: Panes, name: PaneName, event: MouseEvent): [number, number] {
  const box = panes.elements[name].marks.getBoundingClientRect();
  return [event.clientX - box.left, event.clientY - box.top];
}

function listenToPane(panes: Panes, name: PaneName): void {
  const { marks } = panes.elements[name];
  const slop = 3; // pixels: a click is no drag
  let drag: Drag | null = null;
  let start: readonly [number, number] | null = null;
  let hit = -1;
  marks.addEventListener("pointerdown", (event) => {
    marks.focus({ preventScroll: true });
    marks.setPointerCapture(event.pointerId);
    const [x, y] = within(panes, name, event);
    drag = paneDrag(panes, name, event);
    start = [event.clientX, event.clientY];
    hit = event.button === 0 ? (markAt(panes.marks[name], x, y)?.row ?? -1) : -1;
    if (hit < 0 && event.button === 0 && name !== "scene" && !event.altKey) {
      drag?.(event, 0, 0);
    }
    event.preventDefault();
  });
  marks.addEventListener("pointermove", (event) => {
    if (start === null) {
      const [x, y] = within(panes, name, event);
      marks.classList.toggle("over", markAt(panes.marks[name], x, y) !== null);
      return;
    }
    const [dx, dy] = [event.clientX - start[0], event.clientY - start[1]];
    if (hit >= 0 && Math.hypot(dx, dy) <= slop) {
      return;
    }
    hit = -1;
    start = [event.clientX, event.clientY];
    drag?.(event, dx, dy);
  });
  marks.addEventListener("pointerup", (event) => {
    if (hit >= 0) {
      chooseRow(panes.store, hit, event.ctrlKey || event.metaKey || event.shiftKey);
    }
    [drag, start, hit] = [null, null, -1];
  });
  marks.addEventListener("pointercancel", () => ([drag, start, hit] = [null, null, -1]));
  marks.addEventListener("contextmenu", (event) => event.preventDefault());
  marks.addEventListener("dblclick", () => {
    panes.store.set({ large: panes.store.state.large === name ? null : name });
  });
  marks.addEventListener("wheel", (event) => turnWheel(panes, name, event), { passive: false });
}

function turnWheel(panes: Panes, name: PaneName, event: WheelEvent): void {
  event.preventDefault();
  const step = Math.sign(event.deltaY);
  if (name === "scene") {
    zoomScene(panes, 1.12 ** -step);
  } else if (event.ctrlKey) {
    const [x, y] = within(panes, name, event);
    zoomSlices(panes, 1.12 ** -step, name, x, y);
  } else {
    stepThrough(panes, name, -step);
  }
}

export function listenToMouse(panes: Panes): void {
  for (const name of [...sliceNames, "scene"] as const) {
    listenToPane(panes, name);
  }
}

// Moves the crosshair within a slice, pixels of the picture to the right and up.
export function nudge(panes: Panes, name: SliceName, right: number, up: number): void {
  const view = panes.slices[name];
  const at = inGrid(panes.grid, panes.store.state.crosshair);
  const sign = view.isMirrored ? -1 : 1;
  const moved: Vector = replaced(
    replaced(at, view.column, at[view.column] + sign * right),
    view.row,
    at[view.row] + up,
  );
  panes.store.set({ crosshair: held(panes, inWorld(panes.grid, plus(moved, [0, 0, 0]))) });
}
