// The fields of a row: what stands between its blanks.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

namespace host {

// mm or whatever the row counts in: the imports ask before they take a coordinate beyond it.
inline constexpr float farthestUnasked = 300.0F;

enum class FieldKind : std::uint8_t { integer, real, other };  // digits; digits and a point; anything else

struct RowField {
  const char* start;
  std::uint64_t digits;  // of a short number, 0 to 9, one in each byte, zeros for all else but the point
  std::uint32_t length;
  std::uint8_t point;  // of a short number: where it stands; without one behind it
  bool isShort;        // a plain number of less than eight bytes, with as many to look at in the row
  FieldKind kind;
};

class RowFields {
 public:
  static constexpr int most = 48;

  // The row must outlive this. Fields behind the limit are not looked at, but for whether there are any.
  explicit RowFields(std::string_view row, int limit = most);

  // At most one more than the limit.
  int count() const { return m_count + (m_hasMore ? 1 : 0); }
  // Empty when there is no such field.
  std::string_view operator[](int field) const {
    return has(field) ? std::string_view(m_fields[field].start, m_fields[field].length) : std::string_view();
  }
  // Whether so many fields from one on are there and are plain numbers, which every reader reads alike.
  bool arePlain(int first, int count) const {
    bool arePlain = first + count <= m_count;
    for (int field = first; arePlain && field < first + count; ++field) {
      arePlain = m_fields[field].kind != FieldKind::other;
    }
    return arePlain;
  }
  bool isInteger(int field) const { return has(field) && m_fields[field].kind == FieldKind::integer; }
  // Whether a field that is no plain number may hold one of ( / { }.
  bool mayHoldMarks() const { return m_mayHoldMarks; }
  // The whole field as a finite number in single precision.
  std::optional<float> number(int field) const;
  // The same; 0 where there is none.
  float numberOrZero(int field) const {
    return isShort(field) ? shortNumber(m_fields[field]) : number(field).value_or(0.0F);
  }
  // A plain number; beyond single precision it is infinite, with its sign.
  float plainNumber(int field) const {
    return isShort(field) ? shortNumber(m_fields[field]) : longPlainNumber(field);
  }
  // The whole field as an integer; "3.0" is one too.
  std::optional<int> wholeNumber(int field) const;
  // The rest of the row from a field on, without blanks around.
  std::string_view from(int field) const;

 private:
  bool has(int field) const { return field >= 0 && field < m_count; }
  bool isShort(int field) const { return has(field) && m_fields[field].isShort; }
  const char* takeLong(RowField& field, const char* end);
  const char* takeWord(const char* c, const char* end);
  static float shortNumber(const RowField& field);
  static std::optional<float> longNumber(const RowField& field);
  float longPlainNumber(int field) const;

  std::string_view m_row;
  RowField m_fields[most];  // those behind the count hold nothing
  int m_count = 0;
  bool m_hasMore = false;
  bool m_mayHoldMarks = false;
};

// A whole text as a finite number in single precision; a "+" may stand in front.
std::optional<float> singleOf(std::string_view text);

// "12:" at the front of a row: its number, and the row behind the colon. Nothing for any other line.
struct NumberedRow {
  int number = 0;
  std::string_view rest;
  bool hasGap = false;  // blanks before the colon
};
std::optional<NumberedRow> numberedRow(std::string_view line);

}  // namespace host
