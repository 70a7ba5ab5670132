// Sets of which every member with a column holds what tables find hard, and the members that come back.
#pragma once

#include <array>
#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>
#include <memory>
#include <random>
#include <string>
#include <type_traits>
#include <vector>

#include "host/dipoles/UnknownValues.h"
#include "host/text/PathText.h"
#include "host/text/Utf8.h"
#include "tests/file/SetFixture.h"

class HostileValues {
 public:
  explicit HostileValues(unsigned seed) : m_random(seed) {}

  int below(int end) { return std::uniform_int_distribution<int>(0, end - 1)(m_random); }

  int whole() {
    constexpr std::array<int, 5> hard{0, -1, 1, std::numeric_limits<int>::min(),
                                      std::numeric_limits<int>::max()};
    return below(3) == 0 ? static_cast<int>(m_random()) : hard.at(static_cast<std::size_t>(below(5)));
  }

  template <typename Number>
  Number real() {
    using Limits = std::numeric_limits<Number>;
    const std::array<Number, 12> hard{
        Number(0),     -Number(0),          Limits::denorm_min(),  Limits::min(),
        Limits::max(), Limits::lowest(),    Limits::quiet_NaN(),   Limits::infinity(),
        Number(0.1),   -Limits::infinity(), Number(1) / Number(3), Number(96.2F)};
    if (below(2) == 0) {
      return hard.at(static_cast<std::size_t>(below(12)));
    }
    for (;;) {
      using Bits = std::conditional_t<sizeof(Number) == 8, std::uint64_t, std::uint32_t>;
      const auto bits = static_cast<Bits>(std::uint64_t{m_random()} << 32U | m_random());
      const auto value = std::bit_cast<Number>(bits);
      if (!std::isnan(value)) {  // with a payload, which no text holds
        return value;
      }
    }
  }

  std::string label() {
    constexpr std::array<const char*, 24> hard{"",
                                               "=cmd|' /C calc'!A0",
                                               "+1",
                                               "-2",
                                               "@SUM(A1)",
                                               "'",
                                               "''x",
                                               "'=x",
                                               "\t=1",
                                               "\r",
                                               "a,b",
                                               "say \"so\"",
                                               "\"",
                                               "two\nlines",
                                               "\r\n",
                                               "nan",
                                               "-0",
                                               "null",
                                               "\xC3\xA4\xE2\x82\xAC\xF0\x9F\xA7\xA0",
                                               "\xEF\xBB\xBFx",
                                               "a;b\tc",
                                               " blanks ",
                                               "\x01\x7F",
                                               "\xEF\xBF\xBD"};
    if (below(2) == 0) {
      return hard.at(static_cast<std::size_t>(below(24)));
    }
    std::string text;
    for (int length = below(9); length > 0; --length) {
      text += hard.at(static_cast<std::size_t>(below(24)));
    }
    return text;
  }

  Set set(int dipoles) {
    auto set = std::make_unique<CDipoleFace9File>();
    for (int slot = 0; slot < dipoles; ++slot) {
      set->addDipole();
      fill(*set->m_dipoles[slot]);
    }
    return set;
  }

  host::UnknownValues unknown(int dipoles) {
    host::UnknownValues values;
    for (int slot = 0; slot < dipoles; ++slot) {
      values.markAll(slot, static_cast<std::uint8_t>(below(3) == 0 ? below(32) : 0));
    }
    return values;
  }

 private:
  void fill(CDipoleszq& dipole) {
    for (int* member : {&dipole.m_number, &dipole.m_id, &dipole.m_fitTag, &dipole.m_show,
                        &dipole.m_showOrientation, &dipole.m_display}) {
      *member = whole();
    }
    for (double* member : {&dipole.m_location[0], &dipole.m_location[1], &dipole.m_location[2],
                           &dipole.m_orientation[0], &dipole.m_orientation[1], &dipole.m_orientation[2],
                           &dipole.m_moment, &dipole.m_latency, &dipole.m_fitError, &dipole.m_size}) {
      *member = real<double>();
    }
    for (float& member : dipole.m_colorF) {
      member = real<float>();
    }
    dipole.m_color = static_cast<COLORREF>(below(2) == 0 ? whole() : whole() & 0xFFFFFF);
    dipole.m_selected = below(2) == 0;
    dipole.m_label = host::fromUtf8(label());
  }

  std::mt19937 m_random;
};

// The members with a column, but for those that `unknown` leaves open: of these only that they are.
inline Lines membersInTables(const CDipoleFace& set, const host::UnknownValues& unknown) {
  constexpr std::array<std::pair<const char*, std::uint8_t>, 15> members{{{"m_number", 0},
                                                                          {"m_id", 0},
                                                                          {"m_fitTag", 0},
                                                                          {"m_label", 16},
                                                                          {"m_location", 0},
                                                                          {"m_orientation", 8},
                                                                          {"m_moment", 4},
                                                                          {"m_latency", 1},
                                                                          {"m_fitError", 2},
                                                                          {"m_color", 0},
                                                                          {"m_colorF", 0},
                                                                          {"m_showOrientation", 0},
                                                                          {"m_show", 0},
                                                                          {"m_display", 0},
                                                                          {"m_size", 0}}};
  Lines lines;
  for (int slot = 0; slot < set.m_totalDipoles; ++slot) {
    const MemberValues values = membersOf(*set.m_dipoles[slot]);
    for (const auto& [name, bit] : members) {
      const bool isUnknown = (unknown.of(slot) & bit) != 0;
      lines.push_back(std::to_string(slot) + " " + name + " " + (isUnknown ? "unknown" : values.at(name)));
    }
    lines.push_back(std::to_string(slot) + " m_selected " + values.at("m_selected"));
  }
  return lines;
}
