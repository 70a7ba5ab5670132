// What the monkey does with the manager and its list.
#include <algorithm>
#include <gtest/gtest.h>

#include "platform/Utf.h"
#include "tests/ui/endurance/Monkey.h"
#include "ui/resource.h"

bool Monkey::isCurrentOnly() const {
  const HMENU menu = ::GetMenu(m_host.manager());
  ::SendMessageW(m_host.manager(), WM_INITMENUPOPUP, reinterpret_cast<WPARAM>(::GetSubMenu(menu, 1)), 1);
  return (::GetMenuState(menu, ID_DIPOLE_SHOW_CURRENT_ONLY, MF_BYCOMMAND) & MF_CHECKED) != 0;
}

bool Monkey::isDynamic() const {
  return ::IsDlgButtonChecked(m_host.manager(), IDC_MANAGER_DYNAMIC_UPDATE) == BST_CHECKED;
}

// Whether the list shows the set as it is.
bool Monkey::isFresh() const {
  const int total = m_host.face->m_totalDipoles;
  int slot = 0;
  while (slot < total && m_host.dipole(slot).m_listItemId == slot) {
    ++slot;
  }
  return slot == total && m_host.rows() == total;
}

int Monkey::anyRow() {
  if (!isListOpen()) {
    openManager();
  }
  return m_host.rows() > 0 ? m_chance.below(m_host.rows()) : -1;
}

// Choosing changes nothing but what is current and selected; with these two switches it shows and hides too.
void Monkey::expectAfterChoice(const SetModel& before, bool captionWasRight) {
  if (!isCurrentOnly()) {
    expectFlags(m_host, before);
    if (!isDynamic()) {
      before.expect(m_host);
    }
  }
  if (captionWasRight) {
    expectCaption(m_host);
  }
}

void Monkey::clickRow() {
  const int row = anyRow();
  if (row < 0) {
    return;
  }
  const bool control = m_chance.oneIn(4);
  const bool shift = m_chance.oneIn(4);
  const SetModel before(m_host);
  const bool fresh = isFresh();
  const bool right = isCaptionRight(m_host);
  m_host.click(row, control, shift);
  if (shift && rowsSelected(m_host).size() == 1) {
    return;  // Wine's list selects a single row in this way without telling anybody
  }
  expectAfterChoice(before, right);
  if (control || shift || !fresh || before.rows == std::vector<int>{row}) {
    return;
  }
  EXPECT_EQ(m_host.face->getCurrentDipoleID(), row);
  if (!isCurrentOnly()) {
    EXPECT_EQ(rowsSelected(m_host), std::vector<int>{row});
  } else if (!std::binary_search(before.rows.begin(), before.rows.end(), row)) {
    std::vector<int> one(before.dipoles.size());
    one[static_cast<std::size_t>(row)] = 1;
    EXPECT_EQ(m_host.shown(), one);
  }
}

void Monkey::doubleClickRow() {
  const int row = anyRow();
  if (row < 0) {
    return;
  }
  const SetModel before(m_host);
  const bool right = isCaptionRight(m_host);
  m_host.doubleClick(row);
  EXPECT_NE(m_host.editor(), nullptr);
  expectAfterChoice(before, right);
}

void Monkey::rightClickRow() {
  const int row = anyRow();
  if (row < 0) {
    return;
  }
  const SetModel before(m_host);
  const bool right = isCaptionRight(m_host);
  {
    Robot robot;
    robot.whenMenu([](HWND) { ::EndMenu(); });
    m_host.rightClick(row);
  }
  expectAfterChoice(before, right);
}

void Monkey::pressKey() {
  anyRow();
  constexpr UINT keys[] = {VK_DOWN, VK_DOWN, VK_DOWN, VK_UP,    VK_UP,
                           VK_HOME, VK_END,  VK_NEXT, VK_PRIOR, VK_SPACE};
  const UINT key = keys[m_chance.below(static_cast<int>(std::size(keys)))];
  const SetModel before(m_host);
  const bool right = isCaptionRight(m_host);
  const bool control = m_chance.oneIn(5);
  const bool shift = m_chance.oneIn(4);
  m_host.key(key, control, shift);
  if (!shift || rowsSelected(m_host).size() != 1) {
    expectAfterChoice(before, right);
  }
}

