// "Average As..." and "Average Zip...": the values are computed here once more.
#include <algorithm>
#include <gtest/gtest.h>

#include "tests/ui/windows/Host.h"
#include "ui/resource.h"

namespace {

using Rows = std::vector<int>;
using Texts = std::vector<std::string>;

constexpr auto averageCommands = {ID_DIPOLE_AVERAGE_AS, ID_DIPOLE_AVERAGE_ZIP};

void place(CDipoleszq& dipole, double x, double y, double z) {
  dipole.m_location[0] = x;
  dipole.m_location[1] = y;
  dipole.m_location[2] = z;
}

void select(Host& host, const Rows& rows) {
  bool further = false;
  for (const int row : rows) {
    host.click(row, further);
    further = true;
  }
  host.forget();
}

double extent(double first, double second, double third) {
  const auto [least, most] = std::minmax({0.0, first, second, third});
  return most - least;
}

TEST(ManagerAverage, AsKeepsTheDipolesAndAddsTheirMean) {
  Host host(5);
  host.openManager();
  select(host, {0, 2, 4});
  host.choose(ID_DIPOLE_AVERAGE_AS);
  ASSERT_EQ(host.face->getTotalDipoles(), 6U);
  EXPECT_EQ(host.labels(), (Texts{"d1", "d2", "d3", "d4", "d5", "AverageDipole_3"}));
  EXPECT_EQ(host.numbers(), (Rows{1, 2, 3, 4, 5, 0}));
  EXPECT_EQ(host.face->getCurrentDipoleID(), 5);
  EXPECT_EQ(host.updates(), 1);
  EXPECT_EQ(host.cell(5, 10), "AverageDipole_3");
  EXPECT_EQ(host.selectedRows(), Rows{});
  const CDipoleszq& mean = host.dipole(5);
  EXPECT_DOUBLE_EQ(mean.m_location[0], (1.0 + 3.0 + 5.0) / 3.0);
  EXPECT_DOUBLE_EQ(mean.m_location[1], (10.0 + 30.0 + 50.0) / 3.0);
  EXPECT_DOUBLE_EQ(mean.m_location[2], (100.0 + 300.0 + 500.0) / 3.0);
  EXPECT_DOUBLE_EQ(mean.m_latency, (0.5 + 1.5 + 2.5) / 3.0);
  EXPECT_DOUBLE_EQ(mean.m_moment, (0.125 + 0.375 + 0.625) / 3.0);
  EXPECT_DOUBLE_EQ(mean.m_fitError, (0.25 + 0.75 + 1.25) / 3.0);
  EXPECT_DOUBLE_EQ(mean.m_size, (5.0 / 2.0 + 50.0 / 2.0 + 500.0 / 2.0) / 3.0);
}

TEST(ManagerAverage, ZipReplacesTheDipolesByTheirMean) {
  Host host(5);
  place(host.dipole(1), -4.0, 6.0, 0.5);
  place(host.dipole(3), 8.0, 2.0, -1.5);
  host.dipole(3).m_orientation[1] = 0.5;
  host.openManager();
  select(host, {1, 3});
  host.choose(ID_DIPOLE_AVERAGE_ZIP);
  ASSERT_EQ(host.labels(), (Texts{"d1", "d3", "d5", "AverageDipole2"}));
  EXPECT_EQ(host.rows(), 4);
  EXPECT_EQ(host.face->getCurrentDipoleID(), 3);
  EXPECT_EQ(host.updates(), 1);
  const CDipoleszq& mean = host.dipole(3);
  EXPECT_DOUBLE_EQ(mean.m_location[0], 2.0);
  EXPECT_DOUBLE_EQ(mean.m_location[1], 4.0);
  EXPECT_DOUBLE_EQ(mean.m_location[2], -0.5);
  EXPECT_DOUBLE_EQ(mean.m_orientation[0], 1.0);
  EXPECT_DOUBLE_EQ(mean.m_orientation[1], 0.25);
  EXPECT_DOUBLE_EQ(mean.m_orientation[2], 1.0);
  const double size = (extent(-4, 8, 0) * 0.5 + extent(6, 2, 0) * 0.5 + extent(0.5, -1.5, 0) * 0.5) / 3.0;
  EXPECT_DOUBLE_EQ(mean.m_size, size);
}

TEST(ManagerAverage, BoxHoldsTheOrigin) {
  for (const UINT command : averageCommands) {
    Host host(2);
    place(host.dipole(0), 10.0, 0.0, 0.0);
    place(host.dipole(1), 20.0, 0.0, 0.0);
    host.openManager();
    host.key('A', true);
    host.choose(command);
    EXPECT_DOUBLE_EQ(host.face->getCurrentDipole()->m_size, 10.0 / 3.0);
    EXPECT_DOUBLE_EQ(host.face->getCurrentDipole()->m_location[0], 15.0);
  }
}

TEST(ManagerAverage, OtherMembersAreThoseOfANewDipole) {
  Host host(2);
  for (const int slot : {0, 1}) {
    host.dipole(slot).m_show = 0;
    host.dipole(slot).m_orientationLength = 99.0;
    host.dipole(slot).setColorValue(RGB(1, 2, 3));
  }
  host.openManager();
  host.key('A', true);
  host.choose(ID_DIPOLE_AVERAGE_AS);
  const CDipoleszq fresh;
  const CDipoleszq& mean = host.dipole(2);
  EXPECT_EQ(mean.m_show, fresh.m_show);
  EXPECT_EQ(mean.m_orientationLength, fresh.m_orientationLength);
  EXPECT_EQ(mean.m_color, fresh.m_color);
  EXPECT_EQ(mean.m_id, fresh.m_id);
  EXPECT_FALSE(mean.m_selected);
}

TEST(ManagerAverage, OneDipoleIsItsOwnMean) {
  for (const UINT command : averageCommands) {
    Host host(3);
    host.openManager();
    select(host, {1});
    host.choose(command);
    const CDipoleszq& mean = *host.face->getCurrentDipole();
    EXPECT_EQ(mean.m_location[2], 200.0);
    EXPECT_EQ(mean.m_latency, 1.0);
    EXPECT_EQ(host.face->getTotalDipoles(), command == ID_DIPOLE_AVERAGE_AS ? 4U : 3U);
  }
}

TEST(ManagerAverage, OfNothingAddsNothing) {
  for (const UINT command : averageCommands) {
    Host host(3);
    host.openManager();
    host.choose(command);
    EXPECT_EQ(host.numbers(), (Rows{1, 2, 3}));
    EXPECT_EQ(host.updates(), 1);
  }
}

TEST(ManagerAverage, ZipOfNothingClosesTheGapsOfTheSet) {
  Host host(4);
  host.openManager();
  host.face->deleteDipole(1, 0);
  host.choose(ID_DIPOLE_AVERAGE_ZIP);
  EXPECT_EQ(host.numbers(), (Rows{1, 3, 4}));
  EXPECT_EQ(host.column(0), (Texts{"1", "3", "4"}));
}

TEST(ManagerAverage, ZipOfNothingMakesTheFirstDipoleCurrentWhenNoneIs) {
  Host host(3);
  host.openManager();
  host.face->m_currentDipole = -1;
  host.choose(ID_DIPOLE_AVERAGE_ZIP);
  EXPECT_EQ(host.face->getCurrentDipoleID(), 0);
}

TEST(ManagerAverage, AsHasNoRoomInAFullTable) {
  Host host(30000);
  host.openManager();
  select(host, {0, 1});
  Robot robot;
  robot.when(messageCaption, answer("No more dipole space"));
  host.choose(ID_DIPOLE_AVERAGE_AS);
  EXPECT_EQ(host.face->getTotalDipoles(), 30000U);
  EXPECT_EQ(host.updates(), 1);
  EXPECT_EQ(host.labels().back(), "d30000");
}

TEST(ManagerAverage, ZipMakesRoomInAFullTable) {
  Host host(30000);
  host.openManager();
  host.key('A', true);
  host.forget();
  host.choose(ID_DIPOLE_AVERAGE_ZIP);
  EXPECT_EQ(host.labels(), Texts{"AverageDipole30000"});
  EXPECT_NEAR(host.dipole(0).m_location[0], 15000.5, 1e-6);
  EXPECT_EQ(host.rows(), 1);
  EXPECT_EQ(host.updates(), 1);
}

}  // namespace
