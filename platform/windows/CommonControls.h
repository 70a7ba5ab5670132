// The system's common controls, whose header needs the system's types before it.
#pragma once

// clang-format off
#include "platform/portable/Types.h"
#include <commctrl.h>
// clang-format on
