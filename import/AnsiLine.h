// The line reader of the importers: 8-bit text through an archive.
#pragma once

#include <afx.h>

enum { ansiLineCapacity = 2048 };  // bytes

// Reads one line and widens it from the system's ANSI code page; it is not trimmed.
//
// LF or CR ends a line that holds at least one byte and is skipped before the first one, so blank lines and
// CR LF pairs give no empty lines. A line is cut into pieces of 2048 bytes; the next call goes on behind the
// piece. A zero byte ends the text of a line, not the line itself, so a line of zero bytes is empty text.
//
// Returns true for a line. At the end of the file it returns false with the text that no line end closed:
// callers drop it on purpose, a last line without an end is never processed.
// Faults of the file pass through as the framework's exceptions.
bool readAnsiLine(CArchive& archive, CString& line);
