// Windows-1252, the code page of western Windows. Table: Unicode Consortium, CP1252.TXT; the five bytes that
// it leaves undefined become the C1 controls of the same number, as Windows' own conversion does.
#include "platform/portable/AnsiText.h"

#include <array>

namespace {

constexpr std::array<TCHAR, 32> from80To9F = {0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                              0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008D, 0x017D, 0x008F,
                                              0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                              0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

TCHAR widened(BYTE byte) {
  return byte >= 0x80 && byte < 0xA0 ? from80To9F[byte - 0x80U] : TCHAR{byte};
}

}  // namespace

std::basic_string<TCHAR> widenAnsi(const char* text, std::size_t length) {
  std::basic_string<TCHAR> wide(length, 0);
  for (std::size_t i = 0; i < length; ++i) {
    wide[i] = widened(static_cast<BYTE>(text[i]));
  }
  return wide;
}
