// Texts of files as they are shown.

// Characters are not cut in two, and what follows is told to be there.
export function cut(text: string, length: number): string {
  if (text.length <= length) {
    return text;
  }
  const end = /[\ud800-\udbff]/.test(text.charAt(length - 1)) ? length - 1 : length;
  return `${text.slice(0, end)}\u2026`;
}

const unseen = /[\u0000-\u001f\u007f-\u009f\u061c\u200b-\u200f\u2028-\u202e\u2060-\u2069\ufeff]/g;

// For a picture, where no element keeps texts apart: what is not seen, or turns around what follows, is told by its
// number ("\\u202e").
export function visible(text: string): string {
  return text.replace(unseen, (one) => `\\u${one.charCodeAt(0).toString(16).padStart(4, "0")}`);
}

// Between other words: letters that run from right to left turn none of those around.
export function isolated(text: string): string {
  return `\u2068${visible(text)}\u2069`;
}
