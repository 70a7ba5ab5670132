#include "host/text/PathText.h"

#include <algorithm>
#include <cstddef>
#include <string_view>

namespace host {

namespace {

constexpr char32_t replacement = 0xFFFD;

bool isHighHalf(char32_t unit) {
  return unit >= 0xD800 && unit <= 0xDBFF;
}

bool isLowHalf(char32_t unit) {
  return unit >= 0xDC00 && unit <= 0xDFFF;
}

void append(std::string& bytes, char32_t point) {
  const auto add = [&bytes](char32_t byte) { bytes += static_cast<char>(static_cast<unsigned char>(byte)); };
  const auto addRest = [&](int shift) { add(0x80 | ((point >> shift) & 0x3F)); };
  if (point < 0x80) {
    add(point);
  } else if (point < 0x800) {
    add(0xC0 | (point >> 6));
    addRest(0);
  } else if (point < 0x10000) {
    add(0xE0 | (point >> 12));
    addRest(6);
    addRest(0);
  } else {
    add(0xF0 | (point >> 18));
    addRest(12);
    addRest(6);
    addRest(0);
  }
}

// UTF-8 of UTF-16 units; what a half that stands alone becomes, `appendLone` says.
template <typename Unit, typename AppendLone>
std::string encoded(std::basic_string_view<Unit> units, AppendLone appendLone) {
  std::string bytes;
  bytes.reserve(units.size());
  for (std::size_t i = 0; i < units.size(); ++i) {
    const auto unit = static_cast<char32_t>(units[i]);
    const char32_t next = i + 1 < units.size() ? static_cast<char32_t>(units[i + 1]) : 0;
    if (isHighHalf(unit) && isLowHalf(next)) {
      append(bytes, 0x10000 + ((unit - 0xD800) << 10) + (next - 0xDC00));
      ++i;
    } else if (isHighHalf(unit) || isLowHalf(unit)) {
      appendLone(bytes, unit);
    } else {
      append(bytes, unit);
    }
  }
  return bytes;
}

std::basic_string_view<TCHAR> viewOf(const CString& text) {
  return {text.GetString(), static_cast<std::size_t>(text.GetLength())};
}

// One of these two is the system's way.
[[maybe_unused]] std::filesystem::path pathOfUnits(std::wstring_view units) {
  return {units};
}

[[maybe_unused]] std::filesystem::path pathOfUnits(std::u16string_view units) {
  return {encoded(units, [](std::string& bytes, char32_t lone) {
    if (lone >= 0xDC80 && lone <= 0xDCFF)
      bytes += static_cast<char>(static_cast<unsigned char>(lone - 0xDC00));
    else
      append(bytes, lone);
  })};
}

// The character at the front of UTF-8, and how many bytes it takes; 0 when the bytes are no UTF-8.
struct Decoded {
  char32_t point = 0;
  std::size_t length = 0;
};

Decoded decodeFirst(std::string_view bytes) {
  const auto byteAt = [bytes](std::size_t i) { return static_cast<unsigned char>(bytes[i]); };
  const unsigned char first = byteAt(0);
  if (first < 0x80)
    return {first, 1};
  const std::size_t length = first >= 0xF0 ? 4 : first >= 0xE0 ? 3 : 2;
  if (first < 0xC2 || first > 0xF4 || bytes.size() < length)
    return {};
  char32_t point = first & (0x7FU >> length);
  for (std::size_t i = 1; i < length; ++i) {
    if ((byteAt(i) & 0xC0U) != 0x80U)
      return {};
    point = (point << 6) | (byteAt(i) & 0x3FU);
  }
  const bool isTooLong = (length == 3 && point < 0x800) || (length == 4 && point < 0x10000);
  if (isTooLong || isHighHalf(point) || isLowHalf(point) || point > 0x10FFFF)
    return {};
  return {point, length};
}

[[maybe_unused]] CString textOfPath(std::wstring_view units) {
  CString text;
  for (const wchar_t unit : units)
    text += static_cast<TCHAR>(unit);
  return text;
}

CString textOfPath(std::string_view bytes) {
  CString text;
  while (!bytes.empty()) {
    const Decoded next = decodeFirst(bytes);
    if (next.length == 0) {
      text += static_cast<TCHAR>(0xDC00 + static_cast<unsigned char>(bytes.front()));
    } else if (next.point < 0x10000) {
      text += static_cast<TCHAR>(next.point);
    } else {
      text += static_cast<TCHAR>(0xD800 + ((next.point - 0x10000) >> 10));
      text += static_cast<TCHAR>(0xDC00 + ((next.point - 0x10000) & 0x3FF));
    }
    bytes.remove_prefix((std::max)(next.length, std::size_t{1}));
  }
  return text;
}

}  // namespace

std::filesystem::path pathOf(const CString& text) {
  return pathOfUnits(viewOf(text));
}

CString textOf(const std::filesystem::path& path) {
  return textOfPath(path.native());
}

CString fileNameOf(const CString& path) {
  return textOf(pathOf(path).filename());
}

std::string utf8Of(const CString& text) {
  return encoded(viewOf(text), [](std::string& bytes, char32_t /*lone*/) { append(bytes, replacement); });
}

CString utf16Of(std::string_view utf8) {
  return textOfPath(utf8);
}

std::size_t utf8Length(std::string_view bytes) {
  std::size_t length = 0;
  while (length < bytes.size()) {
    const std::size_t next = decodeFirst(bytes.substr(length)).length;
    if (next == 0)
      break;
    length += next;
  }
  return length;
}

}  // namespace host
