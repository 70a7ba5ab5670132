// Moment and error of the dipoles over their latency.

import uPlot from "uplot";
import { isSet } from "../model/Limits";
import { byLatency, finiteValues } from "../model/PlotData";
import type { Store } from "../model/Store";
import { button, element } from "../shell/Element";
import { MarkImage } from "./MarkImage";
import { Plot, drawInside, rounded, spanOf, themeColour, type Span } from "./Plot";
import { chooseInList } from "./TableSelection";

const reach = 8; // pixels from a mark that a click finds
const radius = 2; // pixels
const ringRadius = 6; // pixels
const lane = 1.08; // of the height of one of the two kinds, left to the other

interface Marks {
  x: number;
  moment: number;
  error: number;
}

export class LatencyPlot {
  readonly element: HTMLElement;
  readonly #store: Store;
  readonly #rows: readonly number[];
  readonly #latency: readonly number[];
  readonly #moment: readonly number[];
  readonly #error: readonly number[];
  readonly #spans: Readonly<Record<string, Span>>;
  readonly #plot: Plot;

  constructor(store: Store) {
    this.#store = store;
    const { data } = store;
    const { roles, columns } = data.dipoles;
    this.#rows = byLatency(data);
    this.#latency = finiteValues(data, roles.latency);
    this.#moment = finiteValues(data, roles.moment);
    this.#error = finiteValues(data, roles.fitError);
    this.#spans = { x: spanOf(this.#latency), moment: spanOf(this.#moment), error: spanOf(this.#error) };
    const unit = columns[roles.moment]?.unit ?? "";
    const axes = [
      { scale: "x", label: () => "Latency, ms" },
      {
        scale: "moment",
        label: () => `\u25a0 Moment${unit === "" ? "" : `, ${unit}`}`,
        span: () => this.#spans["moment"] ?? { min: 0, max: 1 },
      },
      {
        scale: "error",
        label: () => `\u00d7 ${this.#errorName()}, %`,
        isRight: true,
        span: () => this.#errorSpan(),
      },
    ];
    this.#plot = new Plot(axes, () => this.#shownSpans(), {
      range: (from, to) => this.#limit(from, to),
      click: (x, y, event) => this.#choose(x, y, event),
      draw: (plot) => this.#draw(plot),
    });
    const all = button("All latencies", "All latencies: take the limits away", () =>
      store.set({ latency: { least: null, most: null } }),
    );
    this.element = element(
      "figure",
      { class: "list-figure" },
      element("figcaption", {}, "Moment and error over latency: click selects, drag limits the latency ", all),
      this.#plot.element,
    );
    this.#describe();
    store.onChange((changed) => {
      if (["passing", "selection", "current", "cursor", "isGoodness"].some((name) => changed.has(name as never))) {
        this.#plot.redraw();
        this.#describe();
      }
    });
  }

  #errorName(): string {
    return this.#store.state.isGoodness ? "Goodness of fit" : "Fit error";
  }

  // Where an error stands on the axis that is said.
  #onAxis(error: number): number {
    return this.#store.state.isGoodness ? 100 - error : error;
  }

  #errorSpan(): Span {
    const { min, max } = this.#spans["error"] ?? { min: 0, max: 1 };
    const ends = [this.#onAxis(min), this.#onAxis(max)].sort((a, b) => a - b);
    return { min: ends[0] ?? 0, max: ends[1] ?? 1 };
  }

  // Moments have the upper half to themselves, errors the lower one: thousands of both would cover each other.
  #shownSpans(): Readonly<Record<string, Span>> {
    const moment = this.#spans["moment"] ?? { min: 0, max: 1 };
    const error = this.#errorSpan();
    return {
      ...this.#spans,
      moment: { min: moment.min - lane * (moment.max - moment.min), max: moment.max },
      error: { min: error.min, max: error.max + lane * (error.max - error.min) },
    };
  }

  #describe(): void {
    const { passing, latency } = this.#store.state;
    const limits = isSet(latency) ? `, limited to ${latency.least ?? "any"} to ${latency.most ?? "any"} ms` : "";
    this.#plot.element.setAttribute(
      "aria-label",
      `Moment and ${this.#errorName().toLowerCase()} of ${passing.length} dipoles over latency${limits}`,
    );
  }

  #limit(from: number, to: number): void {
    const span = this.#spans["x"] ?? { min: 0, max: 1 };
    this.#store.set({ latency: { least: rounded(from, span), most: rounded(to, span) } });
  }

  // Pixels of a row's marks from the upper left corner of the plot; no number: it has none.
  #marks(plot: uPlot): (row: number) => Marks {
    const onScale = (scale: string) => {
      const { min = 0, max = 1 } = this.#shownSpans()[scale] ?? {};
      const [first, last] = [plot.valToPos(min, scale), plot.valToPos(max, scale)];
      return (value: number) => first + ((value - min) / (max - min)) * (last - first);
    };
    const [x, moment, error] = [onScale("x"), onScale("moment"), onScale("error")];
    return (row) => ({
      x: x(this.#latency[row] ?? NaN),
      moment: moment(this.#moment[row] ?? NaN),
      error: error(this.#onAxis(this.#error[row] ?? NaN)),
    });
  }

  #choose(x: number, y: number, event: MouseEvent): void {
    const at = this.#marks(this.#plot.plot);
    let nearest = -1;
    let least = reach;
    for (const row of this.#store.state.passing) {
      const marks = at(row);
      for (const height of [marks.moment, marks.error]) {
        const distance = Math.hypot(marks.x - x, height - y);
        if (distance < least) {
          [nearest, least] = [row, distance];
        }
      }
    }
    if (nearest !== -1) {
      const isAdded = event.ctrlKey || event.metaKey;
      const isPassing = new Set(this.#store.state.passing);
      const order = this.#rows.filter((row) => isPassing.has(row));
      chooseInList(this.#store, order, nearest, { isRange: event.shiftKey, isAdded });
    }
  }

  #draw(plot: uPlot): void {
    const { passing, selection } = this.#store.state;
    const isPassing = new Set(passing);
    const others = this.#rows.filter((row) => !isPassing.has(row));
    const moment = themeColour("--plot-moment", "#2166ac");
    const error = themeColour("--plot-error", "#b2182b");
    const faint = themeColour("--line", "#cccccc");
    drawInside(plot, (context) => this.#drawCursor(plot, context));
    const image = new MarkImage(plot.bbox.width, plot.bbox.height);
    this.#stamp(plot, image, others, faint, faint);
    this.#stamp(plot, image, passing, moment, error);
    this.#ring(plot, image, selection.filter((row) => isPassing.has(row)));
    image.drawAt(plot.ctx, plot.bbox.left, plot.bbox.top);
  }

  // A mark of each kind has a shape of its own: colours alone do not tell.
  #stamp(plot: uPlot, image: MarkImage, rows: readonly number[], moment: string, error: string): void {
    const ratio = uPlot.pxRatio;
    const places = rows.map(this.#marks(plot));
    image.stamp("square", radius * ratio, moment, (mark) => {
      places.forEach((place) => mark(place.x * ratio, place.moment * ratio));
    });
    image.stamp("cross", radius * ratio, error, (mark) => {
      places.forEach((place) => mark(place.x * ratio, place.error * ratio));
    });
  }

  // Around both marks of the dipoles that are selected.
  #ring(plot: uPlot, image: MarkImage, rows: readonly number[]): void {
    const ratio = uPlot.pxRatio;
    const places = rows.map(this.#marks(plot));
    image.stamp("ring", ringRadius * ratio, themeColour("--text", "#222222"), (mark) => {
      places.forEach(({ x, moment, error }) => {
        mark(x * ratio, moment * ratio);
        mark(x * ratio, error * ratio);
      });
    });
  }

  #drawCursor(plot: uPlot, context: CanvasRenderingContext2D): void {
    const { cursor } = this.#store.state;
    if (cursor !== null) {
      const height = plot.over.clientHeight;
      const from = plot.valToPos(cursor.at - cursor.width / 2, "x");
      const to = plot.valToPos(cursor.at + cursor.width / 2, "x");
      context.fillStyle = themeColour("--plot-cursor", "rgba(255, 170, 0, 0.3)");
      context.fillRect(from, 0, Math.max(1, to - from), height);
      context.fillStyle = themeColour("--text", "#222222");
      context.fillRect(plot.valToPos(cursor.at, "x") - 0.5, 0, 1, height);
    }
  }
}
