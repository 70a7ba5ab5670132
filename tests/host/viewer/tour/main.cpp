// A tour through the viewer: does what its user does, on its real windows, and takes a picture after each
// step.
//
//   dipole_tour FOLDER EXAMPLES HEAD PATIENT     folders with a separator at the end, FOLDER exists; HEAD is
//                                                the T1 head that the examples fit, PATIENT has what
//                                                tests/support/tour_heads.py made of it
//
// The pictures are numbered BMP files; index.html shows them, as PNG, with what was done. scripts/tour.sh
// runs it.
#include <array>
#include <cstdio>
#include <fstream>
#include <gtest/gtest.h>
#include <iostream>
#include <optional>
#include <vector>

#include "host/text/PathText.h"
#include "platform/Utf.h"
#include "tests/host/viewer/windows/ViewerUser.h"
#include "tests/platform/windows/Robot.h"
#include "tests/support/TempFolder.h"
#include "tests/ui/endurance/ReadyOperator.h"
#include "tests/ui/screens/Album.h"
#include "ui/resource.h"

namespace {

constexpr const char* viewerCaption = "Dipole Viewer";

// Where the windows stand: the viewer, and the module's beside it.
constexpr RECT viewerPlace = {0, 0, 1120, 880};
constexpr RECT managerPlace = {1124, 0, 1600, 440};
constexpr POINT editorPlace = {1124, 444};

void move(HWND window, const RECT& place) {
  ::SetWindowPos(window, HWND_TOP, place.left, place.top, place.right - place.left, place.bottom - place.top,
                 0);
}

// Answers file and colour dialogs. A message that nobody expects fails the tour: something went wrong.
class Files : public ReadyOperator {
 public:
  int answerMessage(LPCTSTR text, UINT type) override {
    ADD_FAILURE() << toUtf8(text);
    return ReadyOperator::answerMessage(text, type);
  }
};

// Answers questions with yes, but keeps no changes.
class Careless : public ReadyOperator {
 public:
  int answerMessage(LPCTSTR text, UINT type) override {
    const int answer = ReadyOperator::answerMessage(text, type);
    return (type & MB_TYPEMASK) == MB_YESNOCANCEL ? IDNO : answer;
  }
};

class Tour {
 public:
  Tour(std::string pictures, std::string examples, std::string head, std::string patient)
      : m_pictures(std::move(pictures)),
        m_examples(std::move(examples)),
        m_head(std::move(head)),
        m_patient(std::move(patient)),
        m_album(m_pictures) {}

  bool take();

 private:
  struct Step {
    std::string name;
    std::string text;
  };

  void openHead();
  void importDipoles();
  void step();
  void edit();
  void average();
  void color();
  void view();
  void look3D();
  void sort();
  void saveAndReopen();
  void undo();
  void otherFiles();
  void otherHeads();
  void hideFindings();
  void writeIndex() const;

  void keep(const std::string& name, const std::string& text, bool whole = false);
  void keepWindow(HWND window, const std::string& name, const std::string& text);
  std::string nextName(const std::string& name, const std::string& text);
  void selectRows(int first, int last);
  HWND moduleWindow(const char* captionStart);

