// The latency cursor: only dipoles within a window around it are shown; it plays through the latencies there are.

import { numberOf } from "../model/Filter";
import type { State, Store } from "../model/Store";
import { element, button } from "./Element";
import { checkBox, labelled, numberInput, showNumber, slider } from "./Field";

const playSeconds = 12; // from the first latency to the last
const steps = 200; // of the cursor
const usualShare = 0.08; // of all latencies that the window is wide

export interface TimeSpan {
  first: number; // ms
  last: number;
}

// Nothing when no dipole has a latency, or all have the same.
export function timeSpanOf(store: Store): TimeSpan | null {
  const { columns, roles } = store.data.dipoles;
  const values = (columns[roles.latency]?.values ?? []).map(numberOf).filter((value) => !Number.isNaN(value));
  const first = values.reduce((a, b) => Math.min(a, b), Infinity);
  const last = values.reduce((a, b) => Math.max(a, b), -Infinity);
  return last > first ? { first, last } : null;
}

function rounded(ms: number): number {
  return Number(ms.toPrecision(4));
}

function usualCursor(span: TimeSpan): NonNullable<State["cursor"]> {
  return { at: span.first, width: rounded((span.last - span.first) * usualShare) };
}

export function toggleCursor(store: Store, span: TimeSpan): void {
  store.set(store.state.cursor === null ? { cursor: usualCursor(span) } : { cursor: null, isPlaying: false });
}

export function togglePlay(store: Store, span: TimeSpan): void {
  store.set({ isPlaying: !store.state.isPlaying, cursor: store.state.cursor ?? usualCursor(span) });
}

export function stepCursor(store: Store, span: TimeSpan, step: number): void {
  const cursor = store.state.cursor ?? usualCursor(span);
  const at = cursor.at + (step * (span.last - span.first)) / steps;
  store.set({ cursor: { ...cursor, at: Math.min(span.last, Math.max(span.first, at)) } });
}

// Moves the cursor while it plays; behind the last latency it begins again.
function play(store: Store, span: TimeSpan): void {
  let before = 0;
  const advance = (now: number): void => {
    const { isPlaying, cursor } = store.state;
    if (!isPlaying || cursor === null) {
      before = 0;
      return;
    }
    const passed = before === 0 ? 0 : Math.min(now - before, 250) / 1000;
    before = now;
    const at = cursor.at + (passed * (span.last - span.first)) / playSeconds;
    store.set({ cursor: { ...cursor, at: at > span.last ? span.first : at } });
    requestAnimationFrame(advance);
  };
  store.onChange((changed, state) => {
    if (changed.has("isPlaying") && state.isPlaying) {
      before = 0;
      requestAnimationFrame(advance);
    }
  });
}

export function mountTime(store: Store, root: HTMLElement): void {
  const span = timeSpanOf(store);
  if (span === null) {
    return;
  }
  const start = button("▶", "Play through the latencies", () => togglePlay(store, span), "Space");
  const box = checkBox("Latency cursor", "k", () => toggleCursor(store, span));
  const step = (span.last - span.first) / steps;
  const at = slider("Latency cursor, ms", { least: span.first, most: span.last, step }, (ms) =>
    store.set({ cursor: { ...(store.state.cursor ?? usualCursor(span)), at: ms } }),
  );
  const width = numberInput("Width of the window around the cursor, ms", {
    onValue: (ms) => {
      const { cursor } = store.state;
      if (cursor !== null && ms !== null && ms > 0) {
        store.set({ cursor: { ...cursor, width: ms } });
      }
    },
  });
  const said = element("output");
  const show = ({ cursor, isPlaying }: Readonly<State>): void => {
    box.input.checked = cursor !== null;
    start.textContent = isPlaying ? "❚❚" : "▶";
    start.setAttribute("aria-pressed", String(isPlaying));
    const used = cursor ?? usualCursor(span);
    at.value = String(used.at);
    showNumber(width, used.width);
    width.disabled = cursor === null;
    said.textContent = cursor === null ? "off" : `${cursor.at.toFixed(1)} ms`;
    at.setAttribute("aria-valuetext", said.textContent);
  };
  show(store.state);
  store.onChange((changed, state) => (changed.has("cursor") || changed.has("isPlaying")) && show(state));
  play(store, span);
  root.append(start, box.element, at, said, labelled("window, ms", width));
}
