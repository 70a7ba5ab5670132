#include "host/text/PathText.h"

#include <algorithm>
#include <cstddef>
#include <system_error>

#include "host/text/Letters.h"
#include "host/text/Utf8.h"

namespace host {

namespace {

constexpr char32_t replacement = 0xFFFD;

// UTF-8 of UTF-16 units; what a half that stands alone becomes, `appendLone` says.
template <typename Unit, typename AppendLone>
std::string encoded(std::basic_string_view<Unit> units, AppendLone appendLone) {
  std::string bytes;
  bytes.reserve(units.size());
  for (std::size_t i = 0; i < units.size(); ++i) {
    const auto unit = static_cast<char32_t>(units[i]);
    const char32_t next = i + 1 < units.size() ? static_cast<char32_t>(units[i + 1]) : 0;
    if (isHighHalf(unit) && isLowHalf(next)) {
      appendUtf8(bytes, 0x10000 + ((unit - 0xD800) << 10) + (next - 0xDC00));
      ++i;
    } else if (isHighHalf(unit) || isLowHalf(unit)) {
      appendLone(bytes, unit);
    } else {
      appendUtf8(bytes, unit);
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
    if (lone >= 0xDC80 && lone <= 0xDCFF) {
      bytes += static_cast<char>(static_cast<unsigned char>(lone - 0xDC00));
    } else {
      appendUtf8(bytes, lone);
    }
  })};
}

[[maybe_unused]] CString textOfPath(std::wstring_view units) {
  CString text;
  for (const wchar_t unit : units) {
    text += static_cast<TCHAR>(unit);
  }
  return text;
}

[[maybe_unused]] CString textOfPath(std::string_view bytes) {
  return fromUtf8(bytes);
}

}  // namespace

std::filesystem::path pathOf(const CString& text) {
  return pathOfUnits(viewOf(text));
}

CString textOf(const std::filesystem::path& path) {
  return textOfPath(path.native());
}

CString fullPath(const CString& path) {
  std::error_code error;
  const std::filesystem::path full = std::filesystem::absolute(pathOf(path), error);
  return error ? path : textOf(full);
}

CString fileNameOf(const CString& path) {
  return textOf(pathOf(path).filename());
}

bool hasEnding(const CString& path, std::string_view ending) {
  const std::string name = utf8Of(fileNameOf(path));
  return name.size() > ending.size() &&
         std::equal(ending.rbegin(), ending.rend(), name.rbegin(),
                    [](char wanted, char given) { return lower(wanted) == lower(given); });
}

std::string utf8Of(const CString& text) {
  return encoded(viewOf(text), [](std::string& bytes, char32_t /*lone*/) { appendUtf8(bytes, replacement); });
}

}  // namespace host
