// Where a place of the world lands in the 3D pane: parallel rays, turned around the middle of the head as NiiVue
// turns it.

import type { Vector } from "../data/PageData";
import { minus } from "../model/Vector";
import type { Point } from "./SliceView";

export interface Cut {
  place: Vector; // on the plane
  normal: Vector; // to the side that is taken away
}

const radians = Math.PI / 180;

export class SceneView {
  azimuth = 90; // degrees, where one stands: 0 behind, 90 at the left, 180 in front, 270 at the right
  elevation = 10; // degrees above the level of the head
  zoom = 1;
  width = 1; // CSS pixels
  height = 1;
  cuts: readonly Cut[] = [];
  readonly middle: Vector;
  readonly reach: number;

  constructor(middle: Vector, reach: number) {
    this.middle = middle;
    this.reach = reach;
  }

  // Pixels a mm.
  get scale(): number {
    return (Math.min(this.width, this.height) * this.zoom) / (2 * 0.8 * this.reach);
  }

  // A direction in the picture: to the right, up, towards the eye.
  turned(a: Vector): Vector {
    const turn = (this.azimuth - 180) * radians;
    const tilt = (270 - this.elevation) * radians;
    const [cosTurn, sinTurn] = [Math.cos(turn), Math.sin(turn)];
    const [cosTilt, sinTilt] = [Math.cos(tilt), Math.sin(tilt)];
    const x = cosTurn * a[0] - sinTurn * a[1];
    const y = sinTurn * a[0] + cosTurn * a[1];
    return [-x, cosTilt * y - sinTilt * a[2], -(sinTilt * y + cosTilt * a[2])];
  }

  // `depth` is mm from the middle towards the eye.
  project(place: Vector): Point {
    const [right, up, near] = this.turned(minus(place, this.middle));
    return { x: this.width / 2 + right * this.scale, y: this.height / 2 - up * this.scale, depth: near };
  }
}
