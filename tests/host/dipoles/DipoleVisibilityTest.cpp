// Which dipoles are shown, against a plain model of the rules.
#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <random>

#include "host/dipoles/DipoleVisibility.h"
#include "tests/host/panes/PaneFixture.h"

namespace {

using host::Visibility;
using host::VisibleCount;

constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

struct DipoleVisibility : testing::Test, PaneFixture {
  Visibility seen(int slot) const {
    return visibilityOf(*dipoles, slot, *dipoles->getDipole(slot), settings);
  }
};

}  // namespace

TEST_F(DipoleVisibility, ADipoleIsShownAtFirst) {
  add(1, 2, 3);
  EXPECT_EQ(seen(0), Visibility::shown);
}

TEST_F(DipoleVisibility, ItsOwnSwitchHidesItEverywhere) {
  add(1, 2, 3).m_show = 0;
  EXPECT_EQ(seen(0), Visibility::switchedOff);
}

TEST_F(DipoleVisibility, ADipoleThatItsFileSwitchesOffOnSlicesIsShownNowhere) {
  for (const int state : {0, 2, -1}) {
    add(1, 2, 3).m_display = state;
    EXPECT_EQ(seen(dipoles->m_totalDipoles - 1), Visibility::switchedOff) << state;
  }
}

TEST_F(DipoleVisibility, TheSwitchOfTheSetHidesAll) {
  add(1, 2, 3);
  dipoles->setShowDipoleArray(0);
  EXPECT_EQ(seen(0), Visibility::switchedOff);
}

TEST_F(DipoleVisibility, TheCurrentOneAloneIsShownEvenWhenItIsSwitchedOff) {
  add(1, 2, 3);
  add(4, 5, 6).m_show = 0;
  add(7, 8, 9);
  dipoles->m_currentDipole = 1;
  dipoles->m_showCurrentDipoleOnly = 1;
  EXPECT_EQ(seen(0), Visibility::switchedOff);
  EXPECT_EQ(seen(1), Visibility::shown);
  EXPECT_EQ(seen(2), Visibility::switchedOff);
}

TEST_F(DipoleVisibility, TheLatencyWindowCountsWhileItsSwitchIsOn) {
  settings.latency = {100.0, 110.0};
  for (const double latency : {99.9, 100.0, 105.0, 110.0, 110.1, notANumber}) {
    add(1, 2, 3).m_latency = latency;
  }
  EXPECT_EQ(countVisible(*dipoles, settings), (VisibleCount{6, 6, 0, 0, 0}));
  dipoles->setShowDipoleLatencySelected(1);
  const Visibility out = Visibility::filtered;
  const Visibility in = Visibility::shown;
  const Visibility wanted[] = {out, in, in, in, out, out};
  for (int slot = 0; slot < 6; ++slot) {
    EXPECT_EQ(seen(slot), wanted[slot]) << slot;
  }
}

TEST_F(DipoleVisibility, TheFilterHides) {
  settings.filter.fitError.most = 10.0;
  add(1, 2, 3).m_fitError = 10.0;
  add(1, 2, 3).m_fitError = 10.1;
  EXPECT_EQ(seen(0), Visibility::shown);
  EXPECT_EQ(seen(1), Visibility::filtered);
}

TEST_F(DipoleVisibility, WithoutAPlaceADipoleIsNowhere) {
  add(1, notANumber, 3);
  add(1, 2, std::numeric_limits<double>::infinity());
  add(-100'001.0, 2, 3);
  add(-100'000.0, 2, 3);
  EXPECT_EQ(countVisible(*dipoles, settings), (VisibleCount{4, 1, 0, 0, 3}));
}

TEST_F(DipoleVisibility, EmptySlotsAreNoDipoles) {
  add(1, 2, 3);
  add(1, 2, 3);
  dipoles->deleteDipole(0, 0);
  EXPECT_EQ(dipoles->m_totalDipoles, 2);
  EXPECT_EQ(countVisible(*dipoles, settings), (VisibleCount{1, 1, 0, 0, 0}));
}

TEST_F(DipoleVisibility, CountsAgreeWithAPlainModel) {
  std::mt19937 random(3);
  const auto coin = [&](int sides) { return static_cast<int>(random() % static_cast<unsigned>(sides)); };
  for (int round = 0; round < 300; ++round) {
    dipoles->cleanDipoles();
    settings = {};
    const int total = 1 + coin(12);
    for (int i = 0; i < total; ++i) {
      CDipoleszq& dipole = add(coin(9) == 0 ? notANumber : 5.0, 0, 0);
      dipole.m_show = coin(3) == 0 ? 0 : 1;
      dipole.m_display = coin(3);
      dipole.m_latency = 90.0 + coin(30);
      dipole.m_fitError = coin(20);
    }
    dipoles->m_currentDipole = coin(total + 1) - 1;
    dipoles->m_showCurrentDipoleOnly = coin(4) == 0 ? 1 : 0;
    dipoles->setShowDipoleArray(coin(5) == 0 ? 0 : 1);
    dipoles->setShowDipoleLatencySelected(coin(2));
    settings.latency = {95.0, 110.0};
    if (coin(2) == 0) {
      settings.filter.fitError.most = 12.0;
    }

    VisibleCount wanted{total, 0, 0, 0, 0};
    for (int i = 0; i < total; ++i) {
      const CDipoleszq& dipole = *dipoles->getDipole(i);
      bool isOn = dipoles->m_showDipoleArray != 0 && dipole.m_display == 1;
      if (dipoles->m_showCurrentDipoleOnly != 0) {
        isOn = isOn && i == dipoles->m_currentDipole;
      } else {
        isOn = isOn && dipole.m_show != 0;
      }
      bool passes = !settings.filter.fitError.most || dipole.m_fitError <= 12.0;
      if (dipoles->m_showDipoleLatencySelected != 0 &&
          (dipole.m_latency < 95.0 || dipole.m_latency > 110.0)) {
        passes = false;
      }
      if (!isOn) {
        ++wanted.switchedOff;
      } else if (!passes) {
        ++wanted.filtered;
      } else if (std::isnan(dipole.m_location[0])) {
        ++wanted.nowhere;
      } else {
        ++wanted.shown;
      }
    }
    ASSERT_EQ(countVisible(*dipoles, settings), wanted) << "round " << round;
  }
}
