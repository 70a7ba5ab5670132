#include "platform/Utf.h"

namespace {

constexpr unsigned escapeBase = 0xDC00;  // + a byte from 80 to FF that is not part of valid UTF-8

constexpr bool isHighHalf(unsigned unit) {
  return unit >= 0xD800 && unit < 0xDC00;
}
constexpr bool isLowHalf(unsigned unit) {
  return unit >= 0xDC00 && unit < 0xE000;
}
constexpr bool isEscape(unsigned unit) {
  return unit >= escapeBase + 0x80 && unit <= escapeBase + 0xFF;
}

void appendByte(std::string& out, unsigned byte) {
  out += static_cast<char>(static_cast<BYTE>(byte));
}

void appendCode(std::string& out, unsigned code) {
  if (code < 0x80) {
    appendByte(out, code);
    return;
  }
  if (code < 0x800) {
    appendByte(out, 0xC0 | code >> 6);
  } else if (code < 0x10000) {
    appendByte(out, 0xE0 | code >> 12);
    appendByte(out, 0x80 | (code >> 6 & 0x3F));
  } else {
    appendByte(out, 0xF0 | code >> 18);
    appendByte(out, 0x80 | (code >> 12 & 0x3F));
    appendByte(out, 0x80 | (code >> 6 & 0x3F));
  }
  appendByte(out, 0x80 | (code & 0x3F));
}

struct Decoded {
  unsigned code;
  std::size_t length;  // 0: no valid sequence starts here
};

Decoded decode(std::string_view bytes) {
  const auto at = [&](std::size_t index) { return static_cast<BYTE>(bytes[index]); };
  const unsigned first = at(0);
  if (first < 0x80) {
    return {first, 1};
  }
  const std::size_t length = first >= 0xF0 ? 4 : first >= 0xE0 ? 3 : 2;
  if (first < 0xC2 || first > 0xF4 || bytes.size() < length) {
    return {0, 0};
  }
  unsigned code = first & (0x7FU >> length);
  for (std::size_t i = 1; i < length; ++i) {
    if ((at(i) & 0xC0U) != 0x80) {
      return {0, 0};
    }
    code = code << 6 | (at(i) & 0x3FU);
  }
  const bool overlong = (length == 3 && code < 0x800) || (length == 4 && code < 0x10000);
  const bool half = code >= 0xD800 && code < 0xE000;
  return overlong || half || code > 0x10FFFF ? Decoded{0, 0} : Decoded{code, length};
}

}  // namespace

std::string toUtf8(std::basic_string_view<TCHAR> text) {
  std::string out;
  out.reserve(text.size());
  for (std::size_t i = 0; i < text.size(); ++i) {
    const unsigned unit = text[i];
    const unsigned next = i + 1 < text.size() ? text[i + 1] : 0U;
    if (isHighHalf(unit) && isLowHalf(next)) {
      appendCode(out, 0x10000 + ((unit - 0xD800) << 10) + (next - 0xDC00));
      ++i;
    } else if (isEscape(unit)) {
      appendByte(out, unit - escapeBase);
    } else {
      appendCode(out, unit);
    }
  }
  return out;
}

std::string toUtf8(LPCTSTR text) {
  return text == nullptr ? std::string() : toUtf8(std::basic_string_view<TCHAR>(text));
}

std::string toUtf8(const CString& text) {
  return toUtf8(std::basic_string_view<TCHAR>(text.GetString(), static_cast<std::size_t>(text.GetLength())));
}

CString fromUtf8(std::string_view bytes) {
  std::basic_string<TCHAR> text;
  text.reserve(bytes.size());
  while (!bytes.empty()) {
    const Decoded decoded = decode(bytes);
    if (decoded.length == 0) {
      text += static_cast<TCHAR>(escapeBase + static_cast<BYTE>(bytes.front()));
      bytes.remove_prefix(1);
      continue;
    }
    if (decoded.code < 0x10000) {
      text += static_cast<TCHAR>(decoded.code);
    } else {
      text += static_cast<TCHAR>(0xD800 + ((decoded.code - 0x10000) >> 10));
      text += static_cast<TCHAR>(0xDC00 + ((decoded.code - 0x10000) & 0x3FF));
    }
    bytes.remove_prefix(decoded.length);
  }
  return CString(text.data(), static_cast<int>(text.size()));
}
