#include "host/audit/RowFields.h"

#include <algorithm>
#include <bit>
#include <charconv>
#include <cmath>
#include <cstring>
#include <limits>
#include <system_error>

#include "host/audit/RowLetters.h"
#include "host/text/Blanks.h"

namespace host {

namespace {

// The same byte eight times.
constexpr std::uint64_t eight(unsigned char byte) {
  return 0x0101010101010101U * byte;
}

// The high bit of the first byte below a limit, of at most 128, and of none before it.
constexpr std::uint64_t markFirstBelow(std::uint64_t bytes, unsigned char limit) {
  return (bytes - eight(limit)) & (~bytes & eight(0x80));
}

// All bits of the bytes before that one.
constexpr std::uint64_t bytesBefore(std::uint64_t mark) {
  return ((mark & (0 - mark)) >> 7U) - 1;
}

constexpr unsigned placeOf(std::uint64_t mark) {
  return static_cast<unsigned>(std::countr_zero(mark)) / 8;
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

constexpr double powersOfTen[] = {1e0, 1e1, 1e2, 1e3, 1e4, 1e5, 1e6, 1e7, 1e8, 1e9, 1e10, 1e11, 1e12, 1e13};

// A plain number that is shorter than eight bytes and ends at a blank or a tab, at one look; false for
// anything else. Eight bytes must be there. Nearly all numbers of a row are such, and a loop over their bytes
// would guess wrong at the end of each.
inline bool takeShort(RowField& field) {
  const char* const start = field.start;
  const std::uint64_t bytes = eightBytesAt(start);
  const std::uint64_t ends = markFirstBelow(bytes, ' ' + 1);
  if (ends == 0) {
    return false;
  }
  const unsigned length = placeOf(ends);
  const unsigned sign = signLength(*start);
  const std::uint64_t digits = (bytes ^ eight('0')) & bytesBefore(ends) & ~lowest(sign);
  const std::uint64_t others = othersIn(digits);
  // Without a point it is as if one stood behind the number.
  const unsigned point = others == 0 ? length : placeOf(others);
  const bool isPoint = others == 0 || ((others & (others - 1)) == 0 && start[point] == '.');
  if (!isPoint || point <= sign || (start[length] != ' ' && start[length] != '\t')) {
    return false;
  }
  field.digits = digits;
  field.isShort = true;
  field.kind = others == 0 ? FieldKind::integer : FieldKind::real;
  field.length = length;
  field.point = static_cast<std::uint8_t>(point);
  return true;
}

// Likewise one of 8 to 15 bytes, of which sixteen must be there.
inline bool takeMiddle(RowField& field) {
  const char* const start = field.start;
  const std::uint64_t back = eightBytesAt(start + 8);
  const std::uint64_t ends = markFirstBelow(back, ' ' + 1);
  if (ends == 0) {
    return false;
  }
  const unsigned length = 8 + placeOf(ends);
  const unsigned sign = signLength(*start);
  const std::uint64_t frontOthers = othersIn((eightBytesAt(start) ^ eight('0')) & ~lowest(sign));
  const std::uint64_t backOthers = othersIn((back ^ eight('0')) & bytesBefore(ends));
  const std::uint64_t others = frontOthers | backOthers;
  const bool isPoint = (frontOthers == 0 || backOthers == 0) && (others & (others - 1)) == 0;
  const unsigned at = static_cast<unsigned>(std::countr_zero(others)) / 8 + (frontOthers == 0 ? 8 : 0);
  const bool isInteger = others == 0;
  if (!isInteger && !(isPoint && at > sign && start[at] == '.')) {
    return false;
  }
  field.kind = isInteger ? FieldKind::integer : FieldKind::real;
  field.length = length;
  return start[length] == ' ' || start[length] == '\t';
}

// A plain number of either length that begins the field.
inline bool takeNumber(RowField& field, const char* end) {
  constexpr bool isFirstLowest = std::endian::native == std::endian::little;
  const bool isWord = *field.start > '9';
  return isFirstLowest && !isWord &&
         ((end - field.start >= 8 && takeShort(field)) || (end - field.start >= 16 && takeMiddle(field)));
}

}  // namespace

RowFields::RowFields(std::string_view row, int limit) : m_row(row) {
  const char* c = row.data();
  const char* const end = c + row.size();
  int count = 0;
  for (;; ++count) {
    while (c != end && isBlank(*c)) {
      ++c;
    }
    if (c == end || count == limit) {
      break;
    }
    RowField& field = m_fields[count];
    field.start = c;
    field.isShort = false;
    c = takeNumber(field, end) ? c + field.length + 1 : takeLong(field, end);
  }
  m_count = count;
  m_hasMore = c != end;
}

// Byte by byte.
const char* RowFields::takeLong(RowField& field, const char* end) {
  const char* c = field.start;
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
    c = takeWord(c, end);
  }
  field.length = static_cast<std::uint32_t>(c - field.start);
  return c;
}

// To the end of a field that is no number, and whether it may hold marks.
const char* RowFields::takeWord(const char* c, const char* end) {
  constexpr std::uint64_t behindLetters = eight(0x7F - 'z');  // carries those behind z to the high bit
  std::uint64_t marks = 0;
  std::uint64_t ends = 0;
  for (; end - c >= 8 && ends == 0; c += ends == 0 ? 8 : placeOf(ends)) {
    const std::uint64_t bytes = eightBytesAt(c);
    ends = markFirstBelow(bytes, ' ' + 1);
    const std::uint64_t inside = ends == 0 ? ~std::uint64_t{0} : bytesBefore(ends);
    // Behind the field as if there were digits.
    const std::uint64_t letters = (bytes & inside) | (eight('0') & ~inside);
    marks |= markFirstBelow(letters, '0') | (((letters + behindLetters) | letters) & eight(0x80));
  }
  bool mayHoldMarks = m_mayHoldMarks || marks != 0;
  for (; c != end && !isBlank(*c); ++c) {
    mayHoldMarks = mayHoldMarks | (*c < '0') | (*c > 'z');  // all four stand there
  }
  m_mayHoldMarks = mayHoldMarks;
  return c;
}

// The digits of a short plain number and the power of ten are exact as doubles, so that their quotient is
// rounded once; with so few digits, rounding it once more, to single precision, gives from_chars' result.
float RowFields::shortNumber(const RowField& field) {
  const unsigned point = field.point;
  const unsigned decimals = point < field.length ? field.length - point - 1 : 0;
  const std::uint64_t behind = (field.digits >> (8 * point) >> 8U) << (8 * point);
  const unsigned count = point + decimals;  // of bytes without the point
  const std::uint32_t value = valueOfEight(((field.digits & lowest(point)) | behind) << (8 * (8 - count)));
  static constexpr double factors[] = {1.0, -1.0};  // signs are hard to guess
  return static_cast<float>(static_cast<double>(value) / powersOfTen[decimals] *
                            factors[*field.start == '-' ? 1 : 0]);
}

// As number() says, of a field that is not short.
std::optional<float> RowFields::longNumber(const RowField& field) {
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

std::optional<float> RowFields::number(int field) const {
  if (!has(field)) {
    return std::nullopt;
  }
  const RowField& found = m_fields[field];
  return found.isShort ? shortNumber(found) : longNumber(found);
}

float RowFields::longPlainNumber(int field) const {
  constexpr float infinity = std::numeric_limits<float>::infinity();
  return number(field).value_or((*this)[field].starts_with('-') ? -infinity : infinity);
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

}  // namespace host
