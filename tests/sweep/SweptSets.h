// What the fault sweeps share: sets in which a text is longer than what a CString holds without memory, and
// what must hold of a set after a fault.
#pragma once

#include "tests/file/SetFixture.h"

// A set of so many dipoles, all of whose members differ, with long labels; the last one is the current one.
Set sweptSet(int count);

// The lines of linesOf that tell where a dipole lies, and how it is called.
Lines placeOf(const CDipoleszq& dipole);

// The lines of one slot, without the slot's name.
Lines slotLines(const CDipoleFace& set, int slot);

// Whether every member of `now` is that of `before` or that of `after`; the elements of an array may stem
// from either.
testing::AssertionResult isBetween(const Lines& now, const Lines& before, const Lines& after);

// The lines that are about the set as a whole.
Lines setWideLines(const CDipoleFace& set);

// Sorts, adds, deletes, saves and reads the set again; changes its order. Empty slots stay behind.
void expectUsable(CDipoleFace9File& set);
