// What the monkey does with the windows of the module: manager, editors, coordinates.
#include <gtest/gtest.h>
#include <iterator>

#include "tests/host/viewer/endurance/ViewerMonkey.h"
#include "tests/platform/windows/Robot.h"
#include "ui/resource.h"

namespace {

struct Search {
  std::string caption;
  HWND found = nullptr;
};

BOOL CALLBACK look(HWND window, LPARAM parameter) {
  auto& search = *reinterpret_cast<Search*>(parameter);
  if (::IsWindowVisible(window) != FALSE && captionOf(window).rfind(search.caption, 0) == 0) {
    search.found = window;
  }
  return search.found == nullptr ? TRUE : FALSE;
}

constexpr auto editorCaption = "Current dipole";
constexpr auto coordinatesCaption = "Dipole coordinate settings";

}  // namespace

HWND ViewerMonkey::moduleWindow(const char* caption) {
  Search search{caption};
  ::EnumThreadWindows(::GetCurrentThreadId(), &look, reinterpret_cast<LPARAM>(&search));
  return search.found;
}

bool ViewerMonkey::isManagerOpen() {
  return m_user->manager() != nullptr && ::IsWindowVisible(m_user->manager()) != FALSE;
}

void ViewerMonkey::openManager() {
  m_user->choose(ID_DIPOLES_MANAGER);
  EXPECT_TRUE(isManagerOpen());
}

void ViewerMonkey::openEditor() {
  m_user->choose(ID_DIPOLES_EDITOR);
  EXPECT_NE(moduleWindow(editorCaption), nullptr);
}

void ViewerMonkey::openCoordinates() {
  m_user->choose(ID_DIPOLES_COORDINATES);
  EXPECT_NE(moduleWindow(coordinatesCaption), nullptr);
}

// By the mouse, or by a key in the list; the crosshair goes to the dipole that is current then.
void ViewerMonkey::chooseRow() {
  if (!isManagerOpen()) {
    openManager();
  }
  const int rows = ListView_GetItemCount(m_user->list());
  if (rows == 0) {
    return;
  }
  constexpr UINT keys[] = {VK_DOWN, VK_UP, VK_NEXT, VK_PRIOR, VK_HOME, VK_END, VK_SPACE};
  if (m_chance.oneIn(2)) {
    m_user->chooseRow(m_chance.below(rows));
  } else {
    ::SendMessageW(m_user->list(), WM_KEYDOWN, keys[m_chance.below(static_cast<int>(std::size(keys)))], 1);
    m_user->wait();
  }
}

void ViewerMonkey::commandOfManager() {
  constexpr UINT commands[] = {
      ID_DIPOLE_DELETE,         ID_DIPOLE_DELETE,     ID_DIPOLE_SHOW,        ID_DIPOLE_HIDE,
      ID_DIPOLE_HIDE,           ID_DIPOLE_SHOW_ALL,   ID_DIPOLE_HIDE_ALL,    ID_DIPOLE_SHOW_CURRENT_ONLY,
      ID_DIPOLE_COLOR_SELECTED, ID_DIPOLE_AVERAGE_AS, ID_DIPOLE_AVERAGE_ZIP, ID_DIPOLE_IMPORT_CTF,
      ID_DIPOLE_EXPORT_EXCEL,   ID_DIPOLE_EDIT};
  if (!isManagerOpen()) {
    openManager();
  }
  const UINT command = commands[m_chance.below(static_cast<int>(std::size(commands)))];
  if (command == ID_DIPOLE_IMPORT_CTF) {
    m_operator.files = {CString((m_examples + "moving.dip").c_str())};
  }
  ::SendMessageW(m_user->manager(), WM_COMMAND, command, 0);
  m_user->wait();
}

void ViewerMonkey::checkBoxOfManager() {
  if (!isManagerOpen()) {
    openManager();
  }
  press(m_user->manager(), m_chance.oneIn(2) ? IDC_MANAGER_DYNAMIC_UPDATE : IDC_MANAGER_SHOW_ORIENTATION);
  m_user->waitQuiet();
}

