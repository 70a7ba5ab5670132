// Puts the page together.

import { readPageData, takeVolumeText } from "./data/PageElements";
import type { PageData } from "./data/PageData";
import { mountLists } from "./lists/lists";
import { passingRows } from "./model/Filter";
import { Store } from "./model/Store";
import { Head } from "./panes/Head";
import { listenToMouse } from "./panes/Mouse";
import { Panes } from "./panes/Panes";
import { element } from "./shell/Element";
import { makeLayout } from "./shell/Layout";

async function loadHead(data: PageData): Promise<Head | null> {
  const text = takeVolumeText("page-head");
  return data.head === null || text === "" ? null : Head.load(text, data.head);
}

async function start(root: HTMLElement): Promise<void> {
  const data = readPageData();
  if (data === null) {
    root.append(element("p", { class: "empty" }, "This is the empty page; `dipole page` fills it."));
    return;
  }
  document.title = data.title;
  const store = new Store(data, passingRows);
  const layout = makeLayout(root);
  mountLists(store, layout.lists);
  const head = await loadHead(data);
  const panes = new Panes(store, layout.panes, head);
  listenToMouse(panes);
  root.dataset["ready"] = "yes";
}

const root = document.getElementById("app");
if (root !== null) {
  start(root).catch((error: unknown) => {
    root.prepend(element("p", { class: "failure", role: "alert" }, `The page cannot be shown: ${String(error)}`));
    throw error;
  });
}
