#include "host/audit/RowFields.h"

#include <algorithm>
#include <bit>
#include <charconv>
#include <cmath>
#include <cstring>
#include <limits>
#include <system_error>

#include "host/text/Blanks.h"

namespace host {

namespace {

constexpr bool isBlank(char c) {
  return c == ' ' || (c >= '\t' && c <= '\r');
}

constexpr bool isDigit(char c) {
  return c >= '0' && c <= '9';
}

constexpr char lower(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

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

// The same byte eight times.
constexpr std::uint64_t eight(unsigned char byte) {
  return 0x0101010101010101U * byte;
}

// The high bit of the first byte below a limit, of at most 128, and of none before it.
constexpr std::uint64_t markFirstBelow(std::uint64_t bytes, unsigned char limit) {
  return (bytes - eight(limit)) & ~bytes & eight(0x80);
}

std::uint64_t eightBytesAt(const char* start) {
  std::uint64_t bytes = 0;
  std::memcpy(&bytes, start, sizeof bytes);
  return bytes;
}

// Without a branch: half of the numbers have a sign.
constexpr unsigned signLength(char c) {
  return static_cast<unsigned>(c == '-') | static_cast<unsigned>(c == '+');
}

// So many bytes, the first ones.
constexpr std::uint64_t lowest(unsigned count) {
  return (std::uint64_t{1} << (8 * count)) - 1;
}

// The bytes behind a sign up to a length less than eight, 0 to 9 for digits, and zeros around them.
constexpr std::uint64_t digitsIn(std::uint64_t bytes, unsigned sign, unsigned length) {
  return (bytes ^ eight('0')) & lowest(length) & ~lowest(sign);
}

// The high bits of those that are no digits.
constexpr std::uint64_t othersIn(std::uint64_t digits) {
  return (((digits & eight(0x7F)) + eight(0x76)) | digits) & eight(0x80);
}

// The number of eight digits without a branch; each byte holds one, 0 to 9, the first in the lowest byte.
constexpr std::uint32_t valueOfEight(std::uint64_t digits) {
  constexpr std::uint64_t twoOfFour = 0x000000FF000000FF;
  const std::uint64_t pairs = digits * 10 + (digits >> 8U);
  return static_cast<std::uint32_t>(((pairs & twoOfFour) * (100 + (1000000ULL << 32U)) +
                                     ((pairs >> 16U) & twoOfFour) * (1 + (10000ULL << 32U))) >>
                                    32U);
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

RowFields::RowFields(std::string_view row, int limit) : m_row(row) {
  const char* c = row.data();
  const char* const end = c + row.size();
  while (true) {
    while (c != end && isBlank(*c)) {
      ++c;
    }
    m_hasMore = c != end && m_count == limit;
    if (c == end || m_hasMore) {
      return;
    }
    c = take(c, end, m_fields[m_count]);
    ++m_count;
  }
}

// Takes the field that begins at `c`, and returns what stands behind it.
const char* RowFields::take(const char* c, const char* end, Field& field) {
  field.start = c;
  field.isShort = false;
  constexpr bool isFirstLowest = std::endian::native == std::endian::little;
  const bool isTaken = isFirstLowest && ((end - c >= 8 && takeShort(field)) ||  //
                                         (end - c >= 16 && takeMiddle(field)));
  return isTaken ? c + field.length : takeLong(c, end, field);
}

// A plain number that is shorter than eight bytes and ends at a blank or a tab, at one look; false for
// anything else. Eight bytes must be there. Nearly all numbers of a row are such, and a loop over their bytes
// would guess wrong at the end of each.
bool RowFields::takeShort(Field& field) {
  const char* const start = field.start;
  const std::uint64_t bytes = eightBytesAt(start);
  const std::uint64_t ends = markFirstBelow(bytes, ' ' + 1);
  if (ends == 0) {
    return false;
  }
  const auto length = static_cast<unsigned>(std::countr_zero(ends)) / 8;
  const std::uint64_t digits = digitsIn(bytes, signLength(*start), length);
  const std::uint64_t others = othersIn(digits);
  // Without a point it is as if one stood behind the number.
  const unsigned point = others == 0 ? length : static_cast<unsigned>(std::countr_zero(others)) / 8;
  const bool isPoint = others == 0 || ((others & (others - 1)) == 0 && start[point] == '.');
  if (!isPoint || point <= signLength(*start) || (start[length] != ' ' && start[length] != '\t')) {
    return false;
  }
  field.isShort = true;
  field.kind = others == 0 ? FieldKind::integer : FieldKind::real;
  field.length = length;
  field.point = static_cast<std::uint8_t>(point);
  return true;
}

// Likewise one of 8 to 15 bytes, of which sixteen must be there.
bool RowFields::takeMiddle(Field& field) {
  const char* const start = field.start;
  const std::uint64_t front = eightBytesAt(start);
  const std::uint64_t back = eightBytesAt(start + 8);
  const std::uint64_t ends = markFirstBelow(back, ' ' + 1);
  if (ends == 0) {
    return false;
  }
  const auto length = static_cast<unsigned>(std::countr_zero(ends)) / 8;
  const unsigned sign = signLength(*start);
  const std::uint64_t frontOthers = othersIn((front ^ eight('0')) & ~lowest(sign));
  const std::uint64_t backOthers = othersIn(digitsIn(back, 0, length));
  const std::uint64_t others = frontOthers | backOthers;
  const bool isPoint = (frontOthers == 0 || backOthers == 0) && (others & (others - 1)) == 0;
  const unsigned at = static_cast<unsigned>(std::countr_zero(others)) / 8 + (frontOthers == 0 ? 8 : 0);
  const bool isInteger = others == 0;
  if (!isInteger && !(isPoint && at > sign && start[at] == '.')) {
    return false;
  }
  field.kind = isInteger ? FieldKind::integer : FieldKind::real;
  field.length = length + 8;
  return start[field.length] == ' ' || start[field.length] == '\t';
}

// The digits of a short plain number and the power of ten are exact as doubles, so that their quotient is
// rounded once; with so few digits, rounding it once more, to single precision, gives from_chars' result.
float RowFields::shortNumber(const Field& field) {
  const std::uint64_t digits = digitsIn(eightBytesAt(field.start), signLength(*field.start), field.length);
  const unsigned point = field.point;
  const unsigned decimals = point < field.length ? field.length - point - 1 : 0;
  const std::uint64_t behind = (digits >> (8 * point) >> 8U) << (8 * point);
  const unsigned count = point + decimals;  // of bytes without the point
  const std::uint32_t value = valueOfEight(((digits & lowest(point)) | behind) << (8 * (8 - count)));
  constexpr double factors[] = {1.0, -1.0};  // signs are hard to guess
  return static_cast<float>(static_cast<double>(value) / powersOfTen[decimals] *
                            factors[*field.start == '-' ? 1 : 0]);
}

// Byte by byte.
const char* RowFields::takeLong(const char* c, const char* end, Field& field) {
  c += *c == '-' || *c == '+' ? 1 : 0;
  const char* const first = c;
  while (c != end && isDigit(*c)) {
    ++c;
  }
  field.kind = c != first ? FieldKind::integer : FieldKind::other;
  if (c != end && *c == '.' && c != first) {
    field.kind = FieldKind::real;
    for (++c; c != end && isDigit(*c);) {
      ++c;
    }
  }
  if (c != end && !isBlank(*c)) {
    field.kind = FieldKind::other;
    bool mayHoldMarks = m_mayHoldMarks;
    for (; c != end && !isBlank(*c); ++c) {
      mayHoldMarks = mayHoldMarks | (*c < '0') | (*c > 'z');  // all four stand there
    }
    m_mayHoldMarks = mayHoldMarks;
  }
  field.length = static_cast<std::uint32_t>(c - field.start);
  return c;
}

// As number() says, of a field that is not short.
std::optional<float> RowFields::longNumber(const Field& field) {
  constexpr std::uint32_t longest = 14;
  const std::string_view text(field.start, field.length);
  if (field.kind == FieldKind::other || field.length > longest) {
    return singleOf(text);
  }
  std::int64_t digits = 0;
  for (const char c : text) {
    digits = isDigit(c) ? digits * 10 + (c - '0') : digits;
  }
  const std::size_t point = text.find('.');
  const std::size_t decimals = point != std::string_view::npos ? text.size() - point - 1 : 0;
  const double magnitude = static_cast<double>(digits) / powersOfTen[decimals];
  return static_cast<float>(text.front() == '-' ? -magnitude : magnitude);
}

std::optional<int> RowFields::wholeNumber(int field) const {
  const std::optional<float> value = number(field);
  constexpr float largest = 1e6F;  // exact in single precision
  return value && std::abs(*value) <= largest && *value == std::trunc(*value)
             ? std::optional(static_cast<int>(*value))
             : std::nullopt;
}

std::string_view RowFields::from(int field) const {
  const std::string_view first = (*this)[field];
  return first.empty() ? first
                       : withoutBlanks(m_row.substr(static_cast<std::size_t>(first.data() - m_row.data())));
}

std::optional<float> singleOf(std::string_view text) {
  if (text.size() > 1 && text.front() == '+' && text[1] != '-') {
    text.remove_prefix(1);
  }
  float value = 0.0F;
  const auto result = std::from_chars(text.data(), text.data() + text.size(), value);
  const bool isWhole = result.ec == std::errc() && result.ptr == text.data() + text.size();
  return isWhole && std::isfinite(value) ? std::optional(value) : std::nullopt;
}

std::optional<NumberedRow> numberedRow(std::string_view line) {
  const char* c = line.data();
  const char* const end = c + line.size();
  while (c != end && isBlank(*c)) {
    ++c;
  }
  if (c == end || !(isDigit(*c) || *c == '+' || *c == '-')) {
    return std::nullopt;
  }
  const bool isNegative = *c == '-';
  c += isDigit(*c) ? 0 : 1;
  const char* const digits = c;
  long long number = 0;
  for (; c != end && isDigit(*c); ++c) {
    number = (std::min)(number * 10 + (*c - '0'), 2000000000LL);
  }
  const char* const behind = c;
  while (c != end && isBlank(*c)) {
    ++c;
  }
  if (behind == digits || c == end || *c != ':') {
    return std::nullopt;
  }
  const auto signedNumber = static_cast<int>(isNegative ? -number : number);
  return NumberedRow{signedNumber, {c + 1, static_cast<std::size_t>(end - c - 1)}, c != behind};
}

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
