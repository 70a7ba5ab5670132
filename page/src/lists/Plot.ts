// What both plots share: their place, their theme, and what a pointer does in them.

import uPlot from "uplot";
import { element } from "../shell/Element";

export interface PlotAxis {
  scale: string;
  label: () => string;
  isRight?: boolean;
  span?: () => Span; // where numbers stand; none: everywhere
}

export interface PlotEvents {
  range(from: number, to: number): void; // along the horizontal axis, from < to
  click(x: number, y: number, event: MouseEvent): void; // CSS pixels within the plot
  draw(plot: uPlot): void; // behind axes and grid
}

export interface Span {
  min: number;
  max: number;
}

const leastDrag = 4; // pixels: less is a click
const height = 190; // CSS pixels, where the layout says none

const probe = element("span", { hidden: "" });

// "rgb(...)": a variable of the theme may choose between light and dark, which a canvas does not do.
export function themeColour(name: string, otherwise: string): string {
  if (!probe.isConnected) {
    document.body.append(probe);
  }
  probe.style.color = `var(${name}, ${otherwise})`;
  return getComputedStyle(probe).color;
}

function isWithin(value: number, span: (() => Span) | undefined): boolean {
  return span === undefined || (value >= span().min && value <= span().max);
}

function axis({ scale, label, span, isRight = false }: PlotAxis): uPlot.Axis {
  return {
    scale,
    label,
    side: scale === "x" ? 2 : isRight ? 1 : 3,
    stroke: () => themeColour("--text", "#222222"),
    grid: { show: !isRight, stroke: () => themeColour("--line", "#cccccc"), width: 1 },
    ticks: { stroke: () => themeColour("--line", "#cccccc"), width: 1 },
    size: scale === "x" ? 34 : 50,
    labelSize: 18,
    labelGap: 0,
    space: scale === "x" ? 45 : 16,
    filter: (_plot, splits) => splits.map((value) => (isWithin(value, span) ? value : null)),
    font: "12px system-ui, sans-serif",
    labelFont: "12px system-ui, sans-serif",
  };
}

export class Plot {
  readonly element: HTMLElement;
  readonly #plot: uPlot;
  #frame = 0;

  // `spans` by scale; "x" is the horizontal one.
  constructor(axes: readonly PlotAxis[], spans: () => Readonly<Record<string, Span>>, events: PlotEvents) {
    this.element = element("div", { class: "list-plot", role: "img" });
    const scales: uPlot.Scales = {};
    for (const { scale } of axes) {
      scales[scale] = {
        time: false,
        auto: true,
        range: () => {
          const span = spans()[scale] ?? { min: 0, max: 1 };
          return [span.min, span.max];
        },
      };
    }
    const options: uPlot.Options = {
      width: 400,
      height,
      scales,
      axes: axes.map(axis),
      series: axes.map(({ scale }) => ({ scale, points: { show: false }, paths: () => null })),
      legend: { show: false },
      cursor: {
        drag: { x: true, y: false, setScale: false, dist: leastDrag },
        y: false,
        points: { show: false },
      },
      hooks: {
        drawClear: [(plot) => events.draw(plot)],
        setSelect: [(plot) => this.#select(plot, events)],
      },
    };
    this.#plot = new uPlot(options, axes.map(() => [0, 1]) as unknown as uPlot.AlignedData, this.element);
    this.#plot.over.addEventListener("click", (event) => {
      if (this.#plot.select.width < leastDrag) {
        events.click(event.offsetX, event.offsetY, event);
      }
    });
    new ResizeObserver(() => {
      this.#fit();
      this.redraw();
    }).observe(this.element);
    matchMedia("(prefers-color-scheme: dark)").addEventListener("change", () => this.redraw());
    new MutationObserver(() => this.redraw()).observe(document.documentElement, {
      attributeFilter: ["data-theme"],
    });
  }

  get plot(): uPlot {
    return this.#plot;
  }

  // Once a frame, however often it is asked for; behind another tab not before it is seen again.
  redraw(): void {
    if (this.element.clientWidth === 0) {
      return;
    }
    this.#frame ||= requestAnimationFrame(() => {
      this.#frame = 0;
      this.#plot.setData(this.#plot.data);
    });
  }

  #fit(): void {
    const { clientWidth, clientHeight } = this.element;
    if (clientWidth > 0 && (clientWidth !== this.#plot.width || clientHeight !== this.#plot.height)) {
      this.#plot.setSize({ width: clientWidth, height: clientHeight > 60 ? clientHeight : height });
    }
  }

  #select(plot: uPlot, events: PlotEvents): void {
    const { left, width } = plot.select;
    if (width >= leastDrag) {
      const [from, to] = [plot.posToVal(left, "x"), plot.posToVal(left + width, "x")];
      events.range(Math.min(from, to), Math.max(from, to));
      setTimeout(() => plot.setSelect({ left: 0, top: 0, width: 0, height: 0 }, false));
    }
  }
}

// The drawing surface within the axes: everything is clipped to it, lengths are CSS pixels.
export function drawInside(plot: uPlot, draw: (context: CanvasRenderingContext2D) => void): void {
  const { ctx, bbox } = plot;
  ctx.save();
  ctx.beginPath();
  ctx.rect(bbox.left, bbox.top, bbox.width, bbox.height);
  ctx.clip();
  ctx.translate(bbox.left, bbox.top);
  ctx.scale(uPlot.pxRatio, uPlot.pxRatio);
  draw(ctx);
  ctx.restore();
}

// Three digits are enough for what a hand drags.
export function rounded(value: number, span: Span): number {
  const digits = Math.max(0, 3 - Math.ceil(Math.log10(Math.max(span.max - span.min, 1e-9))));
  return Number(value.toFixed(Math.min(digits, 12)));
}

export function spanOf(values: readonly number[]): Span {
  let [min, max] = [Infinity, -Infinity];
  for (const value of values) {
    if (Number.isFinite(value)) {
      min = Math.min(min, value);
      max = Math.max(max, value);
    }
  }
  if (min > max) {
    return { min: 0, max: 1 };
  }
  const room = max > min ? (max - min) * 0.04 : 1;
  return { min: min - room, max: max + room };
}
