#include "tests/ui/screens/RestingFilm.h"

#include <gtest/gtest.h>

#include "platform/Utf.h"
#include "tests/ui/endurance/ReadyOperator.h"
#include "tests/ui/windows/Pointer.h"
#include "ui/resource.h"

namespace {

using Rows = std::vector<int>;

constexpr DWORD twoSeconds = 2000;

class RestingFilm {
 public:
  RestingFilm(Album& album, const std::string& set) : m_album(album) {
    const ReadyOperator ready;
    CString path = fromUtf8(set);
    m_host.face->importDipoleX(path, false);
    m_host.face->setCurrentDipole(4);
  }

  void take() {
    opening();
    choosing();
    typing();
  }

 private:
  void opening();
  void choosing();
  void typing();
  void takeBoth(const std::string& name);
  RECT area() const;

  Album& m_album;
  Host m_host;
};

// The manager, and the editor where it is open.
RECT RestingFilm::area() const {
  RECT area = {};
  ::GetWindowRect(m_host.manager(), &area);
  if (const HWND editor = m_host.editor()) {
    RECT beside = {};
    ::GetWindowRect(editor, &beside);
    ::UnionRect(&area, &area, &beside);
  }
  return area;
}

void RestingFilm::takeBoth(const std::string& name) {
  m_album.takeWithPointer(area(), name);
  EXPECT_GT(rest(m_host.list(), twoSeconds), 0) << name << ": the pointer does not rest on the list";
  m_album.takeWithPointer(area(), name + "-later");
}

void RestingFilm::opening() {
  m_host.openManager();
  ::SetWindowPos(m_host.manager(), HWND_TOP, 20, 20, 0, 0, SWP_NOSIZE);
  const POINT place = placeOfRow(m_host, 1);
  m_host.choose(ID_DIPOLE_EXIT);
  movePointer(place);
  m_host.openManager();
  takeBoth("resting-opened");
  EXPECT_EQ(m_host.face->getCurrentDipoleID(), 4);
  EXPECT_EQ(m_host.focusedRow(), 4);
  EXPECT_EQ(m_host.selectedRows(), Rows{});
}

void RestingFilm::choosing() {
  bool control = false;
  for (const int row : {0, 2, 3}) {
    movePointer(placeOfRow(m_host, row));
    clickThere(control);
    control = true;
  }
  takeBoth("resting-chosen");
  EXPECT_EQ(m_host.selectedRows(), (Rows{0, 2, 3}));
  EXPECT_EQ(m_host.face->getCurrentDipoleID(), 3);
}

void RestingFilm::typing() {
  m_host.choose(ID_DIPOLE_EDIT);
  const HWND editor = m_host.editor();
  RECT manager = {};
  ::GetWindowRect(m_host.manager(), &manager);
  ::SetWindowPos(editor, HWND_TOP, manager.left, manager.bottom + 10, 0, 0, SWP_NOSIZE);
  movePointer(placeOfRow(m_host, 1));
  type(editor, IDC_EDITOR_LABEL, "left temp");
  takeBoth("resting-typing");
  EXPECT_EQ(::GetFocus(), ::GetDlgItem(editor, IDC_EDITOR_LABEL));
  EXPECT_EQ(textOf(editor, IDC_EDITOR_LABEL), "left temp");
  EXPECT_EQ(m_host.selectedRows(), (Rows{0, 2, 3}));
}

}  // namespace

void filmRestingPointer(Album& album, const std::string& set) {
  RestingFilm(album, set).take();
}
