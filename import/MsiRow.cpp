#include "import/MsiRow.h"

#include "import/RowScanner.h"

bool MsiDipoleRow::scan(const AnsiLine& line) {
  float unused = 0.0F;
  RowScanner row(line);
  row.real(latency).real(location[0]).real(location[1]).real(location[2]);
  row.real(orientation[0]).real(orientation[1]).real(orientation[2]);
  row.real(moment).real(importTag1).real(unused).real(goodness).real(importTag2);
  row.skipInteger().skipWord().skipWord().skipWord().skipInteger().word(label);
  if (row.fields() == 17) {
    label = _T("Non");
  }
  return row.fields() >= 17;
}
