// Neuromag's binary records come back bit by bit; what is none is refused.
#include <bit>
#include <cmath>
#include <cstdint>
#include <gtest/gtest.h>
#include <string>

#include "host/exchange/DelimitedText.h"
#include "host/exchange/NeuromagBinary.h"

namespace {

using host::NeuromagDipoles;
using host::readNeuromagBinary;

class Bytes {
 public:
  Bytes& whole(std::uint32_t bits) {
    for (int shift = 24; shift >= 0; shift -= 8) {
      bytes += static_cast<char>(bits >> static_cast<unsigned>(shift) & 0xFFU);
    }
    return *this;
  }
  Bytes& real(float value) { return whole(std::bit_cast<std::uint32_t>(value)); }
  std::string bytes;
};

std::string record(float place = 0.0123F, float goodness = 0.9346F) {
  Bytes record;
  record.whole(0).real(0.1F).real(0.0F).real(0).real(0).real(0).real(place).real(-0.0523F).real(0.0585F);
  record.real(15e-9F).real(20e-9F).real(0.0F).real(goodness);
  record.bytes.resize(196);
  return record.bytes;
}

std::string faultOf(const std::string& bytes) {
  try {
    (void)readNeuromagBinary(bytes);
  } catch (const host::TableFault& fault) {
    return fault.of("t").what();
  }
  return "was taken";
}

}  // namespace

TEST(NeuromagBinary, IsReadInTheUnitsOfText) {
  const NeuromagDipoles file = readNeuromagBinary(record());
  ASSERT_EQ(file.dipoles.size(), 1U);
  EXPECT_EQ(file.dipoles[0].begin, 100.0);
  EXPECT_NEAR(file.dipoles[0].place.x, 12.3, 1e-6);
  EXPECT_NEAR(file.dipoles[0].amplitude, 25.0, 1e-6);
  EXPECT_EQ(file.dipoles[0].goodness, 93.46);
  EXPECT_TRUE(file.leftOut.empty());
}

TEST(NeuromagBinary, ComesBackBitByBit) {
  std::string bytes;
  for (int i = 0; i < 500; ++i) {
    bytes += record(0.2F * std::sin(static_cast<float>(i)), 0.001F * static_cast<float>(i));
  }
  EXPECT_EQ(neuromagBinary(readNeuromagBinary(bytes)), bytes);
}

TEST(NeuromagBinary, CountsWhatItHasNoRoomFor) {
  std::string bytes = record() + record();
  bytes[12] = '?';      // origin of the sphere
  bytes[196 + 55] = 1;  // errors
  bytes[55] = 1;
  bytes[184] = '?';  // chi-square
  const std::vector<std::pair<std::string, int>> expected = {
      {"origin of the sphere", 1}, {"errors of the fit", 2}, {"chi-square", 1}};
  EXPECT_EQ(readNeuromagBinary(bytes).leftOut, expected);
}

TEST(NeuromagBinary, AnEmptyFileHoldsNoDipoles) {
  EXPECT_TRUE(readNeuromagBinary("").dipoles.empty());
}

TEST(NeuromagBinary, RefusesWhatNoFitGives) {
  EXPECT_EQ(faultOf(record() + "x"),
            "t: it is no binary file of dipoles: its size is no multiple of 196 bytes");
  for (const std::string& bad : {record(0.4F), record(0.0F, 1.01F), record(0.0F, -0.1F)}) {
    EXPECT_EQ(faultOf(record() + bad),
              "t: it is no binary file of dipoles: record 2 has a place beyond 0.3 m, or "
              "a goodness of fit outside of 0 to 1");
  }
}
