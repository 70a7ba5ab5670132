import type { SliceName } from "./SliceView";

export type PaneName = SliceName | "scene";