void Monkey::selectAll() {
  if (anyRow() < 0) {
    return;
  }
  const SetModel before(m_host);
  const bool right = isCaptionRight(m_host);
  const bool currentOnly = isCurrentOnly();
  m_host.key('A', true);
  expectAfterChoice(before, right);
  if (!currentOnly) {
    EXPECT_EQ(static_cast<int>(rowsSelected(m_host).size()), m_host.rows());
  }
}

// After a pause: what follows another character at once is a longer number.
void Monkey::typeNumber() {
  if (anyRow() < 0) {
    return;
  }
  ::Sleep(700);
  const SetModel before(m_host);
  const bool right = isCaptionRight(m_host);
  m_host.typeInList(static_cast<char>('1' + m_chance.below(9)));
  expectAfterChoice(before, right);
}

void Monkey::clickHeading() {
  anyRow();
  SetModel model(m_host);
  const int column = m_chance.below(11);
  m_host.clickHeading(column);
  expectRefilled();
  const SetModel after(m_host);
  std::vector<const CDipoleszq*> sorted = after.dipoles;
  if (column < 10) {
    std::sort(sorted.begin(), sorted.end());
    std::sort(model.dipoles.begin(), model.dipoles.end());
  }
  EXPECT_EQ(sorted, model.dipoles) << column;
}

void Monkey::showOrHide() {
  anyRow();
  SetModel model(m_host);
  const bool show = m_chance.oneIn(2);
  for (const int slot : model.chosen) {
    model.shown[static_cast<std::size_t>(slot)] = show ? 1 : 0;
  }
  command(show ? ID_DIPOLE_SHOW : ID_DIPOLE_HIDE);
  model.expect(m_host);
}

void Monkey::showOrHideAll() {
  anyRow();
  SetModel model(m_host);
  const bool show = m_chance.oneIn(2);
  std::fill(model.shown.begin(), model.shown.end(), show ? 1 : 0);
  command(show ? ID_DIPOLE_SHOW_ALL : ID_DIPOLE_HIDE_ALL);
  model.expect(m_host);
}

void Monkey::deleteSelected() {
  anyRow();
  SetModel model(m_host);
  model.removeChosen();
  command(ID_DIPOLE_DELETE);
  model.expect(m_host);
}

void Monkey::toggleCurrentOnly() {
  anyRow();
  const SetModel model(m_host);
  const bool before = isCurrentOnly();
  m_host.forget();
  m_host.choose(ID_DIPOLE_SHOW_CURRENT_ONLY);
  EXPECT_EQ(m_host.updates(), 0);
  EXPECT_NE(isCurrentOnly(), before);
  expectRefilled();
  model.expect(m_host);
}

void Monkey::checkBox() {
  anyRow();
  const SetModel model(m_host);
  const bool dynamic = m_chance.oneIn(2);
  m_host.forget();
  m_host.check(dynamic ? IDC_MANAGER_DYNAMIC_UPDATE : IDC_MANAGER_SHOW_ORIENTATION);
  EXPECT_EQ(m_host.updates(), 1);
  if (!dynamic) {
    EXPECT_EQ(m_host.face->m_showDipoleOrientationAll,
              static_cast<int>(::IsDlgButtonChecked(m_host.manager(), IDC_MANAGER_SHOW_ORIENTATION)));
  }
  model.expect(m_host);
}

void Monkey::average() {
  anyRow();
  SetModel model(m_host);
  const std::size_t count = model.chosen.size();
  if (count > 0) {
    model.addNew();
  }
  command(ID_DIPOLE_AVERAGE_AS);
  model.expect(m_host);
  if (count > 0 && model.dipoles.back() == nullptr) {
    EXPECT_EQ(m_host.labels().back(), "AverageDipole_" + std::to_string(count));
  }
}

void Monkey::averageZip() {
  anyRow();
  SetModel model(m_host);
  const std::size_t count = model.chosen.size();
  model.removeChosen();
  if (count > 0) {
    model.addNew();
  }
  command(ID_DIPOLE_AVERAGE_ZIP);
  model.expect(m_host);
  if (count > 0) {
    EXPECT_EQ(m_host.labels().back(), "AverageDipole" + std::to_string(count));
  }
}