void ViewerMonkey::nameSelected() {
  if (m_user->dipoles().m_totalDipoles == 0) {
    return;
  }
  if (!isManagerOpen()) {
    openManager();
  }
  Robot robot;
  robot.when("Set Name", [&](HWND dialog) {
    type(dialog, IDC_NEW_NAME, "name " + std::to_string(m_chance.below(1000)));
    press(dialog, m_chance.oneIn(2) ? IDOK : IDCANCEL);
  });
  ::SendMessageW(m_user->manager(), WM_COMMAND, ID_DIPOLE_NAME_SELECTED, 0);
  m_user->wait();
}

void ViewerMonkey::sortByHeading() {
  if (!isManagerOpen()) {
    openManager();
  }
  const HWND header = reinterpret_cast<HWND>(::SendMessageW(m_user->list(), LVM_GETHEADER, 0, 0));
  const int columns = static_cast<int>(::SendMessageW(header, HDM_GETITEMCOUNT, 0, 0));
  RECT item = {};
  ::SendMessageW(header, HDM_GETITEMRECT, static_cast<WPARAM>(m_chance.below(columns)),
                 reinterpret_cast<LPARAM>(&item));
  const LPARAM at = MAKELPARAM((item.left + item.right) / 2, (item.top + item.bottom) / 2);
  ::SendMessageW(header, WM_LBUTTONDOWN, MK_LBUTTON, at);
  ::SendMessageW(header, WM_LBUTTONUP, 0, at);
  m_user->wait();
}

// The module asks for the viewer to be painted; what has changed is noted when it is quiet.
void ViewerMonkey::pressInEditor() {
  constexpr int buttons[] = {IDC_EDITOR_NEXT, IDC_EDITOR_PREVIOUS, IDC_EDITOR_APPLY,
                             IDC_EDITOR_ADD,  IDC_EDITOR_DELETE,   IDC_EDITOR_COLOR};
  if (moduleWindow(editorCaption) == nullptr) {
    openEditor();
  }
  press(moduleWindow(editorCaption), buttons[m_chance.below(static_cast<int>(std::size(buttons)))]);
  m_user->waitQuiet();
}

void ViewerMonkey::typeInEditor() {
  constexpr int fields[] = {IDC_EDITOR_LOCATION_X,   IDC_EDITOR_LOCATION_Y,   IDC_EDITOR_LOCATION_Z,
                            IDC_EDITOR_LABEL,        IDC_EDITOR_MERGE_RADIUS, IDC_EDITOR_SIZE,
                            IDC_EDITOR_ORIENTATION_X};
  constexpr const char* texts[] = {"12.5", "-40", "x", "", "1e30", "0", "spike 7", "500"};
  if (moduleWindow(editorCaption) == nullptr) {
    openEditor();
  }
  const HWND editor = moduleWindow(editorCaption);
  type(editor, fields[m_chance.below(static_cast<int>(std::size(fields)))],
       texts[m_chance.below(static_cast<int>(std::size(texts)))]);
  press(editor, IDC_EDITOR_APPLY);
  m_user->waitQuiet();
}

void ViewerMonkey::pressInCoordinates() {
  constexpr const char* texts[] = {"0", "5", "-12.5", "x", ""};
  constexpr int fields[] = {IDC_COORDINATE_LOCATION_X, IDC_COORDINATE_ROTATION_Y, IDC_COORDINATE_LOCATION_Z};
  if (moduleWindow(coordinatesCaption) == nullptr) {
    openCoordinates();
  }
  const HWND dialog = moduleWindow(coordinatesCaption);
  type(dialog, fields[m_chance.below(3)], texts[m_chance.below(static_cast<int>(std::size(texts)))]);
  press(dialog, IDC_COORDINATE_APPLY);
  m_user->waitQuiet();
}

void ViewerMonkey::closeModuleWindow() {
  const HWND windows[] = {isManagerOpen() ? m_user->manager() : nullptr, moduleWindow(editorCaption),
                          moduleWindow(coordinatesCaption)};
  const HWND window = windows[m_chance.below(3)];
  if (window != nullptr) {
    ::SendMessageW(window, WM_CLOSE, 0, 0);
    m_user->wait();
  }
}
