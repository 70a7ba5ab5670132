// "Name Selected..." and "Color Selected..." while they wait: the editors rest, and whatever happens to list
// and set, the command stays with the dipoles for which it was given.
#include <gtest/gtest.h>

#include "tests/ui/windows/Host.h"
#include "ui/resource.h"

namespace {

struct Question {
  UINT command;
  const char* caption;
};

class ManagerAsking : public testing::TestWithParam<Question> {
 protected:
  // Rows 1 and 3 of five are selected, then the command is given and answered, with OK, after the step.
  void ask(const Robot::Step& meanwhile, int button = IDOK) {
    host.click(1);
    host.click(3, true);
    host.forget();
    Robot robot;
    robot.when(GetParam().caption, [&](HWND dialog) {
      answer(dialog);
      meanwhile(dialog);
      if (::IsWindow(dialog) != FALSE) {
        press(dialog, button);
      }
    });
    host.choose(GetParam().command);
  }
  // The numbers of the dipoles that the command has reached.
  std::vector<int> changed() const {
    std::vector<int> numbers;
    for (int slot = 0; slot < host.face->m_totalDipoles; ++slot) {
      const CDipoleszq& dipole = host.dipole(slot);
      if (GetParam().command == ID_DIPOLE_NAME_SELECTED ? dipole.m_label == _T("given")
                                                        : dipole.m_color == RGB(1, 2, 255)) {
        numbers.push_back(dipole.m_number);
      }
    }
    return numbers;
  }

  Host host{5};

 private:
  static void answer(HWND dialog) {
    if (GetParam().command == ID_DIPOLE_NAME_SELECTED) {
      type(dialog, IDC_NEW_NAME, "given");
      return;
    }
    type(dialog, 706, "1");  // red, green and blue of the system's dialog
    type(dialog, 707, "2");
    type(dialog, 708, "255");
  }
};

using Numbers = std::vector<int>;

TEST_P(ManagerAsking, EditorsRestMeanwhile) {
  host.openManager();
  host.choose(ID_DIPOLE_EDIT);
  const HWND managers = host.editor();
  ::ShowWindow(managers, SW_HIDE);
  host.face->dipoleEdit(&host.window);
  const HWND hosts = host.editor();
  ::ShowWindow(managers, SW_SHOW);
  ASSERT_NE(managers, hosts);
  ask([&](HWND) {
    EXPECT_FALSE(::IsWindowEnabled(managers));
    EXPECT_FALSE(::IsWindowEnabled(hosts));
  });
  EXPECT_TRUE(::IsWindowEnabled(managers));
  EXPECT_TRUE(::IsWindowEnabled(hosts));
  EXPECT_EQ(changed(), (Numbers{2, 4}));
}

TEST_P(ManagerAsking, EditorsWakeAfterCancel) {
  host.openManager();
  host.choose(ID_DIPOLE_EDIT);
  ask([](HWND) {}, IDCANCEL);
  EXPECT_TRUE(::IsWindowEnabled(host.editor()));
}

TEST_P(ManagerAsking, AnEditorThatRestedBeforeGoesOnResting) {
  host.openManager();
  host.choose(ID_DIPOLE_EDIT);
  ::EnableWindow(host.editor(), FALSE);
  ask([](HWND) {});
  EXPECT_FALSE(::IsWindowEnabled(host.editor()));
}

TEST_P(ManagerAsking, AnswersAreForTheSelectedEvenIfTheListIsFilledAgain) {
  host.openManager();
  ask([&](HWND) { host.face->updateDipoleList(); });
  EXPECT_EQ(changed(), (Numbers{2, 4}));
  EXPECT_EQ(host.updates(), 1);
}

TEST_P(ManagerAsking, AnswersFollowTheSelectedWhenTheSetIsSorted) {
  host.openManager();
  host.dipole(4).m_latency = 0.1;  // to the front
  ask([&](HWND) {
    host.face->sortDipoles(1);
    host.face->updateDipoleList();
  });
  EXPECT_EQ(host.dipole(0).m_number, 5);
  EXPECT_EQ(changed(), (Numbers{2, 4}));
}

TEST_P(ManagerAsking, AnswersFollowTheSelectedWhenAnotherOneIsDeleted) {
  host.openManager();
  ask([&](HWND) { host.face->deleteDipole(0, 1); });
  EXPECT_EQ(changed(), (Numbers{2, 4}));
}

TEST_P(ManagerAsking, NothingChangesWhenASelectedOneIsGone) {
  host.openManager();
  ask([&](HWND) {
    host.face->deleteDipole(1, 1);
    host.face->updateDipoleList();
  });
  EXPECT_EQ(host.numbers(), (Numbers{1, 3, 4, 5}));
  EXPECT_EQ(changed(), Numbers{});
  EXPECT_EQ(host.updates(), 1);
}

TEST_P(ManagerAsking, ANewDipoleIsNotTakenForOneThatIsGone) {
  host.openManager();
  ask([&](HWND) {
    for (int slot = host.face->m_totalDipoles - 1; slot >= 0; --slot) {
      host.face->deleteDipole(slot, 1);
    }
    host.addDipoles(40);  // in memory that has just become free, were it not held
  });
  EXPECT_EQ(changed(), Numbers{});
}

TEST_P(ManagerAsking, SelectingOthersMeanwhileChangesNothingAboutIt) {
  host.openManager();
  ask([&](HWND) { host.selectOnly(0); });
  EXPECT_EQ(changed(), (Numbers{2, 4}));
}

// Only those rest that were open before; whatever such an editor does, the command keeps to its dipoles.
TEST_P(ManagerAsking, AnEditorThatIsOpenedMeanwhileWorks) {
  host.openManager();
  ask([&](HWND) {
    host.face->dipoleEdit(&host.window);
    const HWND editor = host.editor();
    EXPECT_TRUE(::IsWindowEnabled(editor));
    type(editor, IDC_EDITOR_SIZE, "8");
    press(editor, IDC_EDITOR_APPLY);
    press(editor, IDC_EDITOR_ADD);
  });
  EXPECT_EQ(host.dipole(3).m_size, 8.0);
  EXPECT_EQ(host.face->getTotalDipoles(), 6U);
  EXPECT_EQ(changed(), (Numbers{2, 4}));
  EXPECT_EQ(host.updates(), 1);
}

TEST_P(ManagerAsking, NothingChangesWhenAnEditorThatIsOpenedMeanwhileDeletesASelectedOne) {
  host.openManager();
  ask([&](HWND) {
    host.face->dipoleEdit(&host.window);
    press(host.editor(), IDC_EDITOR_DELETE);  // the current one, of row 3
  });
  EXPECT_EQ(host.numbers(), (Numbers{1, 2, 3, 5}));
  EXPECT_EQ(changed(), Numbers{});
  EXPECT_EQ(host.updates(), 1);
}

INSTANTIATE_TEST_SUITE_P(NameAndColor, ManagerAsking,
                         testing::Values(Question{ID_DIPOLE_NAME_SELECTED, "Set Name"},
                                         Question{ID_DIPOLE_COLOR_SELECTED, "Color"}));

}  // namespace
