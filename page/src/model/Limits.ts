// How limits are said in words.

import type { Limits } from "../data/PageData";

export function isSet(limits: Limits): boolean {
  return limits.least !== null || limits.most !== null;
}

export function passes(value: number, limits: Limits): boolean {
  return (
    !isSet(limits) || (value >= (limits.least ?? -Infinity) && value <= (limits.most ?? Infinity))
  );
}

// "at most 10 %", "5 to 20 ms"
export function limitText({ least, most }: Limits, unit: string): string {
  const end = unit === "" ? "" : ` ${unit}`;
  if (least !== null && most !== null) {
    return `${least} to ${most}${end}`;
  }
  return least !== null ? `at least ${least}${end}` : `at most ${most ?? "any"}${end}`;
}

// The same limits of the other of the two: goodness of fit is 100 percent minus the error, so that least and most
// change places. Twelve digits, so that 100 - 9.7 is 90.3.
export function turnedOver({ least, most }: Limits): Limits {
  const turn = (value: number | null) => (value === null ? null : Number((100 - value).toPrecision(12)));
  return { least: turn(most), most: turn(least) };
}
