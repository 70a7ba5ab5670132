// Which values of dipoles a finding is about, for its sentence.
#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>

namespace host {

enum class ShownValue { place, orientation, moment, latency, fitError, label };

class ShownValues {
 public:
  void add(ShownValue value, bool isMeant = true) { m_are[static_cast<std::size_t>(value)] |= isMeant; }
  bool has(ShownValue value) const { return m_are[static_cast<std::size_t>(value)]; }

  // "place, moment and label".
  std::string text() const;

  // That values of other columns are shown as these, and what that means when the place is one of them.
  std::string ofOtherColumns() const;

 private:
  std::array<bool, 6> m_are = {};
};

}  // namespace host
