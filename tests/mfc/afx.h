// The names that Microsoft's documentation gives to <afx.h>.
#pragma once

#include "documented/Archive.h"
#include "documented/Diagnostics.h"