  std::string m_pictures;
  std::string m_examples;
  std::string m_head;
  std::string m_patient;
  Album m_album;
  TempFolder m_folder;
  ViewerUser m_user;
  std::vector<Step> m_steps;
};

std::string Tour::nextName(const std::string& name, const std::string& text) {
  std::array<char, 8> number{};
  std::snprintf(number.data(), number.size(), "%02u-", static_cast<unsigned>(m_steps.size() + 1));
  m_steps.push_back({number.data() + name, text});
  std::cout << m_steps.back().name << ": " << text << '\n';
  return m_steps.back().name;
}

// `whole`: with the module's windows beside the viewer.
void Tour::keep(const std::string& name, const std::string& text, bool whole) {
  m_user.waitQuiet();
  RECT area = viewerPlace;
  if (whole) {
    area.right = managerPlace.right;
  }
  m_album.takeArea(area, nextName(name, text));
}

void Tour::keepWindow(HWND window, const std::string& name, const std::string& text) {
  m_album.takeInPlace(window, nextName(name, text));
}

struct CaptionSearch {
  std::string start;
  HWND found;
};

BOOL CALLBACK findCaption(HWND window, LPARAM parameter) {
  auto& search = *reinterpret_cast<CaptionSearch*>(parameter);
  if (::IsWindowVisible(window) != FALSE && captionOf(window).rfind(search.start, 0) == 0) {
    search.found = window;
  }
  return TRUE;
}

HWND Tour::moduleWindow(const char* captionStart) {
  CaptionSearch search = {captionStart, nullptr};
  ::EnumThreadWindows(::GetCurrentThreadId(), &findCaption, reinterpret_cast<LPARAM>(&search));
  return search.found;
}

void Tour::selectRows(int first, int last) {
  m_user.chooseRow(first);
  for (int row = first + 1; row <= last; ++row) {
    ListView_SetItemState(m_user.list(), row, LVIS_SELECTED, LVIS_SELECTED);
  }
  m_user.wait();
}

void Tour::openHead() {
  keep("start", "The viewer as it starts, with its phantom.");
  {
    Files files;
    files.file = fromUtf8(m_head);
    m_user.choose(ID_FILE_OPEN_MRI);
  }
  keep("mri", "File, Open MRI: a T1 head. Without fiducial points nobody knows where dipoles lie in it.");
  {
    Files files;
    files.file = fromUtf8(m_examples + "ch2.fiducials");
    m_user.choose(ID_REGISTER_FROM_FILE);
  }
  keep("registered",
       "Dipoles, Register to MRI, With Points from a File: nasion and ears give the head frame.");
}

void Tour::importDipoles() {
  Robot robot;
  robot.when(viewerCaption, [this](HWND message) {
    keepWindow(message, "import-message", "What the import tells when all dropped files have been read.");
    press(message, IDOK);
  });
  m_user.drop({m_examples + "spikes.dip"});
  keep("imported",
       "A CTF dipole file, dropped on the viewer: 120 interictal spikes. The crosshair is at the current "
       "dipole; squares lie within 5 mm of each slice.");
}

void Tour::step() {
  m_user.choose(ID_DIPOLES_MANAGER);
  move(m_user.manager(), managerPlace);
  m_user.chooseRow(20);
  keep("manager", "Dipoles, Dipole Manager: choosing a row moves the crosshair to its dipole.", true);
  for (int i = 0; i < 3; ++i) {
    ::SendMessageW(m_user.list(), WM_KEYDOWN, VK_DOWN, 1);
    m_user.wait();
  }
  keep("step", "Three times the arrow key in the list: three dipoles on.", true);
}

void Tour::edit() {
  m_user.choose(ID_DIPOLES_EDITOR);
  const HWND editor = moduleWindow("Current dipole");
  ::SetWindowPos(editor, HWND_TOP, editorPlace.x, editorPlace.y, 0, 0, SWP_NOSIZE);
  type(editor, IDC_EDITOR_LABEL, "spike onset");
  m_user.wait();
  press(editor, IDC_EDITOR_APPLY);
  m_user.dipoles().updateDipoleList();
  keep("edited", "Dipoles, Edit Dipole: a new name, applied; list and status bar say it.", true);
  ::ShowWindow(editor, SW_HIDE);
}

void Tour::average() {
  selectRows(30, 39);
  ::SendMessageW(m_user.manager(), WM_COMMAND, ID_DIPOLE_AVERAGE_AS, 0);
  keep("averaged",
       "Tools, Average As: the average of ten selected spikes, the last of the set now, and the current one.",
       true);
}

void Tour::color() {
  selectRows(0, 9);
  {
    Files colors;
    colors.color = RGB(0, 200, 255);
    ::SendMessageW(m_user.manager(), WM_COMMAND, ID_DIPOLE_COLOR_SELECTED, 0);
  }
  m_user.chooseRow(4);
  keep("colored", "Tools, Color Selected: the first ten dipoles in blue.", true);
  m_user.choose(ID_VIEW_COLOR_CLUSTER);
  keep("color-by-cluster", "View, Color by, Cluster, with its legend: dipoles that lie together.");
  m_user.choose(ID_VIEW_COLOR_ERROR);
  keep("color-by-error", "View, Color by, Fit Error, with its legend: the better the fit, the darker.");
}

void Tour::view() {
  m_user.setField(IDC_FILTER_ERROR_MOST, "10");
  keep("filtered", "Filter: dipoles with a fit error up to 10 percent only; the status bar counts them.");
  m_user.clickPanel(IDC_FILTER_CLEAR);
  m_user.setSlider(IDC_TOLERANCE, 11);
  keep("all-depths", "Slices show the dipoles of all depths.");
  m_user.setSlider(IDC_TOLERANCE, 4);
  m_user.choose(ID_VIEW_CURRENT_ONLY);
  keep("current-only", "View, Current Dipole Only.");
  m_user.choose(ID_VIEW_CURRENT_ONLY);
  m_user.choose(ID_VIEW_COLOR_OWN);
}

void Tour::look3D() {
  m_user.key(3, VK_SPACE);
  m_user.choose(ID_VIEW_FROM_LEFT);
  keep("3d-left", "The 3D pane alone, seen from the patient's left.");
  m_user.drag(3, CPoint(400, 400), CPoint(300, 340));
  keep("3d-turned", "Turned with the mouse: balls and arrows before and behind the slices.");
  m_user.key(3, VK_SPACE);
  m_user.choose(ID_VIEW_FROM_LEFT);
}

void Tour::sort() {
  const HWND header = reinterpret_cast<HWND>(::SendMessageW(m_user.list(), LVM_GETHEADER, 0, 0));
  constexpr int latencyColumn = 1;
  RECT item = {};
  ::SendMessageW(header, HDM_GETITEMRECT, latencyColumn, reinterpret_cast<LPARAM>(&item));
  const LPARAM at = MAKELPARAM(item.left + 10, (item.top + item.bottom) / 2);
  ::SendMessageW(header, WM_LBUTTONDOWN, MK_LBUTTON, at);
  ::SendMessageW(header, WM_LBUTTONUP, 0, at);
  keep("sorted", "A click on the heading Latency sorts the set.", true);
}

void Tour::saveAndReopen() {
  Files files;
  files.file = m_folder.path("monday.dipset");
  m_user.choose(ID_FILE_SAVE_SET);
  keep("saved", "File, Save Dipole Set: the star in the title is gone.");
  m_user.choose(ID_FILE_NEW_SET);
  keep("new-set", "File, New Dipole Set.", true);
  m_user.choose(ID_FILE_OPEN_SET);
  keep("reopened", "File, Open Dipole Set: everything is back, names and colours too.", true);
  files.file = fromUtf8(m_pictures + "saved-picture.png");
  m_user.choose(ID_FILE_SAVE_PICTURE);
}

void Tour::undo() {
  selectRows(0, 59);
  ::SendMessageW(m_user.manager(), WM_COMMAND, ID_DIPOLE_DELETE, 0);
  keep("deleted", "Tools, Delete: sixty dipoles are gone.", true);
  m_user.choose(ID_DIPOLES_UNDO);
  keep("undone", "Dipoles, Undo: they are back.", true);
}

void Tour::otherFiles() {
  Careless answers;
  ::ShowWindow(m_user.manager(), SW_HIDE);
  m_user.choose(ID_FILE_NEW_SET);
  m_user.drop({m_examples + "auditory.dip"});
  keep("auditory", "An auditory response: one dipole in each temporal lobe. R is the patient's right.");
  m_user.choose(ID_FILE_NEW_SET);
  m_user.drop({m_examples + "median.txt"});
  keep("median", "A 4D/MSI table: the right median nerve, in the left hand area; L is on the right.");
}

// Heads and dipole files of other programs.
void Tour::otherHeads() {
  Careless answers;
  m_user.choose(ID_FILE_NEW_SET);
  m_user.choose(ID_FILE_PHANTOM);
  m_user.drop({m_patient + "patient.dip"});
  hideFindings();
  keep("ctf-mri",
       "A CTF dipole file is dropped; the CTF MRI that it names lies beside it, is opened and registers "
       "itself.");
  m_user.choose(ID_FILE_NEW_SET);
  m_user.drop({m_patient + "again.dip"});
  hideFindings();
  m_user.session().setCrosshair({0, 0, 94});
  m_user.key(0, VK_UP);
  keep("file-fiducials",
       "The nasion was set anew since the fit: rings are the MRI's points, the diamond that of the dipole "
       "file.");
  m_user.choose(ID_FILE_NEW_SET);
  m_user.drop({m_examples + "auditory.dip"});
  answers.file = m_folder.path("mne.dip");
  m_user.frame().exportSet(m_folder.path("mne.dip"), host::ExportFormat::neuromag);
  m_user.choose(ID_FILE_NEW_SET);
  m_user.drop({m_patient + "head.mgz", m_folder.pathUtf8("mne.dip")});
  hideFindings();
  m_user.choose(ID_MNI_IS_COLIN27);
  m_user.choose(ID_ATLAS_AAL);
  keep(
      "mgz-mne",
      "An MGZ head and a dipole file of MNE, dropped together; below, the crosshair in head, scanner and MNI "
      "coordinates, and the label of an atlas.");
}

void Tour::hideFindings() {
  if (m_user.frame().findingsWindow().m_hWnd != nullptr) {
    m_user.frame().findingsWindow().ShowWindow(SW_HIDE);
  }
}

void Tour::writeIndex() const {
  std::ofstream page(m_pictures + "index.html", std::ios::binary);
  page << "<!DOCTYPE html>\n<html lang=\"en\"><head><meta charset=\"utf-8\"><title>Dipole Viewer: a "
          "tour</title>\n"
          "<style>body{font-family:sans-serif;max-width:1100px;margin:2em auto;background:#f4f5f7;color:#222}"
          "figure{margin:2em 0}img{max-width:100%;border:1px solid #888}figcaption{margin-top:.5em}</style>\n"
          "</head><body>\n<h1>Dipole Viewer: a tour</h1>\n";
  for (const Step& step : m_steps) {
    page << "<figure><img src=\"" << step.name << ".png\" alt=\"\"><figcaption>" << step.name << ". "
         << step.text << "</figcaption></figure>\n";
  }
  page << "</body></html>\n";
}

bool Tour::take() {
  move(m_user.frame().m_hWnd, viewerPlace);
  ::SetCursorPos(0, 0);
  openHead();
  importDipoles();
  step();
  edit();
  average();
  color();
  view();
  look3D();
  sort();
  saveAndReopen();
  undo();
  otherFiles();
  otherHeads();
  writeIndex();
  return m_album.isComplete() && !testing::Test::HasFailure();
}

}  // namespace

int main(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  if (argc != 5) {
    std::cerr << "usage: dipole_tour FOLDER EXAMPLES HEAD PATIENT\n";
    return 2;
  }
  return Tour(argv[1], argv[2], argv[3], argv[4]).take() ? 0 : 1;
}
