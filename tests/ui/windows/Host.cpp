#include "tests/ui/windows/Host.h"

#include <gtest/gtest.h>
#include <utility>

#include "platform/Utf.h"
#include "ui/resource.h"

namespace {

// Callbacks are plain functions: what they were told stands here.
std::vector<Position> positionsTold;
int updatesTold = 0;

void setKey(BYTE (&keys)[256], int key, bool down) {
  keys[key] = down ? 0x80 : 0;
}

// The keys that the user holds while a message is handled.
class HeldKeys {
 public:
  HeldKeys(bool control, bool shift) {
    ::GetKeyboardState(m_before);
    BYTE keys[256] = {};
    setKey(keys, VK_CONTROL, control);
    setKey(keys, VK_SHIFT, shift);
    ::SetKeyboardState(keys);
  }
  ~HeldKeys() { ::SetKeyboardState(m_before); }
  HeldKeys(const HeldKeys&) = delete;
  HeldKeys& operator=(const HeldKeys&) = delete;

 private:
  BYTE m_before[256] = {};
};

struct CaptionSearch {
  std::string beginning;
  HWND found;
};

BOOL CALLBACK compareCaption(HWND window, LPARAM parameter) {
  auto& search = *reinterpret_cast<CaptionSearch*>(parameter);
  if (::IsWindowVisible(window) != FALSE && captionOf(window).starts_with(search.beginning)) {
    search.found = window;
    return FALSE;
  }
  return TRUE;
}

HWND visibleWindow(const std::string& captionBeginning) {
  CaptionSearch search = {captionBeginning, nullptr};
  ::EnumThreadWindows(::GetCurrentThreadId(), &compareCaption, reinterpret_cast<LPARAM>(&search));
  return search.found;
}

LPARAM pointOf(HWND list, int row) {
  RECT cell = {};
  cell.left = LVIR_LABEL;
  ::SendMessageW(list, LVM_SCROLL, static_cast<WPARAM>(-::GetScrollPos(list, SB_HORZ)), 0);
  ::SendMessageW(list, LVM_ENSUREVISIBLE, static_cast<WPARAM>(row), FALSE);
  ::SendMessageW(list, LVM_GETITEMRECT, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&cell));
  return MAKELPARAM(cell.left + 5, (cell.top + cell.bottom) / 2);
}

WPARAM buttonFlags(bool control, bool shift) {
  return WPARAM{MK_LBUTTON} | (control ? WPARAM{MK_CONTROL} : 0) | (shift ? WPARAM{MK_SHIFT} : 0);
}

}  // namespace

Robot::Step answer(std::string text, int button) {
  return [text = std::move(text), button](HWND box) {
    EXPECT_EQ(messageOf(box), text);
    press(box, button);
  };
}

int rememberPosition(double x, double y, double z, double latency) {
  positionsTold.push_back({x, y, z, latency});
  return 0;
}

int countUpdate(bool value) {
  EXPECT_FALSE(value);
  return ++updatesTold;
}

BEGIN_MESSAGE_MAP(HostWindow, CWnd)
ON_WM_PAINT()
END_MESSAGE_MAP()

HostWindow::HostWindow() {
  const RECT place = {900, 20, 1100, 140};
  CreateEx(0, _T("STATIC"), _T("Host"), WS_OVERLAPPEDWINDOW | WS_VISIBLE, place, nullptr, 0);
  pump();
}

void HostWindow::OnPaint() {
  ++m_paints;
  CWnd::OnPaint();
}

Host::Host(int dipoles) : face(std::make_unique<CDipoleFacezq>()) {
  ::SetCursorPos(0, 0);  // nothing that happens to lie under it takes part
  forget();
  face->setCbfUpdateViewers(&countUpdate);
  addDipoles(dipoles);
  if (dipoles > 0) {
    face->setCurrentDipole(0);
  }
}

Host::~Host() {
  face.reset();
  window.DestroyWindow();
  pump();
}

