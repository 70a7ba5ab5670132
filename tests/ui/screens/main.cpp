// Shows every dialog, menu and message of the module in turn and takes its picture.
//
//   dipole_screens FOLDER EXAMPLES      both with a separator at the end, FOLDER exists
//
// Run by scripts/screens.sh, which knows the names of the pictures.
#include <fstream>
#include <gtest/gtest.h>
#include <iostream>
#include <optional>
#include <sstream>

#include "platform/Utf.h"
#include "tests/support/TempFolder.h"
#include "tests/ui/endurance/ReadyOperator.h"
#include "tests/ui/screens/Album.h"
#include "tests/ui/screens/RestingFilm.h"
#include "tests/ui/windows/Host.h"
#include "ui/resource.h"

namespace {

constexpr const char* program = "Viewer";

int scaled(int pixels) {
  const HDC screen = ::GetDC(nullptr);
  const int dotsPerInch = ::GetDeviceCaps(screen, LOGPIXELSX);
  ::ReleaseDC(nullptr, screen);
  return ::MulDiv(pixels, dotsPerInch, USER_DEFAULT_SCREEN_DPI);
}

void resize(HWND window, int width, int height) {
  ::SetWindowPos(window, nullptr, 0, 0, scaled(width), scaled(height), SWP_NOMOVE | SWP_NOZORDER);
  pump();
}

// What a user with a mouse sees: mnemonics are not underlined.
void hideMnemonics(HWND window) {
  ::SendMessageW(window, WM_CHANGEUISTATE, MAKEWPARAM(UIS_SET, UISF_HIDEACCEL | UISF_HIDEFOCUS), 0);
}

void clickMenuBar(HWND window, UINT popup) {
  RECT item = {};
  ::GetMenuItemRect(window, ::GetMenu(window), popup, &item);
  ::SendMessageW(window, WM_NCLBUTTONDOWN, HTMENU, MAKELPARAM(item.left + 5, (item.top + item.bottom) / 2));
  pump();
}

void import(Host& host, CString path) {
  host.face->importDipoleX(path, false);
}

class Screens {
 public:
  Screens(std::string pictures, std::string examples)
      : m_album(std::move(pictures)), m_examples(std::move(examples)) {}

  bool takeAll();

 private:
  void empty();
  void manager();
  void menus();
  void editor();
  void coordinates();
  void name();
  void rangeMessages();
  void emptyMessages();
  void fullMessages();
  void importDialog();
  void importQuestions();
  void exportDialog();
  void overwrite(Robot& robot);
  void colors();

  void importSilently(Host& host, const std::string& file) const;
  void message(Robot& robot, const std::string& name, const std::string& text, int button = IDOK,
               std::optional<ReadyOperator>* next = nullptr);

