// The Dipole coordinate settings: the translation and rotation of the whole set.
#include <gtest/gtest.h>

#include "platform/Utf.h"
#include "tests/ui/windows/DialogUser.h"
#include "tests/ui/windows/Host.h"
#include "ui/resource.h"

namespace {

const std::string badNumber = "Please enter a number.";

// In the order in which they are read: y before x in the orientation.
const std::vector<int> fields = {
    IDC_COORDINATE_LOCATION_X,    IDC_COORDINATE_LOCATION_Y,    IDC_COORDINATE_LOCATION_Z,
    IDC_COORDINATE_ORIENTATION_Y, IDC_COORDINATE_ORIENTATION_X, IDC_COORDINATE_ORIENTATION_Z,
    IDC_COORDINATE_ROTATION_X,    IDC_COORDINATE_ROTATION_Y,    IDC_COORDINATE_ROTATION_Z};

class Coordinates : public testing::Test {
 protected:
  Coordinates() : host(2) {}

  void open() {
    EXPECT_EQ(host.face->setDipoleCoordinate(&host.window), 1);
    pump();
    host.forget();
    window = host.coordinates();
  }
  Texts texts() const {
    Texts shown;
    for (const int id : fields) {
      shown.push_back(textOf(window, id));
    }
    return shown;
  }
  void enter(int id, const std::string& text) {
    type(window, id, text);
    pump();
  }
  void push(int button) {
    press(window, button);
    pump();
  }
  std::vector<double> location() const {
    double x = -1.0;
    double y = -1.0;
    double z = -1.0;
    host.face->getAllDipoleLocational(x, y, z);
    return {x, y, z};
  }
  std::vector<double> rotation() const {
    double x = -1.0;
    double y = -1.0;
    double z = -1.0;
    host.face->getAllDipoleRotation(x, y, z);
    return {x, y, z};
  }

