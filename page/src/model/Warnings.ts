// What has to be said on every picture and in the report.

import type { PageData } from "../data/PageData";
import type { State } from "./Store";

const unstatedSides = "Left and right are assumed: the head does not state its sides.";

// The worst first.
export function warningsOf(data: PageData, { headFailure }: Readonly<Pick<State, "headFailure">>): readonly string[] {
  const areAssumed = data.head !== null && !data.head.areSidesStated && !data.warnings.includes(unstatedSides);
  return [...(headFailure === "" ? [] : [headFailure]), ...(areAssumed ? [unstatedSides] : []), ...data.warnings];
}
