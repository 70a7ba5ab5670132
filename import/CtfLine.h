// What a line means inside a section body of a CTF file.
#pragma once

#include <afx.h>

// True when the text contains the words; case counts.
bool contains(const CString& text, LPCTSTR words);

struct CtfLine {
  explicit CtfLine(const CString& line);

  bool isUnitHeader = false;  // names "(cm)"; only the dipole sections ask, before all else
  bool isPassedOver = false;  // holds an opening brace or a comment, even beside a closing brace
  bool isEnd = false;         // holds a closing brace
};
