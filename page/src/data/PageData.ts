// What `dipole page` puts into the page: one JSON text in the element #page-data, the head's volume as the base64
// of a .nii.gz in #page-head, an atlas' labels likewise in #page-atlas. All places are mm in the page's world, whose
// axes are right, anterior, superior (RAS); each known frame says how it is reached from there.
//
// Texts are data: they are shown as text, never as markup.

export type Vector = readonly [number, number, number];
// 16 numbers, row by row; the last row is 0 0 0 1.
export type Matrix = readonly number[];

// A number; null: unknown; "nan", "inf", "-inf": what the file holds instead of a number.
export type NumberCell = number | null | "nan" | "inf" | "-inf";

export interface FileData {
  name: string | null; // null in an anonymous page
  format: string; // "CTF", "4D/MSI"
  dipoles: number; // that came from it
}

// What the volume's millimetres are: a scanner's, an MRI's own (no scanner knows them), or, without a head, those
// of the head frame with its axes turned to right, anterior, superior.
export interface WorldData {
  kind: "scanner" | "mri" | "head";
  title: string; // "Scanner"
  description: string; // one sentence
}

export interface FrameData {
  name: "host" | "ctf" | "neuromag" | "scanner" | "mri" | "mni";
  title: string; // "Head", "MNI152"
  description: string; // "head: x left, y up, z front"
  axes: readonly [string, string, string]; // "left", "up", "front"
  fromWorld: Matrix;
}

export interface HeadData {
  name: string | null;
  format: string; // "NIfTI-1"
  sides: string; // where the knowledge of left and right comes from
  areSidesStated: boolean; // false: left and right are only assumed, to be said on every picture
  window: readonly [number, number]; // grey values shown as black and as white at first
  range: readonly [number, number]; // those that the stored volume can tell apart
  isFull: boolean; // else it may be cropped, and has 8 bits; `conventions` tell what became of it
}

export interface AtlasData {
  name: string; // "aal"
  space: string | null; // "Colin27"
  placesSpace: string | null; // the MNI space that places are carried to
  doubt: string | null; // why a name may be some mm off
  reach: number; // mm, how far outside of every label the nearest one is told
  names: Readonly<Record<string, string>>; // by label
  // The grid of #page-atlas in its own mm is reached by the frame "mni".
}

export interface PointData {
  of: "head" | "file"; // of the head that is shown, or of the dipole files where theirs differ
  name: "nasion" | "left ear" | "right ear";
  letter: "N" | "L" | "R";
  place: Vector;
}

export interface RegistrationData {
  text: string; // by which points, from which file
  residuals: readonly { name: string; mm: number }[]; // the head's points beside those of the dipole files
}

export type ColumnKind = "number" | "text" | "flag" | "colour";

// One value a dipole, in the order of the set. `title` is the column's name in files ("latency_ms"), `label` that
// for people ("Latency"), `unit` may be empty.
export interface ColumnData {
  title: string;
  label: string;
  unit: string;
  kind: ColumnKind;
  values: readonly (NumberCell | string | boolean)[];
}

// Which column holds what the page works with; -1: none does.
export interface ColumnRoles {
  number: number;
  label: number;
  latency: number; // ms
  fitError: number; // percent
  moment: number; // nAm, when its unit says so
  colour: number; // own colour, "#rrggbb"
  shown: number; // the dipole's own switch
  atlasLabel: number;
  atlasDistance: number; // mm
}

export interface DipolesData {
  count: number;
  columns: readonly ColumnData[];
  roles: ColumnRoles;
  places: readonly (Vector | null)[]; // null: the dipole has no place, so it is in no picture
  arrows: readonly (Vector | null)[]; // from the place to the tip, mm; null: none
  clusters: readonly number[]; // 1 for the first cluster; 0: in none
}

export interface Limits {
  least: number | null;
  most: number | null;
}

export interface ClusterData {
  count: number;
  centroid: Vector;
  rms: number; // mm, root mean square distance from the centroid
  farthest: number; // mm
  direction: Vector | null; // mean orientation in the world, of unit length
  cone: number | null; // degrees, see `conventions`
  places: readonly { frame: FrameData["name"]; place: Vector }[];
  label: string | null; // of the centroid by the atlas
  latency: readonly [number, number] | null; // ms, of its dipoles
  fitError: readonly [number, number] | null; // percent
}

export interface ClustersData {
  text: string; // the rule: "6 or more dipoles within 10 mm"
  scattered: number; // pass the limits and are in none
  removed: readonly { limit: string; count: number }[]; // by each limit, in order
  clusters: readonly ClusterData[];
}

export type Severity = "note" | "doubtful" | "wrong";

export interface FindingData {
  severity: Severity;
  code: string; // "row-order"
  file: string | null;
  line: number; // 0: the file as a whole
  sentence: string;
  remedy: string; // may be empty
  rows: readonly number[]; // of the dipoles concerned, 0 the first
}

export type ColourBy = "own" | "latency" | "fitError" | "moment" | "cluster";

export interface ValueRangeData {
  low: number;
  high: number;
  isCutLow: boolean; // values lie beyond, and have the colour of the end
  isCutHigh: boolean;
}

// How the page opens.
export interface SettingsData {
  colourBy: ColourBy;
  toleranceMm: number | null; // null: any distance from the slice
  fitError: Limits;
  moment: Limits;
  latency: Limits;
  crosshair: Vector;
  areArrowsByMoment: boolean;
  areArrowsShown: boolean;
  areLabelsShown: boolean;
  glyphPixels: number;
  ballRadius: number; // mm
  scale: readonly string[]; // colours of the value scale from low to high, "#rrggbb"
  noValue: string; // colour of a dipole whose value is unknown
  clusterColours: readonly string[]; // of the first cluster, ...; all further ones are white
  scattered: string; // colour of a dipole in no cluster
  ranges: Readonly<Partial<Record<"latency" | "fitError" | "moment", ValueRangeData>>>;
}

export interface PageData {
  program: string; // "dipole 1.0.0"
  made: string; // ISO 8601, UTC; empty in an anonymous page
  isAnonymous: boolean;
  title: string; // of the page; names no one in an anonymous page
  patient: string | null;
  files: readonly FileData[];
  world: WorldData;
  frames: readonly FrameData[]; // "host" is the first
  head: HeadData | null;
  atlas: AtlasData | null;
  sphere: { centre: Vector; radius: number } | null;
  points: readonly PointData[];
  registration: RegistrationData | null;
  dipoles: DipolesData;
  clusters: ClustersData;
  settings: SettingsData;
  findings: readonly FindingData[];
  repaired: readonly string[];
  warnings: readonly string[]; // to stand on every picture
  conventions: readonly string[]; // of sides, frames, spread and cone; for the report
}
