// How names of files are compared, matched and put together.
#pragma once

#include "platform/portable/String.h"

// < 0, 0 or > 0: first without regard to case (A to Z, Latin-1, Greek and Cyrillic letters), then by code
// units.
int compareFileNames(const CString& left, const CString& right);
bool sameIgnoringCase(const CString& left, const CString& right);

// * matches any text, ? any one unit; case does not matter; *.* matches every name.
bool matchesPattern(const CString& name, const CString& pattern);

// Where the name starts in a path: behind the last separator.
int nameStart(const CString& path);

// The name in the folder, with one separator between.
CString joinPath(const CString& folder, const CString& name);
