// A line of a 4D/MSI dipole table, as it is scanned: 18 columns, of which the last, a label, may be missing.
// Numbers keep single precision; axes are x to the nose, y to the left ear, z up; lengths in cm.
#pragma once

#include <afx.h>

#include "import/AnsiLine.h"

struct MsiDipoleRow {
  bool scan(const AnsiLine& line);  // false: fewer than 17 columns

  float latency = 0.0F;  // ms
  float location[3] = {};
  float orientation[3] = {};
  float moment = 0.0F;  // nAm
  float importTag1 = 0.0F;
  float goodness = 0.0F;  // of the fit, 0 to 1
  float importTag2 = 0.0F;
  CString label;  // "Non" when it is missing
};
