// How the head is cut in 3D, and where from it is looked at then.

import type { State } from "../model/Store";
import { times } from "../model/Vector";
import { axisInWorld, type Grid } from "./Grid";
import type { Cut, SceneView } from "./SceneView";
import type { Axis } from "./SliceView";

const cutAxes: Readonly<Record<State["cut"], readonly Axis[]>> = {
  none: [],
  axial: [2],
  coronal: [1],
  sagittal: [0],
  corner: [0, 1, 2],
};

// Through the crosshair; what is on the side of the eye is taken away.
export function cutsOf({ cut, crosshair }: Readonly<State>, grid: Grid, view: SceneView): Cut[] {
  return cutAxes[cut].map((axis) => {
    const direction = axisInWorld(grid, axis);
    const sign = view.turned(direction)[2] >= 0 ? 1 : -1;
    return { place: crosshair, normal: times(direction, sign) };
  });
}

// Looks at the cut, from the side on which the crosshair is.
export function faceCut(view: SceneView, { cut, crosshair }: Readonly<State>): void {
  const isLeft = crosshair[0] <= view.middle[0];
  const stands = {
    none: [isLeft ? 120 : 240, 15],
    sagittal: [isLeft ? 90 : 270, 0],
    coronal: [180, 0],
    axial: [180, 70],
    corner: [isLeft ? 140 : 220, 30],
  } as const;
  [view.azimuth, view.elevation] = stands[cut];
}
