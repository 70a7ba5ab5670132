// Puts the page together.

import { AtlasLookup } from "./data/Atlas";
import { readPageData, takeVolumeText } from "./data/PageElements";
import type { PageData } from "./data/PageData";
import { mountLists, type ListActions } from "./lists/lists";
import { tableKeys } from "./lists/TableKeys";
import { mountReport } from "./lists/Report";
import { passingRows } from "./model/Filter";
import { Store } from "./model/Store";
import { warningsOf } from "./model/Warnings";
import { failureText, Head } from "./panes/Head";
import { listenToMouse } from "./panes/Mouse";
import { Panes } from "./panes/Panes";
import { savePicture } from "./panes/Picture";
import { snapshot } from "./panes/Snapshot";
import { mountDisplay } from "./shell/Display";
import { element } from "./shell/Element";
import { mountFilters } from "./shell/Filters";
import { aboutDialog, mountHeader, turnTheme } from "./shell/Header";
import { keysDialog, listenToKeys } from "./shell/Keys";
import { mountLive } from "./shell/Live";
import { makeLayout, type Layout } from "./shell/Layout";
import { pageKeys } from "./shell/PageKeys";
import { mountPlace } from "./shell/PlaceBar";
import { mountTime } from "./shell/Time";

// A browser that cannot show the head shows all the rest, and says so.
async function loadHead(store: Store): Promise<Head | null> {
  const text = takeVolumeText("page-head");
  const { head } = store.data;
  if (head === null || text === "") {
    return null;
  }
  try {
    return await Head.load(text, head);
  } catch (error) {
    store.set({ headFailure: failureText(error) });
    return null;
  }
}

async function loadAtlas(data: PageData): Promise<AtlasLookup | null> {
  const text = takeVolumeText("page-atlas");
  return data.atlas === null || text === "" ? null : AtlasLookup.load(text, data.atlas, data.frames);
}

function mountShell(store: Store, layout: Layout): ListActions {
  mountDisplay(store, layout.display);
  mountFilters(store, layout.filters);
  mountTime(store, layout.time);
  const warn = (): void =>
    layout.warnings.replaceChildren(
      ...warningsOf(store.data, store.state).map((text) => element("p", {}, "⚠ ", element("bdi", {}, text))),
    );
  warn();
  store.onChange((changed) => changed.has("headFailure") && warn());
  return mountLists(store, layout.lists);
}

function mountActions(store: Store, layout: Layout, panes: Panes, list: ListActions): void {
  const about = aboutDialog(store.data);
  const actions = {
    savePicture: () => savePicture(panes),
    print: () => window.print(),
    turnTheme,
    showKeys: () => keys.showModal(),
    showAbout: () => about.showModal(),
    list,
    search: () => layout.filters.querySelector<HTMLInputElement>("input.text")?.focus(),
  };
  const known = pageKeys(store, panes, actions);
  const keys = keysDialog(known, [tableKeys]);
  listenToKeys(known);
  mountHeader(store.data, layout.header, actions);
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
  const list = mountShell(store, layout);
  const [head, atlas] = await Promise.all([loadHead(store), loadAtlas(data)]);
  mountPlace(store, layout.place, atlas);
  mountLive(store, root, atlas);
  const panes = new Panes(store, layout.panes, head);
  listenToMouse(panes);
  mountActions(store, layout, panes, list);
  mountReport(store, layout.lists.report, (...how) => snapshot(panes, ...how));
  panes.drawNow();
  root.dataset["ready"] = "yes";
}

const root = document.getElementById("app");
if (root !== null) {
  start(root).catch((error: unknown) => {
    root.prepend(element("p", { class: "failure", role: "alert" }, `The page cannot be shown: ${String(error)}`));
    throw error;
  });
}
