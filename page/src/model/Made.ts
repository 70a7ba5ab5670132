// Who made the page, and when; an anonymous page does not tell when.

import type { PageData } from "../data/PageData";

// "dipole 1.0.0 on 2026-01-31 12:00:00 UTC"
export function madeText(data: PageData): string {
  return data.made === ""
    ? data.program
    : `${data.program} on ${data.made.replace("T", " ").replace("Z", " UTC")}`;
}
