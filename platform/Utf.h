// UTF-8 in and out of CString, for programs and tests. Not an MFC name.
//
// Any bytes and any code units survive the way through the other form and back:
//   a byte that is not part of valid UTF-8 becomes the code unit DC00 + byte, and that unit that byte;
//   any other half of a surrogate pair that stands alone becomes the three bytes that its number would have,
//   which are no valid UTF-8 and come back as three units.
#pragma once

#include <string>
#include <string_view>

#include "platform/portable/String.h"

std::string toUtf8(std::basic_string_view<TCHAR> text);
std::string toUtf8(LPCTSTR text);  // null counts as empty
std::string toUtf8(const CString& text);

CString fromUtf8(std::string_view bytes);
