// What a field shows of a number, without a window.
#pragma once

#include <afx.h>

// As few digits as give the same single back where the number is one, as it stands or as an import makes it
// of what the file says: 23.1, not 23.0999984741211, which is ten times the single 2.31. Else 15 digits, as
// the exchange of dialog data writes a double. Numbers beyond 2^24 are among the latter: there singles skip
// whole numbers. The decimal point is that of the C locale, which also reads the field.
CString numberText(double value);
