// Takes what `dipole page` put into the page out of its elements.

import type { PageData } from "./PageData";

function textOf(id: string): string {
  return document.getElementById(id)?.textContent?.trim() ?? "";
}

// Null: the page is the bare template.
export function readPageData(): PageData | null {
  const text = textOf("page-data");
  return text === "" ? null : (JSON.parse(text) as PageData);
}

// The base64 of a .nii.gz, which leaves the document, so that the text is not kept beside the volume; empty: none.
export function takeVolumeText(id: "page-head" | "page-atlas"): string {
  const text = textOf(id);
  document.getElementById(id)?.remove();
  return text;
}
