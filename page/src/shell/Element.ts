// Elements of the page; texts are always set as text.

type Attributes = Readonly<Record<string, string>>;

export function element<K extends keyof HTMLElementTagNameMap>(
  tag: K,
  attributes: Attributes = {},
  ...children: readonly (Node | string)[]
): HTMLElementTagNameMap[K] {
  const made = document.createElement(tag);
  for (const [name, value] of Object.entries(attributes)) {
    made.setAttribute(name, value);
  }
  made.append(...children);
  return made;
}

// A button that says what it does to screen readers, to whoever waits over it, and which key does the same.
export function button(text: string, title: string, onClick: () => void, key = ""): HTMLButtonElement {
  const hint = key === "" ? title : `${title} (${key})`;
  const made = element("button", { type: "button", title: hint, "aria-label": title }, text);
  if (key !== "") {
    made.setAttribute("aria-keyshortcuts", key);
  }
  made.addEventListener("click", onClick);
  return made;
}
