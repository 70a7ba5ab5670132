// The manager as a user meets it: rows, headings, choosing rows, commands.
#include <gtest/gtest.h>

#include "tests/ui/windows/Host.h"
#include "ui/resource.h"

namespace {

using Rows = std::vector<int>;

TEST(Manager, ListsEveryDipoleWithItsTexts) {
  Host host(3);
  host.openManager();
  ASSERT_EQ(host.rows(), 3);
  const std::vector<std::string> row = {"2",      "1.0000", "2.0000", "20.0000", "200.0000", "1.0000",
                                        "0.0000", "1.0000", "0.5000", "0.2500",  "d2"};
  for (int column = 0; column < 11; ++column) {
    EXPECT_EQ(host.cell(1, column), row[static_cast<std::size_t>(column)]) << column;
  }
}

TEST(Manager, ClickMakesTheDipoleCurrent) {
  Host host(5);
  host.openManager();
  host.click(3);
  EXPECT_EQ(host.selectedRows(), Rows{3});
  EXPECT_EQ(host.face->getCurrentDipoleID(), 3);
  EXPECT_EQ(host.selected(), Rows{3});
  EXPECT_TRUE(host.wasRepainted());
  host.click(1, true);
  EXPECT_EQ(host.selected(), (Rows{1, 3}));
  EXPECT_EQ(host.face->getCurrentDipoleID(), 3);
}

TEST(Manager, DeleteRemovesTheSelectedDipoles) {
  Host host(5);
  host.openManager();
  host.click(1);
  host.click(3, true);
  host.forget();
  host.choose(ID_DIPOLE_DELETE);
  EXPECT_EQ(host.numbers(), (Rows{1, 3, 5}));
  EXPECT_EQ(host.rows(), 3);
  EXPECT_EQ(host.selectedRows(), Rows{});
  EXPECT_EQ(host.updates(), 1);
}

TEST(Manager, DoubleClickOpensTheEditor) {
  Host host(5);
  host.openManager();
  host.doubleClick(2);
  ASSERT_NE(host.editor(), nullptr);
  EXPECT_EQ(captionOf(host.editor()), "Current dipole (Total dipoles):2(5)");
}

}  // namespace
