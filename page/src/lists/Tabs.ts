// One of several sections at a time, chosen by a row of tabs above them.

import { element } from "../shell/Element";

export interface TabSection {
  name: string; // for its id
  title: () => string;
  section: HTMLElement;
}

export interface Tabs {
  show(name: string, isFocused?: boolean): void;
  retitle(): void;
}

// The sections stand one behind the other in one parent, in this order.
export function mountTabs(sections: readonly TabSection[]): Tabs {
  const row = element("div", { class: "list-tabs", role: "tablist", "aria-label": "Beside the list" });
  const tabs = sections.map(({ name, section }) => {
    const tab = element("button", { type: "button", role: "tab", id: `tab-${name}` });
    section.id ||= `section-${name}`;
    tab.setAttribute("aria-controls", section.id);
    section.setAttribute("role", "tabpanel");
    section.setAttribute("aria-labelledby", tab.id);
    return tab;
  });
  const retitle = () => {
    tabs.forEach((tab, index) => {
      tab.textContent = sections[index]?.title() ?? "";
    });
  };
  const show = (name: string, isFocused = false) => {
    sections.forEach(({ name: other, section }, index) => {
      section.hidden = other !== name;
      tabs[index]?.setAttribute("aria-selected", String(other === name));
      tabs[index]?.setAttribute("tabindex", other === name ? "0" : "-1");
      if (isFocused && other === name) {
        tabs[index]?.focus();
      }
    });
  };
  tabs.forEach((tab, index) => {
    tab.addEventListener("click", () => show(sections[index]?.name ?? ""));
    tab.addEventListener("keydown", (event) => {
      const step = event.key === "ArrowRight" ? 1 : event.key === "ArrowLeft" ? -1 : 0;
      const next = tabs[(index + step + tabs.length) % tabs.length];
      if (step !== 0 && next !== undefined) {
        next.focus();
        next.click();
        event.preventDefault();
        event.stopPropagation();
      }
    });
  });
  row.append(...tabs);
  sections[0]?.section.before(row);
  retitle();
  return { show, retitle };
}