void Host::addDipoles(int count) {
  for (int i = 0; i < count; ++i) {
    const int number = static_cast<int>(face->getTotalDipoles()) + 1;
    const auto value = static_cast<float>(number);
    face->addDipoleF(value, 10.0F * value, 100.0F * value);
    CDipoleszq& added = *face->getCurrentDipole();
    added.m_number = number;
    added.m_latency = number / 2.0;
    added.m_fitError = number / 4.0;
    added.m_moment = number / 8.0;
    added.m_label.Format(_T("d%d"), number);
  }
}

CDialog& Host::openManager() {
  CDialog* const dialog = face->showDipoleList(&window, &rememberPosition);
  pump();
  forget();
  return *dialog;
}

HWND Host::manager() const {
  return face->getDlgDipoleList()->GetSafeHwnd();
}

HWND Host::list() const {
  return ::GetDlgItem(manager(), IDC_MANAGER_LIST);
}

HWND Host::editor() const {
  return visibleWindow("Current dipole");
}

HWND Host::coordinates() const {
  return visibleWindow("Dipole coordinate settings");
}

int Host::rows() const {
  return static_cast<int>(::SendMessageW(list(), LVM_GETITEMCOUNT, 0, 0));
}

std::string Host::cell(int row, int column) const {
  TCHAR text[300] = {};
  LVITEMW item = {};
  item.iSubItem = column;
  item.pszText = text;
  item.cchTextMax = 300;
  ::SendMessageW(list(), LVM_GETITEMTEXTW, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&item));
  return toUtf8(text);
}

int Host::image(int row) const {
  LVITEMW item = {};
  item.mask = LVIF_IMAGE;
  item.iItem = row;
  EXPECT_NE(::SendMessageW(list(), LVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&item)), 0);
  return item.iImage;
}

std::string Host::heading(int column) const {
  TCHAR text[100] = {};
  LVCOLUMNW description = {};
  description.mask = LVCF_TEXT;
  description.pszText = text;
  description.cchTextMax = 100;
  ::SendMessageW(list(), LVM_GETCOLUMNW, static_cast<WPARAM>(column), reinterpret_cast<LPARAM>(&description));
  return toUtf8(text);
}

std::vector<int> Host::selectedRows() const {
  std::vector<int> selected;
  for (int row = 0; row < rows(); ++row) {
    if ((::SendMessageW(list(), LVM_GETITEMSTATE, static_cast<WPARAM>(row), LVIS_SELECTED) & LVIS_SELECTED) !=
        0) {
      selected.push_back(row);
    }
  }
  return selected;
}

int Host::focusedRow() const {
  return static_cast<int>(::SendMessageW(list(), LVM_GETNEXTITEM, static_cast<WPARAM>(-1), LVNI_FOCUSED));
}

bool Host::isInSight(int row) const {
  RECT bounds = {};
  RECT view = {};
  RECT headings = {};
  bounds.left = LVIR_BOUNDS;
  ::SendMessageW(list(), LVM_GETITEMRECT, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&bounds));
  ::GetClientRect(list(), &view);
  ::GetClientRect(reinterpret_cast<HWND>(::SendMessageW(list(), LVM_GETHEADER, 0, 0)), &headings);
  return bounds.top >= headings.bottom && bounds.bottom <= view.bottom;
}

std::vector<std::string> Host::column(int column) const {
  std::vector<std::string> cells;
  for (int row = 0; row < rows(); ++row) {
    cells.push_back(cell(row, column));
  }
  return cells;
}

void Host::click(int row, bool control, bool shift) {
  const LPARAM point = pointOf(list(), row);
  const HeldKeys held(control, shift);
  // The list waits for the button to come up before it returns.
  ::PostMessageW(list(), WM_LBUTTONUP, 0, point);
  ::SendMessageW(list(), WM_LBUTTONDOWN, buttonFlags(control, shift), point);
  pump();
}

