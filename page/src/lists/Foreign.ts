// Texts of files, which are never markup.

import { cut } from "../model/Foreign";
import { button, element } from "../shell/Element";

const most = 160;

// A text of a file: marks of direction in it turn nothing around outside of it, and no more of it is shown than
// is of use; a button opens the whole.
export function foreign(text: string, length = most): HTMLElement {
  const shown = element("bdi", { class: "foreign" }, cut(text, length));
  if (text.length <= length) {
    return shown;
  }
  const whole = button("whole", `Show the whole text of ${text.length} characters`, () => showWhole(text));
  whole.className = "whole-text";
  whole.addEventListener("click", (event) => event.stopPropagation());
  return element("span", { class: "foreign-cut" }, shown, whole);
}

function showWhole(text: string): void {
  const dialog = element("dialog", { class: "whole-dialog", "aria-label": "The whole text" });
  const close = button("Close", "Close (Escape)", () => dialog.close());
  const area = element("textarea", {
    "aria-label": "The whole text",
    readonly: "",
    rows: "12",
    cols: "80",
    dir: "auto",
  });
  area.value = text;
  dialog.append(area, close);
  dialog.addEventListener("close", () => dialog.remove());
  document.body.append(dialog);
  dialog.showModal();
}
