// Moves a dialog that is about to be shown, see PlaceBeside.h.
#pragma once

#include <afxwin.h>

#include <initializer_list>

enum class Move {
  always,
  whenNeeded  // it covers the first of the others, or is not whole on one screen
};

// Beside others, in the order of their weight: the top windows of those that are there, visible and not
// minimised.
void moveBeside(CWnd& window, std::initializer_list<HWND> others, Move when);
