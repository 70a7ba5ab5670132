// The value behind a key in a line of text.
#pragma once

#include <afx.h>

// When the line holds the key, deletes the key's length from the start of the line and makes the rest, blanks
// included, the value. It counts from the start wherever the key stands, so "\tVERSION:" leaves a colon: kept
// on purpose, hosts know these texts. Returns whether the line holds the key.
inline bool takeValue(CString& line, const CString& key, CString& value) {
  if (line.Find(key) < 0) {
    return false;
  }
  line.Delete(0, key.GetLength());
  value = line;
  return true;
}
