// The pointer of the screen, where a user leaves it; and the real button, pressed where it is.
#pragma once

#include <windows.h>

#include "tests/ui/windows/Host.h"

// In the number of a row of the manager's list, on the screen.
POINT placeOfRow(const Host& host, int row);

void movePointer(POINT place);

// So many milliseconds pass in which the user does nothing. Returns how often the system told the window that
// the pointer rests on it.
int rest(HWND window, DWORD milliseconds);

// The left button, as the system reports it, until all has been handled.
void clickThere(bool control = false, bool shift = false);
