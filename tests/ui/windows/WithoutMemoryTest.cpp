// Memory that runs out at any point of a command: the user is told, list and set go on together, and the host
// hears of it once.
#include <gtest/gtest.h>

#include "tests/support/FailingNew.h"
#include "tests/support/ScriptedOperator.h"
#include "tests/ui/windows/Host.h"
#include "ui/resource.h"

namespace {

using Texts = std::vector<std::string>;

// What may be said, and how often.
bool onlyTellsOfMemory(const Texts& texts) {
  return texts.size() <= 1 && (texts.empty() || texts[0] == "Not enough memory");
}

// The rows are those of some moment: each says which dipole it is, and all of them can be read.
void expectReadableRows(const Host& host) {
  for (int row = 0; row < host.rows(); ++row) {
    EXPECT_NE(host.cell(row, 0), "") << row;
    EXPECT_LE(host.image(row), 1) << row;
  }
}

class CommandWithoutMemory : public testing::TestWithParam<UINT> {
 protected:
  // Returns whether the n-th allocation was asked for.
  static bool failAt(UINT command, int nth) {
    ScriptedOperator script;
    script.answerColor(RGB(1, 2, 3));
    Host host(6);
    host.openManager();
    host.click(1);
    host.click(3, true);
    host.forget();
    bool failed = false;
    {
      const FailingNew failing(nth);
      ::SendMessageW(host.manager(), WM_COMMAND, command, 0);
      failed = failing.failed();
    }
    EXPECT_EQ(host.updates(), 1) << nth;
    EXPECT_TRUE(onlyTellsOfMemory(script.texts())) << nth << testing::PrintToString(script.texts());
    EXPECT_TRUE(failed || script.texts().empty()) << nth;
    expectReadableRows(host);
    host.face->updateDipoleList();
    EXPECT_EQ(host.rows(), static_cast<int>(host.face->getTotalDipoles())) << nth;
    return failed;
  }
};

TEST_P(CommandWithoutMemory, TellsTheHostOnceAndKeepsListAndSetTogether) {
  int points = 0;
  while (failAt(GetParam(), points + 1) && points < 300) {
    ++points;
  }
  EXPECT_GT(points, 0);
  EXPECT_LT(points, 300);
  RecordProperty("points", points);
}

INSTANTIATE_TEST_SUITE_P(Manager, CommandWithoutMemory,
                         testing::Values(ID_DIPOLE_DELETE, ID_DIPOLE_SHOW, ID_DIPOLE_HIDE, ID_DIPOLE_SHOW_ALL,
                                         ID_DIPOLE_COLOR_SELECTED, ID_DIPOLE_AVERAGE_AS,
                                         ID_DIPOLE_AVERAGE_ZIP));

TEST(ColorOfTheEditorWithoutMemory, IsToldAndTheHostRepaints) {
  int points = 0;
  for (bool failed = true; failed && points < 300; ++points) {
    ScriptedOperator script;
    script.answerColor(RGB(1, 2, 3));
    Host host(2);
    host.face->dipoleEdit(&host.window);
    pump();
    host.forget();
    const HWND editor = host.editor();
    const COLORREF before = host.dipole(0).m_color;
    {
      const FailingNew failing(points + 1);
      ::SendMessageW(editor, WM_COMMAND, IDC_EDITOR_COLOR, 0);
      failed = failing.failed();
    }
    EXPECT_EQ(script.texts(), failed ? Texts{"Not enough memory"} : Texts{}) << points;
    EXPECT_EQ(host.dipole(0).m_color, failed ? before : RGB(1, 2, 3)) << points;
    EXPECT_TRUE(host.wasRepainted()) << points;
  }
  EXPECT_GT(points, 1);
  EXPECT_LT(points, 300);
}

TEST(OpeningWithoutMemory, ThrowsNothingAtTheHostAndCanBeTriedAgain) {
  int points = 0;
  for (bool failed = true; failed && points < 600; ++points) {
    ScriptedOperator script;
    Host host(3);
    {
      const FailingNew failing(points + 1);
      host.face->showDipoleList(&host.window, nullptr);
      failed = failing.failed();
    }
    EXPECT_TRUE(onlyTellsOfMemory(script.texts())) << points;
    ASSERT_NE(host.face->showDipoleList(&host.window, nullptr), nullptr) << points;
    pump();
    EXPECT_EQ(host.rows(), 3) << points;
    EXPECT_EQ(host.heading(10), "Label") << points;
  }
  EXPECT_GT(points, 10);
  EXPECT_LT(points, 600);
}

}  // namespace
