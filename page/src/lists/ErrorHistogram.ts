// How many dipoles have which fit error, or goodness of fit.

import type uPlot from "uplot";
import { turnedOver } from "../model/Limits";
import { binsOf, counted, finiteValues, type Bins } from "../model/PlotData";
import type { Store } from "../model/Store";
import { button, element } from "../shell/Element";
import { Plot, drawInside, rounded, themeColour, type Span } from "./Plot";

export class ErrorHistogram {
  readonly element: HTMLElement;
  readonly #store: Store;
  readonly #plot: Plot;
  readonly #errors: readonly number[];
  readonly #all: readonly number[]; // rows
  readonly #note = element("span", { class: "list-note" });

  constructor(store: Store) {
    this.#store = store;
    const { dipoles } = store.data;
    this.#errors = finiteValues(store.data, dipoles.roles.fitError);
    this.#all = Array.from({ length: dipoles.count }, (_, row) => row);
    const axes = [
      { scale: "x", label: () => `${this.#name()}, %` },
      { scale: "count", label: () => "Dipoles" },
    ];
    this.#plot = new Plot(axes, () => this.#spans(), {
      range: (from, to) => this.#limit(from, to),
      click: () => undefined,
      draw: (plot) => this.#draw(plot),
    });
    const any = button("Any error", "Any error: take the limits away", () =>
      store.set({ fitError: { least: null, most: null } }),
    );
    const caption = element("figcaption", {}, "Drag sets the limits ", any, " ", this.#note);
    this.element = element("figure", { class: "list-figure" }, caption, this.#plot.element);
    this.#describe();
    store.onChange((changed) => {
      if (changed.has("passing") || changed.has("selection") || changed.has("isGoodness")) {
        this.#plot.redraw();
        this.#describe();
      }
    });
  }

  #name(): string {
    return this.#store.state.isGoodness ? "Goodness of fit" : "Fit error";
  }

  // By row, as the axis says it.
  #values(): readonly number[] {
    return this.#store.state.isGoodness ? this.#errors.map((error) => 100 - error) : this.#errors;
  }

  #bins(): Bins {
    return binsOf(this.#values()) ?? { first: 0, width: 1, count: 1 };
  }

  #spans(): Readonly<Record<string, Span>> {
    const bins = this.#bins();
    const most = counted(bins, this.#values(), this.#all).reduce((a, b) => Math.max(a, b), 1);
    return {
      x: { min: bins.first, max: bins.first + bins.width * bins.count },
      count: { min: 0, max: most * 1.05 },
    };
  }

  #describe(): void {
    const without = this.#errors.filter((error) => !Number.isFinite(error)).length;
    const name = this.#name().toLowerCase();
    const isFar = without < this.#errors.length && binsOf(this.#errors) === null;
    const far = isFar ? `no histogram: values of the ${name} lie too far apart. ` : "";
    this.#note.textContent = `${far}${without === 0 ? "" : `${without} without a ${name}`}`;
    this.#plot.element.setAttribute(
      "aria-label",
      `${this.#name()} of ${this.#store.state.passing.length} dipoles that pass, of ${this.#all.length}`,
    );
  }

  #limit(from: number, to: number): void {
    const span = this.#spans()["x"] ?? { min: 0, max: 1 };
    const limits = { least: rounded(from, span), most: rounded(to, span) };
    this.#store.set({ fitError: this.#store.state.isGoodness ? turnedOver(limits) : limits });
  }

  #draw(plot: uPlot): void {
    const { passing, selection } = this.#store.state;
    const bins = this.#bins();
    const values = this.#values();
    const isPassing = new Set(passing);
    const layers: [Iterable<number>, string][] = [
      [this.#all, themeColour("--line", "#cccccc")],
      [passing, themeColour("--plot-error", "#b2182b")],
      [selection.filter((row) => isPassing.has(row)), themeColour("--text", "#222222")],
    ];
    const bottom = plot.valToPos(0, "count");
    drawInside(plot, (context) => {
      for (const [rows, colour] of layers) {
        context.fillStyle = colour;
        counted(bins, values, rows).forEach((count, bin) => {
          const left = plot.valToPos(bins.first + bin * bins.width, "x");
          const right = plot.valToPos(bins.first + (bin + 1) * bins.width, "x");
          const top = plot.valToPos(count, "count");
          context.fillRect(left + 0.5, top, Math.max(1, right - left - 1), bottom - top);
        });
      }
    });
  }
}
