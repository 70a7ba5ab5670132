// What a drawing changes in the set is as before afterwards, bit by bit.
#include <bit>
#include <cstdint>
#include <gtest/gtest.h>
#include <random>
#include <stdexcept>

#include "host/picture/DisplayOverride.h"
#include "tests/host/panes/PaneFixture.h"
#include "tests/host/undo/WholeSet.h"

namespace {

struct DisplayOverride : testing::Test, PaneFixture {
  // Every member that drawing touches has a value of its own.
  void fill() {
    std::mt19937 random(21);
    const auto number = [&] { return static_cast<int>(random()); };
    for (int i = 0; i < 20; ++i) {
      CDipoleszq& dipole = add(i, i * 2.0, -i);
      dipole.m_display = number();
      dipole.m_size = number() * 0.37;
      dipole.m_color = static_cast<COLORREF>(random() & 0xFFFFFFU);
      dipole.m_colorF[1] = 0.123F;
      dipole.setDimensionXYZ(number(), number(), number());
    }
    // A number that only its bits tell from others.
    dipoles->getDipole(3)->m_size = std::bit_cast<double>(std::uint64_t{0x7ff8'0000'dead'beefU});
    dipoles->deleteDipole(7, 0);
    dipoles->setDimensionXYZ(11, 12, 13);
    dipoles->setSpaceXYZ(1.5, -2.5, 3.5);
  }

  // As drawing does with every dipole.
  template <typename Then>
  void changeEach(const Then& then) {
    for (int slot = 0; slot < dipoles->m_totalDipoles; ++slot) {
      if (CDipoleszq* dipole = dipoles->getDipole(slot)) {
        const host::DisplayOverride display(*dipole, 9, RGB(1, 2, 3));
        dipole->setDimensionXYZ(5, 6, 7);
        then(*dipole);
      }
    }
  }
};

}  // namespace

TEST_F(DisplayOverride, RestoresEveryMemberBitByBit) {
  fill();
  const WholeSet before = wholeSet(*dipoles);
  changeEach([&](const CDipoleszq&) { EXPECT_FALSE(wholeSet(*dipoles) == before); });
  EXPECT_TRUE(isSame(wholeSet(*dipoles), before));
  EXPECT_EQ(std::bit_cast<std::uint64_t>(dipoles->getDipole(3)->m_size), 0x7ff8'0000'dead'beefU);
}

TEST_F(DisplayOverride, RestoresWhenAnExceptionPasses) {
  fill();
  const WholeSet before = wholeSet(*dipoles);
  EXPECT_THROW(changeEach([](const CDipoleszq&) { throw std::runtime_error("no surface"); }),
               std::runtime_error);
  EXPECT_TRUE(isSame(wholeSet(*dipoles), before));
}

TEST_F(DisplayOverride, ShowsWhatItIsTold) {
  fill();
  changeEach([](const CDipoleszq& dipole) {
    EXPECT_EQ(dipole.m_display, 1);
    EXPECT_EQ(dipole.m_size, 9.0);
    EXPECT_EQ(dipole.m_color, RGB(1, 2, 3));
  });
}
