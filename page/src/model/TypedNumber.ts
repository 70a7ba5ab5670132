// Numbers as people type them.

// NaN for what is none, and for what could be two: "1,234" is a thousand to some and little more than one to others.
export function typedNumber(text: string): number {
  const isDoubtful = /^[+-]?[1-9]\d{0,2},\d{3}$/.test(text);
  const isNumber = /^[+-]?(\d+([.,]\d*)?|[.,]\d+)(e[+-]?\d+)?$/i.test(text);
  return isNumber && !isDoubtful ? Number(text.replace(",", ".")) : NaN;
}
