#include "import/CtfRows.h"

#include <algorithm>
#include <iterator>

#include "import/RowScanner.h"

namespace {

struct Color {
  float red;
  float green;
  float blue;
};

constexpr Color codedColors[] = {{1, 1, 0}, {0, 1, 0}, {1, 0, 0}, {0, 1, 1}, {1, 0, 1}, {1, 1, 1}, {0, 0, 0}};
constexpr Color otherColor = {0, 0, 1};

Color colorOf(int code) {
  const bool isKnown = code >= 0 && code < static_cast<int>(std::size(codedColors));
  return isKnown ? codedColors[code] : otherColor;
}

int displayStateOf(int shape) {
  switch (shape) {
    case 0:
    case 3:
      return 1;
    case 1:
    case 4:
      return 2;
    default:
      return 0;
  }
}

}  // namespace

bool CtfDipoleRow::scan(const AnsiLine& line) {
  RowScanner row(line);
  row.skipInteger().blanks().colon();
  row.real(location[0]).real(location[1]).real(location[2]);
  row.real(orientation[0]).real(orientation[1]).real(orientation[2]);
  row.real(moment).word(label);
  return row.fields() >= 8;
}

bool CtfMovingDipoleRow::scan(const AnsiLine& line) {
  RowScanner row(line);
  row.skipInteger().colon().integer(id).integer(fitTag).real(latency);
  row.real(location[0]).real(location[1]).real(location[2]);
  row.real(orientation[0]).real(orientation[1]).real(orientation[2]);
  row.real(moment).real(fitError).word(label);
  if (row.fields() == 12) {
    label = _T("Non");
  }
  return row.fields() >= 12;
}

bool CtfFlagRow::scan(const AnsiLine& line) {
  RowScanner row(line);
  row.skipInteger().colon().integer(color).integer(shape).skipInteger().skipInteger().skipInteger();
  return row.fields() == 6;
}

void CtfFlagRow::applyTo(CDipoleszq& dipole) const {
  const Color chosen = colorOf(color);
  dipole.m_colorF[0] = chosen.red;
  dipole.m_colorF[1] = chosen.green;
  dipole.m_colorF[2] = chosen.blue;
  dipole.m_display = displayStateOf(shape);
}

bool CtfFitInfoRow::scan(const AnsiLine& line) {
  RowScanner row(line);
  row.skipInteger().colon().integer(id).integer(fitTag).real(latency).skipInteger().real(fitError);
  row.skipInteger().skipInteger().skipInteger().skipWord();
  return row.fields() >= 9;
}

void CtfFitInfoRow::applyTo(CDipoleszq& dipole) const {
  dipole.m_id = id;
  dipole.m_fitTag = fitTag;
  dipole.m_latency = static_cast<double>(latency * 1000.0F);  // in single precision, as hosts expect
  dipole.m_fitError = static_cast<double>(fitError);
}
