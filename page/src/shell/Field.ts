// Controls with a name that a screen reader says.

import { cut } from "../model/Foreign";
import { typedNumber } from "../model/TypedNumber";
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

export interface NumberField {
  onValue: (value: number | null) => void;
  onDoubt?: (words: string) => void; // why what is typed changes nothing; empty: it is a number
  unit?: () => string; // that may be typed behind it
}

// A number or nothing; what is no number is marked and changes nothing.
export function numberInput(title: string, { onValue, onDoubt, unit }: NumberField): HTMLInputElement {
  const input = element("input", { type: "text", inputmode: "decimal", "aria-label": title, title, class: "number" });
  let taken = "";
  const take = (): void => {
    const typed = input.value.trim();
    const end = unit?.() ?? "";
    const text = end !== "" && typed.endsWith(end) ? typed.slice(0, -end.length).trim() : typed;
    const value = typedNumber(text);
    const isValid = typed === "" || Number.isFinite(value);
    input.setAttribute("aria-invalid", String(!isValid));
    onDoubt?.(isValid ? "" : `"${cut(typed, 20)}" is not taken: write a number such as 1234 or 1.5`);
    if (isValid) {
      onValue(typed === "" ? null : value);
    }
    taken = input.value;
  };
  input.addEventListener("focus", () => (taken = input.value));
  input.addEventListener("change", take);
  // Printed is what is typed, though no key has ended it yet.
  addEventListener("beforeprint", () => document.activeElement === input && input.value !== taken && take());
  return input;
}

// Keeps what is being typed.
export function showNumber(input: HTMLInputElement, value: number | null): void {
  if (document.activeElement !== input) {
    input.value = value === null ? "" : String(value);
    input.setAttribute("aria-invalid", "false");
  }
}
