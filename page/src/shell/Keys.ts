// Keys of the page, and the list of them that `?` shows.

import { button, element } from "./Element";

export interface Key {
  key: string; // as KeyboardEvent names it
  shown?: string; // when that is no name for people
  words: string; // what it does; empty: the line before it says so
  isMoving?: boolean; // moves what the panes show, unless the focus is in something that the key scrolls
  run: (event: KeyboardEvent) => void;
}

// Keys that a part of the page takes while it has the focus.
export interface LocalKeys {
  title: string;
  lines: readonly (readonly [names: string, words: string])[];
}

function isTyping(target: EventTarget | null): boolean {
  if (!(target instanceof HTMLElement)) {
    return false;
  }
  const isText = target instanceof HTMLInputElement && !["checkbox", "radio", "range", "button"].includes(target.type);
  return isText || target instanceof HTMLTextAreaElement || target instanceof HTMLSelectElement || target.isContentEditable;
}

// Within what is higher than the room it has: there arrows and page keys scroll, as everywhere.
function isScrolling(target: EventTarget | null): boolean {
  const side = target instanceof HTMLElement ? target.closest(".side, .findings") : null;
  return side !== null && side.scrollHeight > side.clientHeight;
}

// What a control does with a key itself is left to it.
function isTakenByControl(event: KeyboardEvent): boolean {
  const { target, key } = event;
  if (target instanceof HTMLInputElement && target.type === "range") {
    return key.startsWith("Arrow") || key.startsWith("Page") || key === "Home" || key === "End";
  }
  const isPressed = target instanceof HTMLButtonElement || target instanceof HTMLInputElement;
  return (isPressed || (target instanceof HTMLElement && target.tagName === "SUMMARY")) && key === " ";
}

// With Control or Alt a key is the browser's or the system's. But many keyboards have [ ] { } on keys that need Alt
// (AltGr, Option): a sign that was typed with them is that sign.
function isMenuKey(event: KeyboardEvent): boolean {
  const isSign = event.key.length === 1 && !/[\p{L}\p{N}\s]/u.test(event.key);
  if (event.getModifierState("AltGraph")) {
    return !isSign;
  }
  return event.ctrlKey || event.metaKey || (event.altKey && !isSign);
}

export function listenToKeys(keys: readonly Key[]): void {
  document.addEventListener("keydown", (event) => {
    if (event.key === "Escape" && isTyping(event.target) && event.target instanceof HTMLElement) {
      event.target.blur(); // then keys are keys again
      event.preventDefault(); // a browser would empty what searches
      return;
    }
    if (event.defaultPrevented || isMenuKey(event) || isTyping(event.target) || isTakenByControl(event)) {
      return;
    }
    if (document.querySelector("dialog[open]") !== null) {
      return;
    }
    const found = keys.find(({ key }) => key === event.key || key === `Shift+${event.key}`);
    const isMeant = found !== undefined && (!found.key.startsWith("Shift+") || event.shiftKey);
    if (isMeant && !(found.isMoving === true && isScrolling(event.target))) {
      event.preventDefault();
      found.run(event);
    }
  });
}

function keyLines(lines: LocalKeys["lines"]): HTMLElement {
  const rows = lines.map(([names, words]) =>
    element("div", {}, element("dt", {}, names), element("dd", {}, words)));
  return element("dl", { class: "keys-list" }, ...rows);
}

export function keysDialog(keys: readonly Key[], local: readonly LocalKeys[]): HTMLDialogElement {
  const lines: { names: string[]; words: string }[] = [];
  for (const { key, shown, words } of keys) {
    const name = shown ?? key;
    if (words === "") {
      lines.at(-1)?.names.push(name);
    } else {
      lines.push({ names: [name], words });
    }
  }
  const rows = lines.map(({ names, words }) => {
    const parts = names.flatMap((name, i) => (i === 0 ? [element("kbd", {}, name)] : [" ", element("kbd", {}, name)]));
    return element("div", {}, element("dt", {}, ...parts), element("dd", {}, words));
  });
  const dialog = element("dialog", { "aria-label": "Keys" });
  dialog.append(
    // It has the focus: the button below would scroll the first lines out of sight.
    element("h2", { autofocus: "", tabindex: "-1" }, "Keys"),
    element("dl", { class: "keys-list" }, ...rows),
    ...[...local, { title: "Mouse", lines: mouse }].flatMap(({ title, lines }) => [element("h2", {}, title), keyLines(lines)]),
    button("Close", "Close", () => dialog.close(), "Esc"),
  );
  document.body.append(dialog);
  return dialog;
}

const mouse = [
  ["click, drag", "moves the crosshair; in 3D turns the head"],
  ["click on a dipole", "selects it; with Ctrl or Shift adds it"],
  ["wheel", "through the slices; in 3D nearer and farther"],
  ["Ctrl + wheel", "zooms the slices at the pointer"],
  ["right button, drag", "grey values: to the side wider, up brighter, down darker"],
  ["Alt or middle, drag", "moves the slice"],
  ["double click", "this pane alone, and all four again"],
] as const;
