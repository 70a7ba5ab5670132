// The fields of a row: what stands between its blanks.
#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>
#include <string_view>

namespace host {

enum class FieldKind : std::uint8_t { integer, real, other };  // digits; digits and a point; anything else

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
  std::optional<float> number(int field) const {
    if (!has(field)) {
      return std::nullopt;
    }
    const Field& found = m_fields[field];
    return found.isShort ? shortNumber(found) : longNumber(found);
  }
  // A plain number; beyond single precision it is infinite, with its sign.
  float plainNumber(int field) const {
    constexpr float infinity = std::numeric_limits<float>::infinity();
    return number(field).value_or((*this)[field].starts_with('-') ? -infinity : infinity);
  }
  // The whole field as an integer; "3.0" is one too.
  std::optional<int> wholeNumber(int field) const;
  // The rest of the row from a field on, without blanks around.
  std::string_view from(int field) const;

 private:
  struct Field {
    const char* start;
    std::uint32_t length;
    std::uint8_t point;  // of a short number: where it stands; without one behind it
    bool isShort;        // a plain number of less than eight bytes, with as many to look at in the row
    FieldKind kind;
  };

  bool has(int field) const { return field >= 0 && field < m_count; }
  const char* take(const char* c, const char* end, Field& field);
  static bool takeShort(Field& field);
  static bool takeMiddle(Field& field);
  static float shortNumber(const Field& field);
  static std::optional<float> longNumber(const Field& field);

  static constexpr double powersOfTen[] = {1e0, 1e1, 1e2, 1e3,  1e4,  1e5,  1e6,
                                           1e7, 1e8, 1e9, 1e10, 1e11, 1e12, 1e13};
  const char* takeLong(const char* c, const char* end, Field& field);

  std::string_view m_row;
  Field m_fields[most];  // those behind the count hold nothing
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

// What the C library's scanf makes of a row, which is what the module's import makes of it: a field may begin
// with a number and go on otherwise. Each step stands for one directive; the first that fails ends the scan.
class RowScan {
 public:
  explicit RowScan(std::string_view row) : m_rest(row) {}

  RowScan& integer(int* value = nullptr);  // %d
  RowScan& real(float* value = nullptr);   // %f
  RowScan& word();                         // %s
  RowScan& blanks();
  RowScan& colon();

  int fields() const { return m_fields; }

 private:
  bool startField();
  std::size_t specialLength(float& value) const;
  std::size_t realLength(float& value) const;
  RowScan& endField(std::size_t length);

  std::string_view m_rest;
  int m_fields = 0;
  bool m_failed = false;
};

}  // namespace host
