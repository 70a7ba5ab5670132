#include "host/audit/TextLines.h"

#include <cstddef>
#include <cstring>
#include <filesystem>
#include <string>

#include "host/text/PathText.h"
#include "host/text/Utf8.h"

namespace host {

namespace {

constexpr std::string_view utf8Mark = "\xEF\xBB\xBF";
constexpr std::string_view littleMark = "\xFF\xFE";
constexpr std::string_view bigMark = "\xFE\xFF";

CString textOfUtf8(std::string_view bytes) {
  return textOf(std::filesystem::path(std::u8string(bytes.begin(), bytes.end())));
}

// Half a pair that stands alone becomes U+FFFD, as does half a unit at the end.
std::string utf8OfUtf16(std::string_view bytes, bool isBigEndian) {
  CString units;
  for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) {
    const unsigned first = static_cast<unsigned char>(bytes[i]);
    const unsigned second = static_cast<unsigned char>(bytes[i + 1]);
    const unsigned unit = isBigEndian ? first << 8U | second : second << 8U | first;
    units += static_cast<TCHAR>(unit != 0 ? unit : 0xFFFDU);
  }
  return utf8Of(units);
}

}  // namespace

// Without an early exit, so that the compiler can take many bytes at once.
TextBytes::TextBytes(std::string_view text) {
  unsigned char all = 0;
  unsigned char zeros = 0;
  unsigned char returns = 0;
  for (const char c : text) {
    all = static_cast<unsigned char>(all | static_cast<unsigned char>(c));
    zeros = static_cast<unsigned char>(zeros | static_cast<unsigned char>(c == '\0'));
    returns = static_cast<unsigned char>(returns | static_cast<unsigned char>(c == '\r'));
  }
  areAscii = all < 0x80;
  haveZeros = zeros != 0;
  haveReturns = returns != 0;
}

TextEncoding::TextEncoding(std::string_view bytes) : m_text(bytes), m_bytes({}) {
  if (bytes.starts_with(utf8Mark)) {
    m_hasMark = true;
    m_text.remove_prefix(utf8Mark.size());
  } else if (bytes.starts_with(littleMark) || bytes.starts_with(bigMark)) {
    m_hasMark = true;
    m_isUtf16 = true;
    m_converted = utf8OfUtf16(bytes.substr(littleMark.size()), bytes.starts_with(bigMark));
  }
  m_bytes = TextBytes(text());
  m_isUtf8 = !m_bytes.areAscii && utf8Length(text()) == text().size();
}

CString TextEncoding::asAnsi(std::string_view part) {
  return {part.data(), static_cast<int>(part.size())};
}

CString TextEncoding::asMeant(std::string_view part) const {
  return m_isUtf8 ? textOfUtf8(part) : asAnsi(part);
}

TextLines::TextLines(const TextEncoding& encoding)
    : m_next(encoding.text().data()), m_end(m_next + encoding.text().size()), m_bytes(encoding.bytes()) {}

void TextLines::skipLineEnds() {
  for (; m_next != m_end && (*m_next == '\n' || *m_next == '\r'); ++m_next) {
    const bool isPair = *m_next == '\r' && m_next + 1 != m_end && m_next[1] == '\n';
    m_number += isPair ? 0 : 1;
  }
}

bool TextLines::next(TextLine& line) {
  constexpr std::ptrdiff_t longest = 2048;
  skipLineEnds();
  if (m_next == m_end) {
    return false;
  }
  const auto room = static_cast<std::size_t>((std::min)(m_end - m_next, longest));
  const auto* end = static_cast<const char*>(std::memchr(m_next, '\n', room));
  end = end != nullptr ? end : m_next + room;
  if (m_bytes.haveReturns) {
    const auto* carriage =
        static_cast<const char*>(std::memchr(m_next, '\r', static_cast<std::size_t>(end - m_next)));
    end = carriage != nullptr ? carriage : end;
  }
  line.text = {m_next, static_cast<std::size_t>(end - m_next)};
  line.number = m_number;
  line.isClosed = end != m_end || end - m_next == longest;
  if (m_bytes.haveZeros) {
    line.text = line.text.substr(0, line.text.find('\0'));
  }
  m_next = end;
  return true;
}

}  // namespace host