  Album m_album;
  std::string m_examples;
  CWinApp m_app{_T("Viewer")};
};

void Screens::importSilently(Host& host, const std::string& file) const {
  const ReadyOperator ready;
  import(host, fromUtf8(m_examples + file));
}

// Takes the picture of a message box, after it has said what it is expected to say. What is asked after it,
// `next` answers.
void Screens::message(Robot& robot, const std::string& name, const std::string& text, int button,
                      std::optional<ReadyOperator>* next) {
  robot.when(program, [this, name, text, button, next](HWND box) {
    EXPECT_EQ(messageOf(box).substr(0, text.size()), text) << name;
    m_album.take(box, name);
    if (next != nullptr) {
      next->emplace();
    }
    press(box, button);
  });
}

void Screens::empty() {
  Host host;
  host.openManager();
  m_album.take(host.manager(), "manager-empty");
  host.face->dipoleEdit(&host.window);
  m_album.take(host.editor(), "editor-empty");
}

void Screens::manager() {
  Host host;
  importSilently(host, "spikes.dip");
  host.openManager();
  m_album.take(host.manager(), "manager");
  host.click(1);
  host.click(3, false, true);
  host.choose(ID_DIPOLE_HIDE);
  host.click(2);
  host.click(4, true);
  host.click(5, true);
  m_album.take(host.manager(), "manager-selection");
  resize(host.manager(), 1000, 500);
  m_album.take(host.manager(), "manager-wide");
  ::SetFocus(host.window.m_hWnd);
  ::SetWindowPos(host.manager(), HWND_TOP, 0, 0, 0, 0, SWP_NOSIZE | SWP_NOMOVE | SWP_NOACTIVATE);
  m_album.takeInPlace(host.manager(), "manager-without-focus");
  resize(host.manager(), 200, 150);
  m_album.take(host.manager(), "manager-small");
}

void Screens::menus() {
  Host host;
  importSilently(host, "auditory.dip");
  host.openManager();
  const HWND manager = host.manager();
  ::SetWindowPos(manager, HWND_TOP, 20, 20, 0, 0, SWP_NOSIZE);
  const char* const names[] = {"menu-file", "menu-tools"};
  for (UINT popup = 0; popup < 2; ++popup) {
    Robot robot;
    robot.whenMenu([&](HWND menu) {
      m_album.takeMenu(menu, manager, names[popup]);
      ::EndMenu();
    });
    clickMenuBar(manager, popup);
  }
  host.choose(ID_DIPOLE_SHOW_CURRENT_ONLY);
  RECT list = {};
  ::GetWindowRect(host.list(), &list);
  ::SetCursorPos(list.left + 40, list.top + 40);  // the menu comes up there
  Robot robot;
  robot.whenMenu([&](HWND menu) {
    m_album.takeMenu(menu, manager, "menu-context");
    ::EndMenu();
  });
  host.rightClick(1);
}

void Screens::editor() {
  Host host;
  importSilently(host, "spikes.dip");
  host.openManager();
  host.doubleClick(3);
  RECT manager = {};
  RECT editor = {};
  RECT both = {};
  ::GetWindowRect(host.manager(), &manager);
  ::GetWindowRect(host.editor(), &editor);
  ::UnionRect(&both, &manager, &editor);
  m_album.takeArea(both, "editor-beside");
  hideMnemonics(host.editor());
  m_album.take(host.editor(), "editor");
  ::SendMessageW(host.editor(), WM_CHANGEUISTATE, MAKEWPARAM(UIS_CLEAR, UISF_HIDEFOCUS), 0);
  ::SetFocus(::GetDlgItem(host.editor(), IDC_EDITOR_COLOR));
  m_album.take(host.editor(), "editor-focus");
  CDipoleszq& dipole = *host.face->getCurrentDipole();
  for (int axis = 0; axis < 3; ++axis) {
    dipole.m_location[axis] = -1.23456789012345e-105;
    dipole.m_orientation[axis] = -0.577350269189626;
  }
  dipole.m_size = -1.23456789012345e-105;
  dipole.m_orientationLength = 123.456789012345;
  dipole.m_label = _T("AverageDipole_1234 left temporal pole");
  dipole.m_color = RGB(0, 160, 255);
  host.face->m_mergeRadius = 1234.567F;
  host.choose(ID_DIPOLE_EDIT);
  ::SendMessageW(host.editor(), WM_CHANGEUISTATE, MAKEWPARAM(UIS_CLEAR, UISF_HIDEACCEL), 0);
  m_album.take(host.editor(), "editor-longest");
}

void Screens::coordinates() {
  Host host;
  importSilently(host, "auditory.dip");
  host.face->setDipoleCoordinate(&host.window);
  m_album.take(host.coordinates(), "coordinates");
  host.face->setAllDipoleLocational(-123.456789012345, -1.23456789012345e-105, 88.0);
  host.face->setAllDipoleRotation(-179.123456789012, 0.1, 1e-16);
  host.face->updateDipoleSettings();
  m_album.take(host.coordinates(), "coordinates-longest");
}

void Screens::name() {
  Host host;
  importSilently(host, "auditory.dip");
  host.openManager();
  Robot robot;
  robot.when("Set Name", [this](HWND window) {
    m_album.take(window, "name");
    type(window, IDC_NEW_NAME, "AverageDipole_1234 left temporal pole");
    m_album.take(window, "name-longest");
    press(window, IDCANCEL);
  });
  host.choose(ID_DIPOLE_NAME_SELECTED);
}

void Screens::rangeMessages() {
  Host host(3);
  host.face->dipoleEdit(&host.window);
  Robot robot;
  message(robot, "message-range", "Please enter a number between 1 and 9000.");
  type(host.editor(), IDC_EDITOR_MERGE_RADIUS, "0.5");
  message(robot, "message-number", "Please enter a number.");
  type(host.editor(), IDC_EDITOR_MERGE_RADIUS, "x");
}

// A list that does not let itself be emptied.
LRESULT CALLBACK keepRows(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR /*id*/,
                          DWORD_PTR /*data*/) {
  return message == LVM_DELETEALLITEMS ? FALSE : ::DefSubclassProc(window, message, wParam, lParam);
}

void Screens::emptyMessages() {
  Host host;
  host.openManager();
  host.face->dipoleEdit(&host.window);
  Robot robot;
  message(robot, "message-none-available", "No dipole available");
  press(host.editor(), IDC_EDITOR_NEXT);
  message(robot, "message-clean-error", "Clean all items error");
  ::SetWindowSubclass(host.list(), &keepRows, 1, 0);
  host.face->updateDipoleList();
  ::RemoveWindowSubclass(host.list(), &keepRows, 1);
}

void Screens::fullMessages() {
  Host host;
  while (host.face->getTotalDipoles() < 30000) {
    host.face->addDipole();
  }
  host.face->dipoleEdit(&host.window);
  Robot robot;
  message(robot, "message-no-space", "No more dipole space");
  press(host.editor(), IDC_EDITOR_ADD);
}

// The question whether to overwrite stands before the dialog, under a caption of the system's choice.
void Screens::overwrite(Robot& robot) {
  robot.when("Save As", [&](HWND dialog) {
    const HWND box = ::GetLastActivePopup(dialog);
    if (::GetDlgItem(box, IDYES) == nullptr) {
      overwrite(robot);  // not yet
      return;
    }
    message(robot, "message-not-opened", "File could not be opened ");
    m_album.take(box, "message-overwrite");
    press(box, IDYES);
  });
}

// The system's dialog takes a whole path where it asks for a name.
void enterPath(HWND dialog, const CString& path) {
  HWND field = ::GetDlgItem(dialog, 0x47C);  // the combo box of names, or the edit field of older dialogs
  field = field != nullptr ? field : ::GetDlgItem(dialog, 0x480);
  EXPECT_NE(field, nullptr);
  ::SendMessageW(field, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(path.GetString()));
  ::PostMessageW(dialog, WM_COMMAND, IDOK, 0);
}

void Screens::importDialog() {
  Host host;
  host.openManager();
  const CString path = fromUtf8(m_examples + "spikes.dip");
  Robot robot;
  robot.when("Open", [&](HWND dialog) {
    m_album.take(dialog, "dialog-import");
    enterPath(dialog, path);
  });
  message(robot, "message-imported", "Total imported dipoles:");
  host.choose(ID_DIPOLE_IMPORT_CTF);
}

void Screens::importQuestions() {
  Host host;
  host.openManager();
  {
    Robot robot;
    std::optional<ReadyOperator> ready;
    message(robot, "message-moving", "This is moving dipoles, would you like to import?", IDYES, &ready);
    import(host, fromUtf8(m_examples + "moving.dip"));
  }
  std::ostringstream text;
  text << std::ifstream(m_examples + "auditory.dip", std::ios::binary).rdbuf();
  std::string wrong = text.str();
  wrong.replace(wrong.find("1:\t1.00"), 7, "1:\t99.0");
  const TempFolder folder;
  Robot robot;
  std::optional<ReadyOperator> ready;
  message(robot, "message-location", "It seems the dipole location is wrong (", IDNO, &ready);
  import(host, folder.write("wrong.dip", wrong));
}

void Screens::exportDialog() {
  Host host;
  importSilently(host, "auditory.dip");
  host.openManager();
  const TempFolder folder;
  const CString path = folder.write("set.txt", std::string_view("old"));
  // Nobody else may open it: the export fails.
  const HANDLE held = ::CreateFileW(path, GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr);
  Robot robot;
  robot.when("Save As", [&](HWND dialog) {
    m_album.take(dialog, "dialog-export");
    enterPath(dialog, path);
  });
  overwrite(robot);
  host.choose(ID_DIPOLE_EXPORT_EXCEL);
  ::CloseHandle(held);
}

void Screens::colors() {
  Host host;
  importSilently(host, "auditory.dip");
  host.openManager();
  host.click(0);
  Robot robot;
  robot.when("Color", [&](HWND dialog) {
    m_album.take(dialog, "dialog-color");
    press(dialog, IDCANCEL);
  });
  host.choose(ID_DIPOLE_COLOR_SELECTED);
}

bool Screens::takeAll() {
  ::SetCurrentDirectoryW(fromUtf8(m_examples));
  empty();
  manager();
  menus();
  editor();
  coordinates();
  name();
  rangeMessages();
  emptyMessages();
  fullMessages();
  importDialog();
  importQuestions();
  exportDialog();
  colors();
  filmRestingPointer(m_album, m_examples + "spikes.dip");
  return m_album.isComplete() && !testing::UnitTest::GetInstance()->Failed();
}

}  // namespace

int main(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  if (argc != 3) {
    std::cerr << "usage: dipole_screens FOLDER EXAMPLES\n";
    return 2;
  }
  return Screens(argv[1], argv[2]).takeAll() ? 0 : 1;
}
