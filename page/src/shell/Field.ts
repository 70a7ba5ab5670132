// Controls with a name that a screen reader says.

import { element } from "./Element";

export interface Choice {
  value: string;
  text: string;
}

// A control with its name before it.
export function labelled(text: string, ...controls: readonly HTMLElement[]): HTMLElement {
  const name = element("span", { class: "field-name" }, text);
  return element("label", { class: "field" }, name, ...controls);
}

export function select(title: string, choices: readonly Choice[], onChoice: (value: string) => void): HTMLSelectElement {
  const options = choices.map(({ value, text }) => element("option", { value }, text));
  const made = element("select", { "aria-label": title, title }, ...options);
  made.addEventListener("change", () => onChoice(made.value));
  return made;
}

export interface CheckBox {
  element: HTMLElement;
  input: HTMLInputElement;
}

export function checkBox(text: string, key: string, onChange: (isOn: boolean) => void): CheckBox {
  const input = element("input", { type: "checkbox", "aria-keyshortcuts": key });
  input.addEventListener("change", () => onChange(input.checked));
  return { element: element("label", { class: "check", title: `${text} (${key})` }, input, text), input };
}

export interface Range {
  least: number;
  most: number;
  step: number;
}

export function slider(title: string, range: Range, onInput: (value: number) => void): HTMLInputElement {
  const { least, most, step } = range;
  const input = element("input", { type: "range", "aria-label": title, title });
  [input.min, input.max, input.step] = [String(least), String(most), String(step)];
  input.addEventListener("input", () => onInput(Number(input.value)));
  return input;
}

// A number or nothing; what is no number is marked and changes nothing.
export function numberInput(title: string, onValue: (value: number | null) => void): HTMLInputElement {
  const input = element("input", { type: "text", inputmode: "decimal", "aria-label": title, title, class: "number" });
  input.addEventListener("change", () => {
    const text = input.value.trim().replace(",", ".");
    const value = Number(text);
    const isValid = text === "" || Number.isFinite(value);
    input.setAttribute("aria-invalid", String(!isValid));
    if (isValid) {
      onValue(text === "" ? null : value);
    }
  });
  return input;
}

// Keeps what is being typed.
export function showNumber(input: HTMLInputElement, value: number | null): void {
  if (document.activeElement !== input) {
    input.value = value === null ? "" : String(value);
    input.setAttribute("aria-invalid", "false");
  }
}
