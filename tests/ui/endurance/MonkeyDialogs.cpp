// What the monkey does with the editor and the coordinates, and what the host does meanwhile.
#include <cstdio>
#include <gtest/gtest.h>
#include <utility>

#include "tests/ui/endurance/Monkey.h"
#include "ui/resource.h"

namespace {

constexpr int large = 30000;

std::string decimal(int thousandths) {
  char text[32] = "";
  std::snprintf(text, sizeof text, "%.3f", thousandths / 1000.0);
  return text;
}

}  // namespace

void Monkey::openEditor() {
  const bool right = isCaptionRight(m_host);
  if (isListOpen() && m_chance.oneIn(2)) {
    m_host.choose(ID_DIPOLE_EDIT);
  } else {
    m_host.face->dipoleEdit(&m_host.window);
    pump();
  }
  ASSERT_NE(m_host.editor(), nullptr);
  if (right) {  // else the other one may be in front
    expectCaption(m_host);
  }
}

HWND Monkey::editor() {
  if (m_host.editor() == nullptr) {
    openEditor();
  }
  return m_host.editor();
}

void Monkey::stepEditor() {
  const HWND dialog = editor();
  const SetModel before(m_host);
  const int total = m_host.face->m_totalDipoles;
  const bool next = m_chance.oneIn(2);
  press(dialog, next ? IDC_EDITOR_NEXT : IDC_EDITOR_PREVIOUS);
  pump();
  if (total > 0) {
    EXPECT_EQ(m_host.face->getCurrentDipoleID(), (before.current + (next ? 1 : total - 1)) % total);
  }
  before.expect(m_host);
  expectCaption(m_host);
}

void Monkey::addInEditor() {
  const HWND dialog = editor();
  SetModel model(m_host);
  const std::size_t before = model.dipoles.size();
  model.addNew();
  press(dialog, IDC_EDITOR_ADD);
  pump();
  model.expect(m_host);
  expectCaption(m_host);
  if (isListOpen() && model.dipoles.size() > before) {
    expectRefilled();
  }
}

void Monkey::deleteInEditor() {
  const HWND dialog = editor();
  SetModel model(m_host);
  model.chosen.clear();
  if (!model.dipoles.empty()) {
    model.chosen.push_back(model.current);
  }
  model.removeChosen();
  press(dialog, IDC_EDITOR_DELETE);
  pump();
  model.expect(m_host);
  expectCaption(m_host);
  if (isListOpen()) {
    expectRefilled();
  }
}

// A number goes into the current dipole, or a message is shown and nothing changes.
void Monkey::typeInEditor() {
  const HWND dialog = editor();
  const bool isNumber = !m_chance.oneIn(4);
  const int thousandths = m_chance.below(200000) - 100000;
  type(dialog, IDC_EDITOR_LOCATION_Y, isNumber ? decimal(thousandths) : "left");
  const CDipoleszq* const dipole = m_host.face->getCurrentDipole();
  const double before = dipole != nullptr ? dipole->m_location[1] : 0.0;
  m_operator.isAsked = false;
  press(dialog, IDC_EDITOR_APPLY);
  pump();
  EXPECT_TRUE(isNumber || m_operator.isAsked);
  if (dipole != nullptr) {
    EXPECT_EQ(dipole->m_location[1], m_operator.isAsked ? before : thousandths / 1000.0);
  }
}

void Monkey::typeRadius() {
  const HWND dialog = editor();
  constexpr const char* texts[] = {"1", "9000", "12.5", "0.5", "9001", "x", ""};
  const int chosen = m_chance.below(static_cast<int>(std::size(texts)));
  const float before = m_host.face->m_mergeRadius;
  type(dialog, IDC_EDITOR_MERGE_RADIUS, texts[chosen]);
  pump();
  EXPECT_EQ(m_host.face->m_mergeRadius, before);  // until it is applied
}

void Monkey::pressInEditor() {
  const HWND dialog = editor();
  const SetModel before(m_host);
  constexpr int buttons[] = {IDC_EDITOR_APPLY, IDC_EDITOR_COLOR, IDC_EDITOR_SHOW_ORIENTATION, IDOK, IDCANCEL};
  const int button = buttons[m_chance.below(static_cast<int>(std::size(buttons)))];
  m_operator.hasColor = true;
  m_operator.color = RGB(m_chance.below(256), m_chance.below(256), m_chance.below(256));
  if (button == IDCANCEL) {
    ::SendMessageW(dialog, WM_COMMAND, IDCANCEL, 0);
  } else {
    press(dialog, button);
  }
  pump();
  EXPECT_EQ(m_host.face->m_totalDipoles, static_cast<int>(before.dipoles.size()));
  if (button == IDC_EDITOR_COLOR && m_host.face->getCurrentDipole() != nullptr) {
    EXPECT_EQ(m_host.face->getCurrentDipole()->m_color, m_operator.color);
  }
}