  Messages messages;
  Host host;
  HWND window = nullptr;
};

using Numbers = std::vector<double>;

TEST_F(Coordinates, ShowWhatTheCollectionHoldsAndNoOrientation) {
  host.face->setAllDipoleLocational(1.5, -2.0, 3.0);
  host.face->setAllDipoleRotation(10.0, 20.25, -30.0);
  open();
  EXPECT_EQ(captionOf(window), "Dipole coordinate settings");
  EXPECT_EQ(texts(), (Texts{"1.5", "-2", "3", "0", "0", "0", "10", "20.25", "-30"}));
}

TEST_F(Coordinates, ApplyMovesTheWholeSet) {
  open();
  enter(IDC_COORDINATE_LOCATION_X, "5");
  push(IDC_COORDINATE_APPLY);
  EXPECT_EQ(location(), (Numbers{5.0, 0.0, 0.0}));
  EXPECT_EQ(rotation(), (Numbers{0.0, 0.0, 0.0}));
  EXPECT_EQ(texts(), (Texts{"5", "0", "0", "0", "0", "0", "0", "0", "0"}));
  EXPECT_TRUE(host.wasRepainted());
  EXPECT_EQ(host.dipole(0).m_location[0], 1.0);  // the stored locations stay
  EXPECT_EQ(host.updates(), 0);
  EXPECT_TRUE(::IsWindowVisible(window));
}

TEST_F(Coordinates, ApplyTakesEveryFieldButTheOrientation) {
  open();
  const char* const entered[] = {"1", "2", "3", "99", "98", "97", "4", "5", "6"};
  for (std::size_t i = 0; i < fields.size(); ++i) {
    enter(fields[i], entered[i]);
  }
  push(IDC_COORDINATE_APPLY);
  EXPECT_EQ(location(), (Numbers{1.0, 2.0, 3.0}));
  EXPECT_EQ(rotation(), (Numbers{4.0, 5.0, 6.0}));
  EXPECT_EQ(texts(), (Texts{"1", "2", "3", "99", "98", "97", "4", "5", "6"}));
  EXPECT_EQ(host.dipole(0).m_orientation[0], 1.0);
}

TEST_F(Coordinates, FieldsShowTheNumbersAsTheyAreHeldAfterApply) {
  open();
  enter(IDC_COORDINATE_LOCATION_Y, " +5.50 ");
  push(IDC_COORDINATE_APPLY);
  EXPECT_EQ(textOf(window, IDC_COORDINATE_LOCATION_Y), "5.5");
}

TEST_F(Coordinates, UnchangedFieldsKeepEveryDigitAndTheHostsChanges) {
  host.face->setAllDipoleLocational(0.1 + 0.2, 1.0 / 3.0, 0.0);
  host.face->setAllDipoleRotation(2.0 / 3.0, 0.0, 0.0);
  open();
  host.face->m_sphereLocational.m_center[2] = 44.0;
  enter(IDC_COORDINATE_ROTATION_Z, "7");
  push(IDC_COORDINATE_APPLY);
  EXPECT_EQ(location(), (Numbers{0.1 + 0.2, 1.0 / 3.0, 44.0}));
  EXPECT_EQ(rotation(), (Numbers{2.0 / 3.0, 0.0, 7.0}));
  EXPECT_EQ(textOf(window, IDC_COORDINATE_LOCATION_Z), "44");
}

TEST_F(Coordinates, OkAndCancelHideAndApplyNothing) {
  for (const int button : {IDOK, IDCANCEL}) {
    open();
    enter(IDC_COORDINATE_LOCATION_X, "5");
    push(button);
    EXPECT_FALSE(::IsWindowVisible(window)) << button;
    EXPECT_TRUE(::IsWindow(window)) << button;
    EXPECT_EQ(location(), (Numbers{0.0, 0.0, 0.0})) << button;
    EXPECT_FALSE(host.wasRepainted()) << button;
  }
  open();
  EXPECT_EQ(textOf(window, IDC_COORDINATE_LOCATION_X), "0");
}

TEST_F(Coordinates, EnterAppliesAndEscapeHides) {
  open();
  enter(IDC_COORDINATE_LOCATION_X, "5");
  strike(window, IDC_COORDINATE_LOCATION_X, VK_RETURN);
  EXPECT_EQ(location(), (Numbers{5.0, 0.0, 0.0}));
  EXPECT_TRUE(::IsWindowVisible(window));
  strike(window, IDC_COORDINATE_LOCATION_X, VK_ESCAPE);
  EXPECT_FALSE(::IsWindowVisible(window));
}

TEST_F(Coordinates, MnemonicsReachTheLocation) {
  open();
  ::SetFocus(::GetDlgItem(window, IDCANCEL));
  const std::pair<char, int> letters[] = {
      {'x', IDC_COORDINATE_LOCATION_X}, {'y', IDC_COORDINATE_LOCATION_Y}, {'z', IDC_COORDINATE_LOCATION_Z}};
  for (const auto& [letter, id] : letters) {
    strikeMnemonic(window, letter);
    EXPECT_EQ(focusIn(window), id) << letter;
  }
  enter(IDC_COORDINATE_LOCATION_Z, "9");
  strikeMnemonic(window, 'a');
  EXPECT_EQ(location(), (Numbers{0.0, 0.0, 9.0}));
}

TEST_F(Coordinates, MistakesAreToldOneByOneYOfTheOrientationBeforeX) {
  open();
  for (const int id : fields) {
    enter(id, "x");
  }
  for (const int id : fields) {
    push(IDC_COORDINATE_APPLY);
    EXPECT_EQ(messages.take(), Texts{badNumber});
    EXPECT_EQ(focusIn(window), id);
    EXPECT_EQ(location(), (Numbers{0.0, 0.0, 0.0}));
    EXPECT_EQ(rotation(), (Numbers{0.0, 0.0, 0.0}));
    EXPECT_FALSE(host.wasRepainted());
    enter(id, "2");
  }
  push(IDC_COORDINATE_APPLY);
  EXPECT_EQ(location(), (Numbers{2.0, 2.0, 2.0}));
}

TEST_F(Coordinates, OkIsRefusedWithAMistake) {
  open();
  enter(IDC_COORDINATE_ROTATION_X, "wrong");
  push(IDOK);
  EXPECT_EQ(messages.take(), Texts{badNumber});
  EXPECT_TRUE(::IsWindowVisible(window));
  push(IDCANCEL);
  EXPECT_EQ(messages.take(), Texts{});
  EXPECT_FALSE(::IsWindowVisible(window));
}

TEST_F(Coordinates, UpdateDipoleSettingsRefreshesAVisibleWindowOnly) {
  EXPECT_EQ(host.face->updateDipoleSettings(), 0);
  open();
  host.face->setAllDipoleLocational(1.0, 2.0, 3.0);
  EXPECT_EQ(host.face->updateDipoleSettings(), 1);
  EXPECT_EQ(textOf(window, IDC_COORDINATE_LOCATION_Y), "2");
  push(IDCANCEL);
  host.face->setAllDipoleLocational(7.0, 8.0, 9.0);
  EXPECT_EQ(host.face->updateDipoleSettings(), 1);
  EXPECT_EQ(textOf(window, IDC_COORDINATE_LOCATION_Y), "2");
  open();
  EXPECT_EQ(textOf(window, IDC_COORDINATE_LOCATION_Y), "8");
}

TEST_F(Coordinates, ApplyWithoutAHostWindowIsAllowed) {
  host.face->setDipoleCoordinate(nullptr);
  window = host.coordinates();
  enter(IDC_COORDINATE_LOCATION_X, "5");
  push(IDC_COORDINATE_APPLY);
  EXPECT_EQ(location(), (Numbers{5.0, 0.0, 0.0}));
}

TEST_F(Coordinates, TheCollectionMayGoWhileAMistakeIsTold) {
  open();
  enter(IDC_COORDINATE_LOCATION_X, "wrong");
  messages.meanwhile([&] { host.face.reset(); });
  push(IDC_COORDINATE_APPLY);
  EXPECT_EQ(messages.take(), Texts{badNumber});
  EXPECT_FALSE(::IsWindow(window));
}

}  // namespace
