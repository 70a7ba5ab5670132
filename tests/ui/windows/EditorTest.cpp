// The Dipole Edit dialog: what it shows, and what "Apply" and "Exit" take over.
#include "tests/ui/windows/EditorTest.h"

#include <cmath>
#include <limits>

namespace {

const std::vector<int> numberFields = {IDC_EDITOR_SIZE,          IDC_EDITOR_LOCATION_X,
                                       IDC_EDITOR_LOCATION_Y,    IDC_EDITOR_LOCATION_Z,
                                       IDC_EDITOR_ORIENTATION_X, IDC_EDITOR_ORIENTATION_Y,
                                       IDC_EDITOR_ORIENTATION_Z, IDC_EDITOR_ORIENTATION_LENGTH};

class Editor : public EditorTest {
 protected:
  Texts numbers() const {
    Texts texts;
    for (const int id : numberFields) {
      texts.push_back(field(id));
    }
    return texts;
  }
};

void describe(CDipoleszq& dipole) {
  dipole.m_size = 4.5;
  dipole.m_location[0] = -12.25;
  dipole.m_location[1] = 34.5;
  dipole.m_location[2] = 1e-7;
  dipole.m_orientation[0] = 0.5;
  dipole.m_orientation[1] = -0.125;
  dipole.m_orientation[2] = 123456789.0;
  dipole.m_orientationLength = 60.0;
  dipole.m_label = _T("left \u00b5V \u4e2d");
  dipole.m_showOrientation = 1;
}

TEST_F(Editor, CaptionTellsCurrentAndTotal) {
  make(3);
  face().setCurrentDipole(2);
  show();
  EXPECT_EQ(caption(), "Current dipole (Total dipoles):2(3)");
}

TEST_F(Editor, CaptionOfANewCollectionEndsIn0Of0) {
  open(0);
  EXPECT_EQ(caption(), "Current dipole (Total dipoles):0(0)");
}

TEST_F(Editor, CaptionOfACleanedCollectionEndsInMinus1Of0) {
  open(2);
  face().cleanDipoles();
  face().dipoleEdit(&host->window);
  EXPECT_EQ(caption(), "Current dipole (Total dipoles):-1(0)");
}

TEST_F(Editor, ShowsTheInitialValuesWithoutADipole) {
  open(0);
  EXPECT_EQ(numbers(), (Texts{"0", "0", "0", "0", "0", "0", "0", "0"}));
  EXPECT_EQ(field(IDC_EDITOR_LABEL), "Dipole Label");
  EXPECT_EQ(field(IDC_EDITOR_MERGE_RADIUS), "15");
  EXPECT_FALSE(isChecked(window, IDC_EDITOR_SHOW_ORIENTATION));
}

TEST_F(Editor, KeepsTheFieldsOfTheLastDipoleWhenTheSetIsCleaned) {
  make(1);
  describe(dipole(0));
  show();
  const Texts before = numbers();
  face().cleanDipoles();
  face().m_mergeRadius = 22.5F;
  face().dipoleEdit(&host->window);
  EXPECT_EQ(numbers(), before);
  EXPECT_EQ(field(IDC_EDITOR_LABEL), "left \u00b5V \u4e2d");
  EXPECT_TRUE(isChecked(window, IDC_EDITOR_SHOW_ORIENTATION));
  EXPECT_EQ(field(IDC_EDITOR_MERGE_RADIUS), "22.5");
}

TEST_F(Editor, ShowsEveryMemberInItsField) {
  make(2);
  describe(dipole(0));
  face().m_mergeRadius = 1.25F;
  show();
  EXPECT_EQ(numbers(), (Texts{"4.5", "-12.25", "34.5", "1e-07", "0.5", "-0.125", "123456789", "60"}));
  EXPECT_EQ(field(IDC_EDITOR_LABEL), "left \u00b5V \u4e2d");
  EXPECT_EQ(field(IDC_EDITOR_MERGE_RADIUS), "1.25");
  EXPECT_TRUE(isChecked(window, IDC_EDITOR_SHOW_ORIENTATION));
  dipole(0).m_showOrientation = 0;
  show();
  EXPECT_FALSE(isChecked(window, IDC_EDITOR_SHOW_ORIENTATION));
}

TEST_F(Editor, ApplyStoresEveryField) {
  open(2);
  face().setCurrentDipole(1);
  show();
  const char* const entered[] = {"2.5", "-1", "+2.75", " 3e2 ", "0.1", "-.5", "6.", "7.125"};
  for (std::size_t i = 0; i < numberFields.size(); ++i) {
    enter(numberFields[i], entered[i]);
  }
  enter(IDC_EDITOR_MERGE_RADIUS, "12.5");
  enter(IDC_EDITOR_LABEL, " new name ");
  ::CheckDlgButton(window, IDC_EDITOR_SHOW_ORIENTATION, BST_UNCHECKED);
  const double first = dipole(0).m_location[0];
  push(IDC_EDITOR_APPLY);
  const CDipoleszq& stored = dipole(1);
  EXPECT_EQ(stored.m_size, 2.5);
  EXPECT_EQ(stored.m_location[0], -1.0);
  EXPECT_EQ(stored.m_location[1], 2.75);
  EXPECT_EQ(stored.m_location[2], 300.0);
  EXPECT_EQ(stored.m_orientation[0], 0.1);  // not normalised
  EXPECT_EQ(stored.m_orientation[1], -0.5);
  EXPECT_EQ(stored.m_orientation[2], 6.0);
  EXPECT_EQ(stored.m_orientationLength, 7.125);
  EXPECT_EQ(toUtf8(stored.m_label), " new name ");
  EXPECT_EQ(stored.m_showOrientation, 0);
  EXPECT_EQ(face().m_mergeRadius, 12.5F);
  EXPECT_EQ(face().m_showDipoleOrientationAll, 0);
  EXPECT_EQ(dipole(0).m_location[0], first);
  EXPECT_EQ(dipole(0).m_showOrientation, 1);
  EXPECT_TRUE(host->wasRepainted());
  EXPECT_EQ(host->updates(), 0);
}

TEST_F(Editor, ApplyStoresTheCheckForTheSetAndTheDipole) {
  make(2);
  dipole(0).m_showOrientation = 0;
  dipole(1).m_showOrientation = 0;
  show();
  ::CheckDlgButton(window, IDC_EDITOR_SHOW_ORIENTATION, BST_CHECKED);
  push(IDC_EDITOR_APPLY);
  EXPECT_EQ(face().m_showDipoleOrientationAll, 1);
  EXPECT_EQ(dipole(0).m_showOrientation, 1);
  EXPECT_EQ(dipole(1).m_showOrientation, 0);
}

TEST_F(Editor, ApplyKeepsEveryDigitOfUnchangedFields) {
  make(1);
  dipole(0).m_location[0] = 0.1 + 0.2;
  dipole(0).m_location[1] = 1.0 / 3.0;
  dipole(0).m_orientation[2] = -2.0 / 3.0;
  dipole(0).m_size = std::nextafter(3.0, 4.0);
  face().m_mergeRadius = 16777.217F / 3.0F;
  const float radius = face().m_mergeRadius;
  show();
  EXPECT_EQ(field(IDC_EDITOR_LOCATION_X), "0.3");
  enter(IDC_EDITOR_LABEL, "x");
  push(IDC_EDITOR_APPLY);
  EXPECT_EQ(toUtf8(dipole(0).m_label), "x");
  EXPECT_EQ(dipole(0).m_location[0], 0.1 + 0.2);
  EXPECT_EQ(dipole(0).m_location[1], 1.0 / 3.0);
  EXPECT_EQ(dipole(0).m_orientation[2], -2.0 / 3.0);
  EXPECT_EQ(dipole(0).m_size, std::nextafter(3.0, 4.0));
  EXPECT_EQ(face().m_mergeRadius, radius);
}

TEST_F(Editor, SinglesShowTheirShortestTextAndStayWhatTheyAre) {
  make(1);
  dipole(0).m_location[0] = static_cast<double>(23.1F);
  dipole(0).m_location[1] = static_cast<double>(2.31F * 10.0F);
  dipole(0).m_orientation[0] = static_cast<double>(-0.7F);
  dipole(0).m_orientationLength = 100.0;
  face().m_mergeRadius = 1234.567F;
  show();
  EXPECT_EQ(field(IDC_EDITOR_LOCATION_X), "23.1");
  EXPECT_EQ(field(IDC_EDITOR_LOCATION_Y), "23.1");
  EXPECT_EQ(field(IDC_EDITOR_ORIENTATION_X), "-0.7");
  EXPECT_EQ(field(IDC_EDITOR_ORIENTATION_LENGTH), "100");
  EXPECT_EQ(field(IDC_EDITOR_MERGE_RADIUS), "1234.567");
  enter(IDC_EDITOR_LABEL, "x");
  push(IDC_EDITOR_APPLY);
  EXPECT_EQ(dipole(0).m_location[0], static_cast<double>(23.1F));
  EXPECT_EQ(dipole(0).m_location[1], static_cast<double>(2.31F * 10.0F));
  EXPECT_EQ(dipole(0).m_orientation[0], static_cast<double>(-0.7F));
  EXPECT_EQ(face().m_mergeRadius, 1234.567F);
  enter(IDC_EDITOR_LOCATION_X, "23.2");
  push(IDC_EDITOR_APPLY);
  EXPECT_EQ(dipole(0).m_location[0], 23.2);
  EXPECT_EQ(dipole(0).m_location[1], static_cast<double>(2.31F * 10.0F));
}

TEST_F(Editor, CheckIsWrittenIntoTheDipoleAlsoWhenTheUserLeavesIt) {
  make(1);
  dipole(0).m_showOrientation = 1;
  show();
  dipole(0).m_showOrientation = 0;  // by the host
  push(IDC_EDITOR_APPLY);
  EXPECT_EQ(dipole(0).m_showOrientation, 1);
  dipole(0).m_showOrientation = 5;
  push(IDC_EDITOR_APPLY);
  EXPECT_EQ(dipole(0).m_showOrientation, 1);
  ::CheckDlgButton(window, IDC_EDITOR_SHOW_ORIENTATION, BST_UNCHECKED);
  push(IDC_EDITOR_APPLY);
  dipole(0).m_showOrientation = 1;
  push(IDC_EDITOR_APPLY);
  EXPECT_EQ(dipole(0).m_showOrientation, 0);
}

TEST_F(Editor, ApplyWritesBackNothingThatOnlyOthersChanged) {
  open(1);
  dipole(0).m_location[0] = 99.5;
  dipole(0).m_label = _T("by the host");
  face().m_mergeRadius = 77.0F;
  enter(IDC_EDITOR_SIZE, "8");
  push(IDC_EDITOR_APPLY);
  EXPECT_EQ(dipole(0).m_size, 8.0);
  EXPECT_EQ(dipole(0).m_location[0], 99.5);
  EXPECT_EQ(toUtf8(dipole(0).m_label), "by the host");
  EXPECT_EQ(face().m_mergeRadius, 77.0F);
}

TEST_F(Editor, AppliedFieldsAreNotWrittenBackASecondTime) {
  open(1);
  enter(IDC_EDITOR_SIZE, "8");
  push(IDC_EDITOR_APPLY);
  dipole(0).m_size = 5.0;
  push(IDC_EDITOR_APPLY);
  EXPECT_EQ(dipole(0).m_size, 5.0);
}

TEST_F(Editor, NumbersThatAreNotFiniteDoNotBlockApply) {
  make(1);
  dipole(0).m_orientation[0] = std::numeric_limits<double>::quiet_NaN();
  dipole(0).m_location[1] = std::numeric_limits<double>::infinity();
  show();
  enter(IDC_EDITOR_LOCATION_X, "5");
  push(IDC_EDITOR_APPLY);
  EXPECT_EQ(messages.take(), Texts{});
  EXPECT_EQ(dipole(0).m_location[0], 5.0);
  EXPECT_TRUE(std::isnan(dipole(0).m_orientation[0]));
  EXPECT_TRUE(std::isinf(dipole(0).m_location[1]));
}

TEST_F(Editor, ApplyWithoutADipoleStoresWhatBelongsToTheSet) {
  open(0);
  enter(IDC_EDITOR_MERGE_RADIUS, "30");
  enter(IDC_EDITOR_LOCATION_X, "5");
  ::CheckDlgButton(window, IDC_EDITOR_SHOW_ORIENTATION, BST_CHECKED);
  push(IDC_EDITOR_APPLY);
  EXPECT_EQ(face().m_mergeRadius, 30.0F);
  EXPECT_EQ(face().m_showDipoleOrientationAll, 1);
  EXPECT_EQ(face().getTotalDipoles(), 0U);
  EXPECT_TRUE(host->wasRepainted());
}

TEST_F(Editor, ApplyWithoutAHostWindowIsAllowed) {
  make(1);
  face().dipoleEdit(nullptr);
  window = host->editor();
  enter(IDC_EDITOR_SIZE, "8");
  push(IDC_EDITOR_APPLY);
  EXPECT_EQ(dipole(0).m_size, 8.0);
}

TEST_F(Editor, ExitAppliesAndHides) {
  open(1);
  enter(IDC_EDITOR_SIZE, "8");
  push(IDOK);
  EXPECT_EQ(dipole(0).m_size, 8.0);
  EXPECT_FALSE(::IsWindowVisible(window));
  EXPECT_TRUE(::IsWindow(window));
}

TEST_F(Editor, EscapeHidesAndAppliesNothing) {
  open(1);
  enter(IDC_EDITOR_SIZE, "8");
  strike(window, IDC_EDITOR_SIZE, VK_ESCAPE);
  EXPECT_FALSE(::IsWindowVisible(window));
  EXPECT_EQ(dipole(0).m_size, 3.0);
  show();
  EXPECT_EQ(field(IDC_EDITOR_SIZE), "3");
}

TEST_F(Editor, ClosingHidesAndAppliesNothing) {
  open(1);
  enter(IDC_EDITOR_SIZE, "8");
  ::SendMessageW(window, WM_SYSCOMMAND, SC_CLOSE, 0);
  pump();
  EXPECT_FALSE(::IsWindowVisible(window));
  EXPECT_TRUE(::IsWindow(window));
  EXPECT_EQ(dipole(0).m_size, 3.0);
}

TEST_F(Editor, EnterApplies) {
  open(1);
  enter(IDC_EDITOR_SIZE, "8");
  strike(window, IDC_EDITOR_SIZE, VK_RETURN);
  EXPECT_EQ(dipole(0).m_size, 8.0);
  EXPECT_TRUE(::IsWindowVisible(window));
}

TEST_F(Editor, TabFollowsTheReadingOrder) {
  open(1);
  ::SetFocus(::GetDlgItem(window, IDC_EDITOR_LOCATION_X));
  std::vector<int> order;
  do {
    order.push_back(focusIn(window));
    strike(window, order.back(), VK_TAB);
  } while (focusIn(window) != IDC_EDITOR_LOCATION_X && order.size() < 30);
  const std::vector<int> expected = {IDC_EDITOR_LOCATION_X,    IDC_EDITOR_LOCATION_Y,
                                     IDC_EDITOR_LOCATION_Z,    IDC_EDITOR_SHOW_ORIENTATION,
                                     IDC_EDITOR_ORIENTATION_X, IDC_EDITOR_ORIENTATION_Y,
                                     IDC_EDITOR_ORIENTATION_Z, IDC_EDITOR_ORIENTATION_LENGTH,
                                     IDC_EDITOR_SIZE,          IDC_EDITOR_MERGE_RADIUS,
                                     IDC_EDITOR_LABEL,         IDC_EDITOR_COLOR,
                                     IDC_EDITOR_PREVIOUS,      IDC_EDITOR_NEXT,
                                     IDC_EDITOR_ADD,           IDC_EDITOR_DELETE,
                                     IDC_EDITOR_APPLY,         IDOK};
  EXPECT_EQ(order, expected);
}

TEST_F(Editor, MnemonicsReachTheirControls) {
  open(3);
  ::SetFocus(::GetDlgItem(window, IDC_EDITOR_LABEL));
  const std::pair<char, int> fields[] = {
      {'x', IDC_EDITOR_LOCATION_X}, {'y', IDC_EDITOR_LOCATION_Y},         {'z', IDC_EDITOR_LOCATION_Z},
      {'i', IDC_EDITOR_SIZE},       {'l', IDC_EDITOR_ORIENTATION_LENGTH}, {'m', IDC_EDITOR_MERGE_RADIUS},
      {'b', IDC_EDITOR_LABEL}};
  for (const auto& [letter, id] : fields) {
    strikeMnemonic(window, letter);
    EXPECT_EQ(focusIn(window), id) << letter;
  }
  strikeMnemonic(window, 'n');
  EXPECT_EQ(face().getCurrentDipoleID(), 1);
  strikeMnemonic(window, 'r');
  EXPECT_EQ(face().getCurrentDipoleID(), 0);
  strikeMnemonic(window, 'd');
  EXPECT_EQ(face().getTotalDipoles(), 4U);
  strikeMnemonic(window, 'e');
  EXPECT_EQ(face().getTotalDipoles(), 3U);
  strikeMnemonic(window, 't');
  EXPECT_FALSE(::IsWindowVisible(window));
}

TEST_F(Editor, LabelsMayBeLongerThanTheField) {
  const std::string label(1000, 'w');
  make(1);
  dipole(0).m_label = fromUtf8(label);
  show();
  EXPECT_EQ(field(IDC_EDITOR_LABEL), label);
  ::SendMessageW(::GetDlgItem(window, IDC_EDITOR_LABEL), EM_SETSEL, 1000, 1000);
  ::SendMessageW(::GetDlgItem(window, IDC_EDITOR_LABEL), WM_CHAR, 'x', 1);
  push(IDC_EDITOR_APPLY);
  EXPECT_EQ(toUtf8(dipole(0).m_label), label + "x");
}

TEST_F(Editor, LabelsMayBeEmptied) {
  open(1);
  enter(IDC_EDITOR_LABEL, "");
  push(IDC_EDITOR_APPLY);
  EXPECT_EQ(toUtf8(dipole(0).m_label), "");
}

}  // namespace
