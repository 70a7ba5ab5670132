// Memory that runs out at any point of a command: the user is told, list and set go on together, and the host
// hears of it once.
#include <algorithm>
#include <gtest/gtest.h>
#include <iterator>

#include "tests/support/FailingNew.h"
#include "tests/support/ScriptedOperator.h"
#include "tests/support/Thrown.h"
#include "tests/ui/windows/DialogUser.h"
#include "tests/ui/windows/Host.h"
#include "ui/resource.h"

namespace {

const std::string longLabel = "a label that is too long to be kept without asking for memory";

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

// What a user does besides commands of the menu. The editor is the manager's; it shows dipole 1, and a
// location and a label have been typed there.
struct Step {
  const char* name;
  void (*act)(Host& host, HWND editor);
};

void PrintTo(const Step& step, std::ostream* stream) {
  *stream << step.name;
}

void push(HWND editor, int button) {
  ::SendMessageW(editor, WM_COMMAND, static_cast<WPARAM>(button), 0);
}

class StepWithoutMemory : public testing::TestWithParam<Step> {
 protected:
  static constexpr int typedAt = 1;

  // Returns whether the n-th allocation was asked for.
  static bool failAt(int nth, Lasting lasting) {
    ScriptedOperator script;
    Host host(4);
    host.openManager();
    host.choose(ID_DIPOLE_EDIT);
    host.click(typedAt);
    const HWND editor = host.editor();
    type(editor, IDC_EDITOR_LOCATION_X, "77");
    type(editor, IDC_EDITOR_LABEL, longLabel);
    bool failed = false;
    {
      const FailingNew failing(nth, lasting);
      // The loop that fetches messages may run out of memory too, which is its program's own affair. A
      // handler from which an exception came would have told of it in other words, or ended the program.
      runsOutOfMemory([&] { GetParam().act(host, editor); });
      failed = failing.failed();
    }
    const Texts told = script.texts();
    EXPECT_TRUE(lasting == Lasting::fromThenOn || onlyTellsOfMemory(told)) << nth;
    EXPECT_EQ(std::count(told.begin(), told.end(), "Not enough memory"), std::ssize(told)) << nth;
    EXPECT_TRUE(failed || told.empty()) << nth;
    expectReadableRows(host);
    expectTypedInNoOtherDipole(host, editor, nth);
    host.face->updateDipoleList();
    EXPECT_EQ(host.rows(), static_cast<int>(host.face->getTotalDipoles())) << nth;
    return failed;
  }