void Monkey::useCoordinates() {
  if (m_host.coordinates() == nullptr) {
    m_host.face->setDipoleCoordinate(&m_host.window);
    pump();
  }
  const HWND dialog = m_host.coordinates();
  ASSERT_NE(dialog, nullptr);
  if (m_chance.oneIn(5)) {
    m_operator.isAsked = false;
    press(dialog, m_chance.oneIn(2) ? IDOK : IDCANCEL);
    pump();
    EXPECT_EQ(m_host.coordinates() != nullptr, m_operator.isAsked);  // OK refuses what is no number
    return;
  }
  double x = 0.0;
  double y = 0.0;
  double z = 0.0;
  m_host.face->getAllDipoleLocational(x, y, z);
  const int thousandths = m_chance.below(200000) - 100000;
  const bool isNumber = !m_chance.oneIn(4);
  type(dialog, IDC_COORDINATE_LOCATION_X, isNumber ? decimal(thousandths) : "-");
  const double before = x;
  m_operator.isAsked = false;
  press(dialog, IDC_COORDINATE_APPLY);
  pump();
  EXPECT_EQ(m_operator.isAsked, !isNumber);
  m_host.face->getAllDipoleLocational(x, y, z);
  EXPECT_EQ(x, isNumber ? thousandths / 1000.0 : before);
}

void Monkey::addByHost() {
  SetModel model(m_host);
  for (int left = 1 + m_chance.below(3); left > 0; --left) {
    model.addNew();
    m_host.face->addDipole();
  }
  if (m_chance.oneIn(2)) {
    m_host.face->updateDipoleList();
    pump();
    if (isListOpen()) {
      expectRefilled();
    }
  }
  model.expect(m_host);
}

void Monkey::changeByHost() {
  const int total = m_host.face->m_totalDipoles;
  switch (m_chance.below(5)) {
    case 0:
      m_host.face->deleteCurrentDipole();
      break;
    case 1:
      m_host.face->setShowAllDipole(m_chance.below(2));
      break;
    case 2:
      m_host.face->setCurrentDipole(m_chance.below(total));
      break;
    case 3:
      m_host.face->deleteDipole(m_chance.below(total), 1);
      break;
    default:
      m_host.face->sortDipoles(m_chance.below(10));
      break;
  }
  if (m_chance.oneIn(2)) {
    m_host.face->updateDipoleList();
    pump();
    if (isListOpen()) {
      expectRefilled();
    }
  }
}

void Monkey::cleanByHost() {
  m_host.face->cleanDipoles();
  m_host.face->updateDipoleList();
  pump();
  EXPECT_EQ(m_host.face->m_totalDipoles, 0);
  if (isListOpen()) {
    expectRefilled();
  }
}

// Mostly small, now and then empty, rarely full: then a user waits for everything.
int Monkey::sizeOfNextSet() {
  if (m_chance.oneIn(50)) {
    return large;
  }
  return m_chance.oneIn(5) ? 0 : m_chance.below(50);
}

void Monkey::newSet() {
  makeSet(sizeOfNextSet());
}

// The host ends the set while a modal dialog of its manager is open.
void Monkey::newSetInDialog() {
  anyRow();
  if (m_host.face->m_totalDipoles > 0) {
    Robot robot;
    robot.when("Set Name", [this](HWND dialog) {
      m_host.face.reset();
      if (::IsWindow(dialog) != FALSE) {  // a copy keeps the manager
        press(dialog, IDCANCEL);
      }
    });
    m_host.choose(ID_DIPOLE_NAME_SELECTED);
  }
  newSet();
}

void Monkey::copySet() {
  m_copy = std::make_unique<CDipoleFacezq>(*m_host.face);
  m_copyTotal = m_copy->m_totalDipoles;
}

void Monkey::hideDialogs() const {
  while (m_host.editor() != nullptr) {
    ::ShowWindow(m_host.editor(), SW_HIDE);
  }
  if (m_host.coordinates() != nullptr) {
    ::ShowWindow(m_host.coordinates(), SW_HIDE);
  }
}

// Goes on with the copy; the manager, if they share it, shows that from now on.
void Monkey::swapCopies() {
  if (!m_copy) {
    copySet();
  }
  hideDialogs();
  std::swap(m_host.face, m_copy);
  m_copyTotal = m_copy->m_totalDipoles;
  openManager();
}

void Monkey::dropCopy() {
  const bool wasOpen = isListOpen();
  m_copy.reset();
  pump();
  EXPECT_EQ(isListOpen(), wasOpen);
}
