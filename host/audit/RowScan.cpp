#include "host/audit/RowScan.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <limits>
#include <system_error>

#include "host/audit/RowLetters.h"
#include "host/text/Blanks.h"
#include "host/text/Letters.h"

namespace host {

namespace {

bool beginsWith(std::string_view text, std::string_view lowerCaseWord) {
  return text.size() >= lowerCaseWord.size() &&
         std::equal(lowerCaseWord.begin(), lowerCaseWord.end(), text.begin(),
                    [](char a, char b) { return a == lower(b); });
}

// Behind digits, hexadecimal ones too, and at most one point.
std::size_t mantissaLength(std::string_view text, bool isHex) {
  bool hasPoint = false;
  std::size_t length = 0;
  for (; length < text.size(); ++length) {
    const char c = lower(text[length]);
    const bool isPoint = c == '.' && !hasPoint;
    if (!isDigit(c) && !isPoint && !(isHex && c >= 'a' && c <= 'f')) {
      break;
    }
    hasPoint = hasPoint || isPoint;
  }
  return length;
}

// A mantissa and, when there are digits for it, an exponent. Beyond single precision it is infinite or zero.
float valueOf(std::string_view digits, bool isHex) {
  float value = 0.0F;
  const auto format = isHex ? std::chars_format::hex : std::chars_format::general;
  const auto result = std::from_chars(digits.data(), digits.data() + digits.size(), value, format);
  if (result.ec == std::errc::result_out_of_range) {
    const std::size_t exponent = digits.find_last_of(isHex ? "pP" : "eE");
    const bool isSmall = exponent != std::string_view::npos ? digits[exponent + 1] == '-'
                                                            : digits.front() == '0' || digits.front() == '.';
    value = isSmall ? 0.0F : std::numeric_limits<float>::infinity();
  }
  return value;
}

}  // namespace

bool RowScan::startField() {
  blanks();
  m_failed = m_failed || m_rest.empty();
  return !m_failed;
}

RowScan& RowScan::endField(std::size_t length) {
  m_failed = length == 0;
  m_fields += m_failed ? 0 : 1;
  m_rest.remove_prefix(length);
  return *this;
}

RowScan& RowScan::blanks() {
  while (!m_failed && !m_rest.empty() && isBlank(m_rest.front())) {
    m_rest.remove_prefix(1);
  }
  return *this;
}

RowScan& RowScan::colon() {
  m_failed = m_failed || !m_rest.starts_with(':');
  m_rest.remove_prefix(m_failed ? 0 : 1);
  return *this;
}

RowScan& RowScan::word() {
  if (startField()) {
    const auto* const end = std::find_if(m_rest.begin(), m_rest.end(), isBlank);
    endField(static_cast<std::size_t>(end - m_rest.begin()));
  }
  return *this;
}

RowScan& RowScan::integer(int* value) {
  if (!startField()) {
    return *this;
  }
  const std::size_t sign = m_rest.front() == '-' || m_rest.front() == '+' ? 1 : 0;
  const std::string_view behind = m_rest.substr(sign);
  const std::size_t digits = (std::min)(behind.find_first_not_of("0123456789"), behind.size());
  const std::size_t length = digits == 0 ? 0 : sign + digits;
  if (length != 0 && value != nullptr) {
    std::uint64_t magnitude = 0;
    const bool isNegative = m_rest.front() == '-';
    const std::uint64_t limit = (std::numeric_limits<std::int64_t>::max)() + (isNegative ? 1ULL : 0ULL);
    const auto result = std::from_chars(behind.data(), behind.data() + digits, magnitude);
    magnitude = result.ec != std::errc() || magnitude > limit ? limit : magnitude;
    *value = static_cast<int>(static_cast<std::uint32_t>(isNegative ? 0 - magnitude : magnitude));
  }
  return endField(length);
}

RowScan& RowScan::real(float* value) {
  if (!startField()) {
    return *this;
  }
  const bool isNegative = m_rest.front() == '-';
  const bool hasSign = isNegative || m_rest.front() == '+';
  m_rest.remove_prefix(hasSign ? 1 : 0);
  float magnitude = 0.0F;
  const std::size_t length = m_rest.empty() ? 0 : realLength(magnitude);
  if (length != 0 && value != nullptr) {
    *value = isNegative ? -magnitude : magnitude;
  }
  return endField(length);
}

// How much of the rest is nan, inf or infinity; "infi" that goes on otherwise fails.
std::size_t RowScan::specialLength(float& value) const {
  if (beginsWith(m_rest, "nan")) {
    value = std::numeric_limits<float>::quiet_NaN();
    return 3;
  }
  value = std::numeric_limits<float>::infinity();
  if (beginsWith(m_rest, "infi")) {
    return beginsWith(m_rest, "infinity") ? 8 : 0;
  }
  return beginsWith(m_rest, "inf") ? 3 : 0;
}

// How much of the rest is a number without a sign. An exponent's letter and sign belong to it even without
// digits behind them.
std::size_t RowScan::realLength(float& value) const {
  const bool isHex = beginsWith(m_rest, "0x");
  const std::string_view text = m_rest.substr(isHex ? 2 : 0);
  const std::size_t mantissa = mantissaLength(text, isHex);
  if (mantissa == 0) {
    return isHex ? 0 : specialLength(value);
  }
  if (text.substr(0, mantissa) == ".") {
    return isHex ? 3 : 0;  // a point without digits is still the number 0x: zero
  }
  std::size_t end = mantissa;
  if (end < text.size() && lower(text[end]) == (isHex ? 'p' : 'e')) {
    ++end;
    end += end < text.size() && (text[end] == '+' || text[end] == '-') ? 1 : 0;
  }
  const bool hasExponent = end != mantissa && end < text.size() && isDigit(text[end]);
  while (hasExponent && end < text.size() && isDigit(text[end])) {
    ++end;
  }
  value = valueOf(text.substr(0, hasExponent ? end : mantissa), isHex);
  return end + (isHex ? 2 : 0);
}

}  // namespace host