 private:
  static void expectTypedInNoOtherDipole(const Host& host, HWND editor, int nth) {
    const CDipoleszq* const typedFor = host.face->getDipole(typedAt);
    for (int i = 0; i < 2; ++i) {
      push(editor, IDC_EDITOR_APPLY);
    }
    for (int slot = 0; slot < host.face->m_totalDipoles; ++slot) {
      const CDipoleszq& dipole = host.dipole(slot);
      EXPECT_TRUE(&dipole == typedFor || dipole.m_location[0] != 77.0) << nth << " in " << slot;
      EXPECT_TRUE(&dipole == typedFor || host.labels()[static_cast<std::size_t>(slot)] != longLabel)
          << nth << " in " << slot;
    }
  }
};

TEST_P(StepWithoutMemory, EndsWithAWordAndWhatWasTypedGoesToNoOtherDipole) {
  int points = 0;
  while (failAt(points + 1, Lasting::once) && points < 600) {
    ++points;
  }
  EXPECT_GT(points, 0);
  EXPECT_LT(points, 600);
  RecordProperty("points", points);
  for (int point = 1; point <= points; point *= 2) {
    failAt(point, Lasting::fromThenOn);
  }
}

constexpr Step steps[] = {
    {"Row", [](Host& host, HWND) { host.click(2); }},
    {"RowWithTheCurrentOneShown",
     [](Host& host, HWND) {
       host.choose(ID_DIPOLE_SHOW_CURRENT_ONLY);
       host.click(2);
     }},
    {"Range", [](Host& host, HWND) { host.click(3, false, true); }},
    {"Arrow", [](Host& host, HWND) { host.key(VK_DOWN); }},
    {"ArrowAtTheEnd",
     [](Host& host, HWND) {
       host.key(VK_END);
       host.key(VK_DOWN);
     }},
    {"All", [](Host& host, HWND) { host.key('A', true); }},
    {"Heading", [](Host& host, HWND) { host.clickHeading(1); }},
    {"ShowCurrentOnly", [](Host& host, HWND) { host.choose(ID_DIPOLE_SHOW_CURRENT_ONLY); }},
    {"Edit", [](Host& host, HWND) { host.choose(ID_DIPOLE_EDIT); }},
    {"Next", [](Host&, HWND editor) { push(editor, IDC_EDITOR_NEXT); }},
    {"Previous", [](Host&, HWND editor) { push(editor, IDC_EDITOR_PREVIOUS); }},
    {"Apply", [](Host&, HWND editor) { push(editor, IDC_EDITOR_APPLY); }},
    {"Exit", [](Host&, HWND editor) { push(editor, IDOK); }},
    {"Add", [](Host&, HWND editor) { push(editor, IDC_EDITOR_ADD); }},
    {"Delete", [](Host&, HWND editor) { push(editor, IDC_EDITOR_DELETE); }},
    {"ShowOrientation", [](Host&, HWND editor) { push(editor, IDC_EDITOR_SHOW_ORIENTATION); }},
    {"Activation", [](Host&, HWND editor) { ::SendMessageW(editor, WM_ACTIVATE, WA_ACTIVE, 0); }},
};

INSTANTIATE_TEST_SUITE_P(User, StepWithoutMemory, testing::ValuesIn(steps),
                         [](const auto& tested) { return std::string(tested.param.name); });

TEST(ArrowWithoutMemory, TakesTheCurrentDipoleWhereverTheFocusGoes) {
  bool failed = true;
  for (int nth = 1; failed; ++nth) {
    const ScriptedOperator script;
    Host host(4);
    host.openManager();
    host.click(1);
    {
      const FailingNew failing(nth);
      host.key(VK_DOWN);
      failed = failing.failed();
    }
    EXPECT_EQ(host.face->getCurrentDipoleID(), 2) << nth;
    EXPECT_EQ(host.focusedRow(), 2) << nth;
    ASSERT_LT(nth, 100);
  }
}

// Found by a user who goes on after the message: nothing brings the editor to the front meanwhile.
TEST(NextWithoutMemory, LeavesNoCaptionAboveTheFieldsOfAnotherDipole) {
  ScriptedOperator script;
  Host host(3);
  host.face->dipoleEdit(&host.window);
  pump();
  const HWND editor = host.editor();
  {
    const FailingNew failing(1, Lasting::fromThenOn);
    push(editor, IDC_EDITOR_NEXT);
  }
  EXPECT_FALSE(script.texts().empty());
  EXPECT_EQ(captionOf(editor), "Current dipole (Total dipoles):0(3)");
  EXPECT_EQ(longTextOf(editor, IDC_EDITOR_LABEL), "d1");
  push(editor, IDC_EDITOR_APPLY);  // shows it first
  EXPECT_EQ(captionOf(editor), "Current dipole (Total dipoles):1(3)");
  EXPECT_EQ(longTextOf(editor, IDC_EDITOR_LABEL), "d2");
  EXPECT_EQ(host.labels(), (Texts{"d1", "d2", "d3"}));
}

// A dipole of which only some fields were shown is shown whole as soon as there is memory:
// what stands there is not what a user has typed.
TEST(NextWithoutMemory, IsCaughtUpWithByTheNextUpdate) {
  bool failed = true;
  for (int nth = 1; failed; ++nth) {
    const ScriptedOperator script;
    Host host(2);
    for (double& value : host.dipole(1).m_location) {
      value = 1.0 / 3.0;  // whose text needs memory
    }
    host.face->dipoleEdit(&host.window);
    pump();
    const HWND editor = host.editor();
    {
      const FailingNew failing(nth, Lasting::fromThenOn);
      push(editor, IDC_EDITOR_NEXT);
      failed = failing.failed();
    }
    host.face->updateDipoleEditor();
    EXPECT_EQ(captionOf(editor), "Current dipole (Total dipoles):1(2)") << nth;
    EXPECT_EQ(longTextOf(editor, IDC_EDITOR_LOCATION_X), "0.333333333333333") << nth;
    EXPECT_EQ(longTextOf(editor, IDC_EDITOR_LOCATION_Z), "0.333333333333333") << nth;
    EXPECT_EQ(longTextOf(editor, IDC_EDITOR_LABEL), "d2") << nth;
    ASSERT_LT(nth, 300);
  }
}

TEST(ApplyWithoutMemory, StoresAllOrNothingAndRepaintsTheHost) {
  bool failed = true;
  for (int nth = 1; failed; ++nth) {
    const ScriptedOperator script;
    Host host(2);
    host.face->dipoleEdit(&host.window);
    pump();
    const HWND editor = host.editor();
    type(editor, IDC_EDITOR_LOCATION_X, "77");
    type(editor, IDC_EDITOR_LOCATION_Z, "88");
    type(editor, IDC_EDITOR_LABEL, longLabel);
    host.forget();
    {
      const FailingNew failing(nth);
      push(editor, IDC_EDITOR_APPLY);
      failed = failing.failed();
    }
    const CDipoleszq& dipole = host.dipole(0);
    const bool isStored = dipole.m_location[0] == 77.0;
    EXPECT_EQ(dipole.m_location[2], isStored ? 88.0 : 100.0) << nth;
    EXPECT_EQ(host.labels()[0], isStored ? longLabel : "d1") << nth;
    EXPECT_TRUE(host.wasRepainted()) << nth;
    ASSERT_LT(nth, 300);
  }
}

TEST(OpeningWithoutMemory, OfTheEditorsThrowsNothingAndCanBeTriedAgain) {
  bool failed = true;
  for (int nth = 1; failed; ++nth) {
    const ScriptedOperator script;
    Host host(3);
    {
      const FailingNew failing(nth);
      host.face->dipoleEdit(&host.window);
      host.face->setDipoleCoordinate(&host.window);
      failed = failing.failed();
    }
    EXPECT_TRUE(onlyTellsOfMemory(script.texts())) << nth;
    host.face->dipoleEdit(&host.window);
    pump();
    ASSERT_NE(host.editor(), nullptr) << nth;
    EXPECT_EQ(longTextOf(host.editor(), IDC_EDITOR_LABEL), "d1") << nth;
    EXPECT_EQ(longTextOf(host.editor(), IDC_EDITOR_LOCATION_Z), "100") << nth;
    ASSERT_LT(nth, 600);
  }
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
