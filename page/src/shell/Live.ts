// What screen readers are told without being asked: the dipole that was chosen, and where keys moved the crosshair.

import type { AtlasLookup } from "../data/Atlas";
import { shownTexts } from "../model/CellText";
import type { State, Store } from "../model/Store";
import { placeLetter } from "../panes/Sides";
import { element } from "./Element";

const pause = 350; // ms without another one, before it is said

function placeWords({ data }: Store, place: State["crosshair"]): string {
  const areStated = data.head?.areSidesStated ?? true;
  return `${([0, 1, 2] as const).map((axis) => placeLetter(place, axis, areStated)).join(", ")} mm`;
}

function valueWords(store: Store, row: number): string[] {
  const { columns, roles } = store.data.dipoles;
  const said = (["label", "latency", "moment", "fitError"] as const).map((role) => {
    const column = columns[roles[role]];
    const value = column?.values[row];
    if (column === undefined || value === null || value === undefined || value === "") {
      return "";
    }
    if (role === "fitError" && store.state.isGoodness && typeof value === "number") {
      return `Goodness of fit ${(100 - value).toFixed(1)} %`;
    }
    return `${column.label} ${shownTexts(column)(row).slice(0, 100)} ${column.unit}`.trim();
  });
  return said.filter((words) => words !== "");
}

export function dipoleWords(store: Store, row: number): string {
  const { columns, roles, places } = store.data.dipoles;
  const number = columns[roles.number];
  const name = `Dipole ${number === undefined ? row + 1 : shownTexts(number)(row)}`;
  const place = places[row];
  const hidden = store.state.passing.includes(row) ? [] : ["does not pass the limits, so it is not shown"];
  return [name, place ? placeWords(store, place) : "without a place", ...valueWords(store, row), ...hidden].join(", ");
}

function chosenWords(store: Store): string {
  const { current, selection } = store.state;
  if (current === -1) {
    return selection.length === 0 ? "No dipole selected" : `${selection.length} dipoles selected`;
  }
  const many = selection.length > 1 ? `; ${selection.length} selected` : "";
  return `${dipoleWords(store, current)}${many}`;
}

export function mountLive(store: Store, root: HTMLElement, atlas: AtlasLookup | null): void {
  const line = element("div", { class: "unseen live", role: "status", "aria-live": "polite" });
  root.append(line);
  let timer = 0;
  const say = (words: () => string): void => {
    clearTimeout(timer);
    timer = window.setTimeout(() => (line.textContent = words()), pause);
  };
  let isKey = false; // while a key does what it does
  addEventListener(
    "keydown",
    () => {
      isKey = true;
      setTimeout(() => (isKey = false));
    },
    true,
  );
  store.onChange((changed, { crosshair }) => {
    if (changed.has("current") || changed.has("selection")) {
      say(() => chosenWords(store));
    } else if (changed.has("crosshair") && isKey) {
      const label = atlas === null ? "" : `, ${atlas.say(crosshair)}`;
      say(() => `Crosshair ${placeWords(store, crosshair)}${label}`);
    }
  });
}
