// Hexadecimal numbers between two denormals, where the C library itself drops a bit: the scanner and the
// yardstick of its property tests must both round once, from all digits.
#include <gtest/gtest.h>
#include <utility>

#include "tests/import/ScanfOracle.h"

namespace {

// 0x1.16bc60p-127 is an even multiple of the smallest denormal, 0x1.16bc64p-127 the odd one behind it.
const std::pair<const char16_t*, float> cases[] = {
    {u"x 0x1.000001p-150", 0x1p-149F},
    {u"x 0x11.00001p-150", 0x1.2p-146F},
    {u"x -0x11.00001p-150", -0x1.2p-146F},
    {u"x 0x11p-150", 0x1p-146F},
    {u"x 0x1.16bc62p-127", 0x1.16bc60p-127F},
    {u"x 0x1.16bc620000000000000000001p-127", 0x1.16bc64p-127F},
    {u"x 0x1.16bc61fffffffffffffffffffp-127", 0x1.16bc60p-127F},
    {u"x 0x1.16bc66p-127", 0x1.16bc68p-127F},
    {u"x 0x0.000000000000000000000000000000000000116bc620000000001p21", 0x1.16bc64p-127F},
    {u"x 0x116bc6200000000000000000000000000000000001p-291", 0x1.16bc64p-127F},
};

}  // namespace

TEST(DeepHexNumbers, AreRoundedOnceByTheScanner) {
  for (const auto& [row, value] : cases) {
    EXPECT_EQ(scanByScanner(ctfFormats[4], row).reals[1], value) << value;
  }
}

TEST(DeepHexNumbers, AreRoundedOnceByTheYardstick) {
  for (const auto& [row, value] : cases) {
    EXPECT_EQ(scanByLibrary(ctfFormats[4], row).reals[1], value) << value;
  }
}
