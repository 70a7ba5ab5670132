#include "platform/portable/AnsiText.h"

#include <algorithm>
#include <climits>

std::basic_string<TCHAR> widenAnsi(const char* text, std::size_t length) {
  const int bytes = static_cast<int>((std::min)(length, static_cast<std::size_t>(INT_MAX)));
  const int units = MultiByteToWideChar(CP_ACP, 0, text, bytes, nullptr, 0);
  std::basic_string<TCHAR> wide(static_cast<std::size_t>((std::max)(units, 0)), 0);
  MultiByteToWideChar(CP_ACP, 0, text, bytes, wide.data(), units);
  return wide;
}