// Cancel gives the current dipole's label, on purpose.
void Monkey::nameSelected() {
  anyRow();
  SetModel model(m_host);
  if (model.dipoles.empty()) {
    m_host.choose(ID_DIPOLE_NAME_SELECTED);
    return;
  }
  const bool isTyped = m_chance.oneIn(2);
  const std::string typed = "name " + std::to_string(m_chance.below(1000));
  const std::string name = isTyped ? typed : model.labels[static_cast<std::size_t>(model.current)];
  for (const int slot : model.chosen) {
    model.labels[static_cast<std::size_t>(slot)] = name;
  }
  Robot robot;
  robot.when("Set Name", [&](HWND dialog) {
    type(dialog, IDC_NEW_NAME, typed);
    press(dialog, isTyped ? IDOK : IDCANCEL);
  });
  command(ID_DIPOLE_NAME_SELECTED);
  model.expect(m_host);
}

void Monkey::colorSelected() {
  anyRow();
  SetModel model(m_host);
  if (!model.dipoles.empty() && m_chance.oneIn(10)) {  // the system's own dialog
    Operator* const before = installOperator(nullptr);
    Robot robot;
    robot.when("Color", [](HWND dialog) { press(dialog, IDCANCEL); });
    m_host.choose(ID_DIPOLE_COLOR_SELECTED);
    installOperator(before);
    model.expect(m_host);
    return;
  }
  m_operator.hasColor = !m_chance.oneIn(3);
  m_operator.color = RGB(m_chance.below(256), m_chance.below(256), m_chance.below(256));
  m_host.forget();
  m_host.choose(ID_DIPOLE_COLOR_SELECTED);
  EXPECT_EQ(m_host.updates(), 1);
  if (m_operator.hasColor) {
    for (const int slot : model.chosen) {
      model.colors[static_cast<std::size_t>(slot)] = m_operator.color;
    }
  }
  model.expect(m_host);
}

void Monkey::import() {
  anyRow();
  constexpr const char* files[] = {"auditory.dip", "spikes.dip", "moving.dip", "missing.dip", ""};
  const std::string file = files[m_chance.below(static_cast<int>(std::size(files)))];
  const SetModel model(m_host);
  m_operator.file = file.empty() ? CString() : fromUtf8(m_examples + file);
  command(ID_DIPOLE_IMPORT_CTF);
  const SetModel after(m_host);
  ASSERT_GE(after.dipoles.size(), model.dipoles.size());
  EXPECT_TRUE(std::equal(model.dipoles.begin(), model.dipoles.end(), after.dipoles.begin()));
}

void Monkey::exportSet() {
  anyRow();
  const SetModel model(m_host);
  const bool isCancelled = m_chance.oneIn(3);
  m_operator.file = isCancelled ? CString() : m_folder.path("set.txt");
  m_host.forget();
  m_host.choose(ID_DIPOLE_EXPORT_EXCEL);
  EXPECT_EQ(m_host.updates(), 0);
  EXPECT_TRUE(isCancelled || m_folder.has("set.txt"));
  model.expect(m_host);
}

void Monkey::closeManager() {
  anyRow();
  if (m_chance.oneIn(2)) {
    m_host.choose(ID_DIPOLE_EXIT);
  } else {
    ::SendMessageW(m_host.manager(), WM_CLOSE, 0, 0);
  }
  pump();
  EXPECT_FALSE(isListOpen());
}

void Monkey::openManager() {
  const SetModel model(m_host);
  m_host.openManager();
  EXPECT_TRUE(isListOpen());
  expectRefilled();
  model.expect(m_host);
}

void Monkey::resizeManager() {
  anyRow();
  ::SetWindowPos(m_host.manager(), nullptr, 0, 0, 400 + m_chance.below(800), 240 + m_chance.below(600),
                 SWP_NOMOVE | SWP_NOZORDER);
  pump();
  RECT client = {};
  RECT list = {};
  ::GetClientRect(m_host.manager(), &client);
  ::GetWindowRect(m_host.list(), &list);
  ::MapWindowPoints(nullptr, m_host.manager(), reinterpret_cast<POINT*>(&list), 2);
  EXPECT_EQ(list.right, client.right - 10);
  EXPECT_EQ(list.bottom, client.bottom - 10);
}
