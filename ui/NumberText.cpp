#include "ui/NumberText.h"

#include <cfloat>
#include <charconv>
#include <cmath>

namespace {

constexpr double singlesSkipNumbers = 0x1p24;

bool isSingle(double value) {
  return std::fabs(value) <= singlesSkipNumbers && static_cast<double>(static_cast<float>(value)) == value;
}

double withDigits(double value, int digits) {
  char text[32];
  const std::to_chars_result written =
      std::to_chars(text, text + sizeof text, value, std::chars_format::scientific, digits - 1);
  double read = 0.0;
  std::from_chars(text, written.ptr, read);
  return read;
}

// Whether a file with this number leads to the single. Importers multiply by ten, cm to mm, or divide by it,
// and the product of a single is not always the single of the product.
bool leadsTo(float single, double number) {
  constexpr float ten = 10.0F;
  return static_cast<float>(number) == single || static_cast<float>(number / 10.0) * ten == single ||
         static_cast<float>(number * 10.0) / ten == single;
}

int digitsBeforePoint(double value) {
  int digits = 1;
  double size = std::fabs(value);
  while (size >= 10.0) {
    size /= 10.0;
    ++digits;
  }
  return digits;
}

int digitsToShow(double value) {
  if (!isSingle(value)) {
    return DBL_DIG;
  }
  int digits = digitsBeforePoint(value);  // fewer would give 1e+02 for 100
  while (digits < DBL_DIG && !leadsTo(static_cast<float>(value), withDigits(value, digits))) {
    ++digits;
  }
  return digits;
}

}  // namespace

CString numberText(double value) {
  CString text;
  text.Format(_T("%.*g"), digitsToShow(value), value);
  return text;
}
