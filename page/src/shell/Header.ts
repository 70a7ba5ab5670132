// The bar at the top: whose dipoles these are, and what can be done with the page.

import type { PageData } from "../data/PageData";
import { button, element } from "./Element";
import { madeText } from "../model/Made";

export interface Actions {
  savePicture: () => void;
  print: () => void;
  turnTheme: () => void;
  showKeys: () => void;
  showAbout: () => void;
  list: { focusList: () => void };
}

// Foreign texts are kept from turning the letters around them.
function foreign(text: string): HTMLElement {
  return element("bdi", {}, text);
}

export function mountHeader(data: PageData, root: HTMLElement, actions: Actions): void {
  const what = element("div", { class: "what" }, element("h1", {}, foreign(data.patient ?? data.title)));
  const files = element("span", { class: "files" });
  const parts: (Node | string)[] = [];
  for (const { name, format, dipoles } of data.files) {
    const said = ` ${format}, ${dipoles} dipoles`;
    parts.push(parts.length > 0 ? "; " : "", ...(name === null ? [] : [foreign(name)]), said);
  }
  if (data.head !== null) {
    parts.push("; head ", ...(data.head.name === null ? [] : [foreign(data.head.name), " "]), data.head.format);
  } else {
    parts.push("; no head");
  }
  files.append(...parts);
  what.append(files);
  what.title = what.textContent ?? "";
  const skip = button("To the list", "To the list of dipoles", actions.list.focusList, "f");
  skip.className = "skip";
  root.append(
    skip,
    what,
    ...(data.isAnonymous ? [element("span", { class: "anonymous" }, "Names left out")] : []),
    button("Picture", "Save the four panes as a picture (PNG)", actions.savePicture, "e"),
    button("Print", "Print the report", actions.print, "Ctrl+P"),
    button("◐", "Light or dark", actions.turnTheme, "d"),
    button("?", "Keys", actions.showKeys, "?"),
    button("About", "About this page, and licences", actions.showAbout, "b"),
  );
}

export function turnTheme(): void {
  const root = document.documentElement;
  const isDark = matchMedia("(prefers-color-scheme: dark)").matches;
  const now = root.dataset["theme"] ?? (isDark ? "dark" : "light");
  root.dataset["theme"] = now === "dark" ? "light" : "dark";
}

export function aboutDialog(data: PageData): HTMLDialogElement {
  const dialog = element("dialog", { "aria-label": "About this page" });
  const licenses = document.getElementById("licenses");
  const text = element("pre", { class: "licenses", tabindex: "0" }, licenses?.textContent ?? "");
  licenses?.remove();
  dialog.append(
    element("h2", {}, "About this page"),
    element("p", {}, `Made by ${madeText(data)}. All that it shows is in this file; it asks for nothing from the network and stores nothing.`),
    element("p", {}, "It is no medical device: no diagnosis or treatment may rest on it alone."),
    ...data.conventions.map((line) => element("p", {}, line)),
    element("h2", {}, "Licences of what it is built with"),
    text,
    button("Close", "Close", () => dialog.close(), "Esc"),
  );
  document.body.append(dialog);
  return dialog;
}
