// Sides of the patient, as letters and in words.

import type { Vector } from "../data/PageData";

const letters = [
  ["R", "L"],
  ["A", "P"],
  ["S", "I"],
] as const;

// The side that a direction of the world points to most.
export function sideLetter(direction: Vector, areSidesStated: boolean): string {
  const axis = direction.reduce(
    (best, value, i) => (Math.abs(value) > Math.abs(direction[best] ?? 0) + 1e-9 ? i : best),
    0,
  );
  const letter = letters[axis]?.[(direction[axis] ?? 0) > 0 ? 0 : 1] ?? "";
  return axis === 0 && !areSidesStated ? `${letter}?` : letter;
}

// "L 12.0", in mm of the world.
export function placeLetter(place: Vector, axis: 0 | 1 | 2, areSidesStated: boolean): string {
  const value = place[axis];
  const side = letters[axis][value >= 0 ? 0 : 1];
  const letter = axis === 0 && !areSidesStated ? `${side}?` : side;
  return `${letter} ${Math.abs(value).toFixed(1)}`;
}

export function conventionWords(isRadiological: boolean): string {
  return isRadiological
    ? "Radiological: in axial and coronal slices the patient's left is on the right of the picture."
    : "Neurological: in axial and coronal slices the patient's left is on the left of the picture.";
}
