// Keys of the page, and the list of them that `?` shows.

import { button, element } from "./Element";

export interface Key {
  key: string; // as KeyboardEvent names it
  shown?: string; // when that is no name for people
  words: string; // what it does; empty: the line before it says so
  run: (event: KeyboardEvent) => void;
}

function isTyping(target: EventTarget | null): boolean {
  if (!(target instanceof HTMLElement)) {
    return false;
  }
  const isText = target instanceof HTMLInputElement && !["checkbox", "radio", "range", "button"].includes(target.type);
  return isText || target instanceof HTMLTextAreaElement || target instanceof HTMLSelectElement || target.isContentEditable;
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

export function listenToKeys(keys: readonly Key[]): void {
  document.addEventListener("keydown", (event) => {
    if (event.key === "Escape" && isTyping(event.target) && event.target instanceof HTMLElement) {
      event.target.blur(); // then keys are keys again
      return;
    }
    const isMenu = event.ctrlKey || event.metaKey || event.altKey;
    if (event.defaultPrevented || isMenu || isTyping(event.target) || isTakenByControl(event)) {
      return;
    }
    if (document.querySelector("dialog[open]") !== null) {
      return;
    }
    const found = keys.find(({ key }) => key === event.key || key === `Shift+${event.key}`);
    const isMeant = found !== undefined && (!found.key.startsWith("Shift+") || event.shiftKey);
    if (isMeant) {
      event.preventDefault();
      found.run(event);
    }
  });
}

export function keysDialog(keys: readonly Key[]): HTMLDialogElement {
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
    element("h2", {}, "Keys"),
    element("dl", { class: "keys-list" }, ...rows),
    element("h2", {}, "Mouse"),
    element("dl", { class: "keys-list" }, ...mouse.map(([name, words]) =>
      element("div", {}, element("dt", {}, name), element("dd", {}, words)))),
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
  ["right button, drag", "grey values: to the side wider, up and down darker"],
  ["Alt or middle, drag", "moves the slice"],
  ["double click", "this pane alone, and all four again"],
] as const;