void Host::doubleClick(int row) {
  click(row);
  const LPARAM point = pointOf(list(), row);
  ::SendMessageW(list(), WM_LBUTTONDBLCLK, MK_LBUTTON, point);
  ::SendMessageW(list(), WM_LBUTTONUP, 0, point);
  pump();
}

void Host::rightClick(int row) {
  const LPARAM point = pointOf(list(), row);
  ::PostMessageW(list(), WM_RBUTTONUP, 0, point);
  ::SendMessageW(list(), WM_RBUTTONDOWN, MK_RBUTTON, point);
  pump();
}

void Host::key(UINT key, bool control, bool shift) {
  const HeldKeys held(control, shift);
  ::SetFocus(list());
  ::SendMessageW(list(), WM_KEYDOWN, key, 1);
  ::SendMessageW(list(), WM_KEYUP, key, 0xC0000001);
  pump();
}

void Host::selectOnly(int row) {
  LVITEMW item = {};
  item.stateMask = LVIS_SELECTED;
  ::SendMessageW(list(), LVM_SETITEMSTATE, static_cast<WPARAM>(-1), reinterpret_cast<LPARAM>(&item));
  item.state = LVIS_SELECTED;
  ::SendMessageW(list(), LVM_SETITEMSTATE, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&item));
}

void Host::clickHeading(int column) {
  const HWND header = reinterpret_cast<HWND>(::SendMessageW(list(), LVM_GETHEADER, 0, 0));
  RECT item = {};
  ::SendMessageW(header, HDM_GETITEMRECT, static_cast<WPARAM>(column), reinterpret_cast<LPARAM>(&item));
  const int place = ::GetScrollPos(list(), SB_HORZ);
  ::SendMessageW(list(), LVM_SCROLL, static_cast<WPARAM>(item.left - place), 0);
  const LPARAM point = MAKELPARAM((item.left + item.right) / 2, (item.top + item.bottom) / 2);
  ::SendMessageW(header, WM_LBUTTONDOWN, MK_LBUTTON, point);
  ::SendMessageW(header, WM_LBUTTONUP, 0, point);
  pump();
}

void Host::typeInList(char character) {
  ::SetFocus(list());
  ::SendMessageW(list(), WM_CHAR, static_cast<WPARAM>(character), 1);
  pump();
}

void Host::check(int box) {
  press(manager(), box);
  pump();
}

void Host::choose(UINT command) {
  ::SendMessageW(manager(), WM_COMMAND, command, 0);
  pump();
}

std::vector<int> Host::shown() const {
  std::vector<int> values;
  for (int slot = 0; slot < face->m_totalDipoles; ++slot) {
    values.push_back(dipole(slot).m_show);
  }
  return values;
}

std::vector<int> Host::selected() const {
  std::vector<int> slots;
  for (int slot = 0; slot < face->m_totalDipoles; ++slot) {
    if (dipole(slot).m_selected) {
      slots.push_back(slot);
    }
  }
  return slots;
}

std::vector<std::string> Host::labels() const {
  std::vector<std::string> values;
  for (int slot = 0; slot < face->m_totalDipoles; ++slot) {
    values.push_back(toUtf8(dipole(slot).m_label));
  }
  return values;
}

std::vector<int> Host::numbers() const {
  std::vector<int> values;
  for (int slot = 0; slot < face->m_totalDipoles; ++slot) {
    values.push_back(dipole(slot).m_number);
  }
  return values;
}

std::vector<Position> Host::positions() const {
  return positionsTold;
}

int Host::updates() const {
  return updatesTold;
}

bool Host::wasRepainted() {
  const bool due = ::GetUpdateRect(window.m_hWnd, nullptr, FALSE) != FALSE || window.m_paints > 0;
  window.UpdateWindow();
  window.m_paints = 0;
  return due;
}

void Host::forget() {
  positionsTold.clear();
  updatesTold = 0;
  wasRepainted();
}
