// 8-bit text in the system's own code page, made UTF-16. ASCII is handled before these are asked.
#pragma once

#include <string>

#include "platform/portable/Types.h"

std::basic_string<TCHAR> widenAnsi(const char* text, std::size_t length);

// The same, fast where the text is ASCII: what everyone calls.
std::basic_string<TCHAR> widen(const char* text, std::size_t length);
