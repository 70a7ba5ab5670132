#include "tests/host/viewer/endurance/ViewerMonkey.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <gtest/gtest.h>
#include <utility>

#include "host/dipoles/DipoleVisibility.h"
#include "platform/Utf.h"
#include "tests/platform/windows/Robot.h"
#include "ui/resource.h"

namespace {

constexpr int mostInBlock = 500;    // actions
constexpr int blocksOfAViewer = 4;  // then it is closed, and another one opened
constexpr int patience = 1000;      // dipoles; with more the monkey soon wants another set
constexpr long long storesOfTheSystem = 1024LL * 1024;  // bytes that the system may take once
constexpr long long leftByAnAction = 60;                // bytes: Wine's labels leave 24 each, for good
constexpr double reach = 300.0;                         // mm, of the crosshair
constexpr int standardWidth = 1280;
constexpr int standardHeight = 940;

}  // namespace

const MonkeyAction<ViewerMonkey> ViewerMonkey::actions[] = {
    {"click in a pane", 60, &ViewerMonkey::clickPane},
    {"drag in a pane", 40, &ViewerMonkey::dragPane},
    {"drag with the right button", 25, &ViewerMonkey::dragGreyOrZoom},
    {"pan", 20, &ViewerMonkey::panPane},
    {"wheel", 40, &ViewerMonkey::wheelPane},
    {"double click", 12, &ViewerMonkey::doubleClickPane},
    {"key in a pane", 50, &ViewerMonkey::keyInPane},
    {"point", 25, &ViewerMonkey::pointInPane},
    {"view command", 50, &ViewerMonkey::viewCommand},
    {"register", 25, &ViewerMonkey::registerCommand},
    {"dipole command", 35, &ViewerMonkey::dipoleCommand},
    {"help", 3, &ViewerMonkey::helpCommand},
    {"undo or redo", 40, &ViewerMonkey::undoOrRedo},
    {"undo, then redo", 20, &ViewerMonkey::undoThenRedo},
    {"type in the panel", 35, &ViewerMonkey::typeInPanel},
    {"slider", 20, &ViewerMonkey::moveSlider},
    {"colour by", 15, &ViewerMonkey::colourBy},
    {"check box of the panel", 25, &ViewerMonkey::checkBoxOfPanel},
    {"clear filter", 15, &ViewerMonkey::clearFilter},
    {"import", 25, &ViewerMonkey::importFiles},
    {"open MRI", 4, &ViewerMonkey::openMri},
    {"new set", 8, &ViewerMonkey::newSet},
    {"open set", 12, &ViewerMonkey::openSet},
    {"open recent set", 8, &ViewerMonkey::openRecent},
    {"open large set", 2, &ViewerMonkey::openLargeSet},
    {"save set", 15, &ViewerMonkey::saveSet},
    {"export", 6, &ViewerMonkey::exportSet},
    {"save picture", 4, &ViewerMonkey::savePicture},
    {"drop files", 8, &ViewerMonkey::dropFiles},
    {"open manager", 15, &ViewerMonkey::openManager},
    {"open editor", 10, &ViewerMonkey::openEditor},
    {"open coordinates", 5, &ViewerMonkey::openCoordinates},
    {"choose a row", 45, &ViewerMonkey::chooseRow},
    {"command of the manager", 30, &ViewerMonkey::commandOfManager},
    {"check box of the manager", 8, &ViewerMonkey::checkBoxOfManager},
    {"name", 6, &ViewerMonkey::nameSelected},
    {"heading", 12, &ViewerMonkey::sortByHeading},
    {"button of the editor", 25, &ViewerMonkey::pressInEditor},
    {"type in the editor", 15, &ViewerMonkey::typeInEditor},
    {"coordinates", 8, &ViewerMonkey::pressInCoordinates},
    {"close a window", 12, &ViewerMonkey::closeModuleWindow},
    {"resize", 12, &ViewerMonkey::resize},
    {"minimise", 3, &ViewerMonkey::minimiseAndRestore},
    {"close the viewer", 3, &ViewerMonkey::closeViewer},
    {"wait", 5, &ViewerMonkey::waitQuiet},
};

ViewerMonkey::ViewerMonkey(unsigned seed, std::string examples, std::string head)
    : m_chance(seed),
      m_examples(std::move(examples)),
      m_head(std::move(head)),
      m_operator(m_chance, m_folder),
      m_user(std::make_unique<ViewerUser>()) {
  ::SetCursorPos(1, 1);  // nothing is to happen because it lies over something
  makeFiles();
}

ViewerMonkey::~ViewerMonkey() = default;

void ViewerMonkey::runAction(int number) {
  if (m_user->dipoles().m_totalDipoles > patience && m_chance.oneIn(12)) {
    newSet();
  }
  const MonkeyAction<ViewerMonkey>& action = anyAction(actions, m_chance);
  m_operator.files.clear();
  m_done.act(*this, action);
  checkViewer();
  if (hasFailed()) {
    std::printf("action %d, \"%s\", on %d dipoles\n", number, action.name,
                m_user->isOpen() ? m_user->dipoles().m_totalDipoles : -1);
  }
}

bool ViewerMonkey::run(int count, int minutes) {
  const ULONGLONG end = ::GetTickCount64() + static_cast<ULONGLONG>(minutes) * 60000;
  const int inBlock = std::clamp(count / 3, 1, mostInBlock);
  int done = 0;
  while (done < count && ::GetTickCount64() < end && !hasFailed()) {
    runAction(++done);
    if (done % inBlock == 0 && !hasFailed()) {
      endBlock(done);
      if (done / inBlock % blocksOfAViewer == 0) {
        m_user.reset();
        pump();
        compareUse(MonkeyUse(), *m_firstClosed, "closed", done);
        m_user = std::make_unique<ViewerUser>();
      }
    }
  }
  m_done.print();
  std::printf("%d actions, %d messages answered\n", done, m_operator.messages);
  return !hasFailed();
}

// With one small set, its manager, its editors and its coordinates open. The first counts are what the others
// are compared with: that without a viewer, behind one that was used, and that of the new one after it.
void ViewerMonkey::endBlock(int done) {
  toStandard();
  checkViewer();
  if (m_firstOpen == nullptr) {
    m_user.reset();
    pump();
    m_firstClosed = std::make_unique<MonkeyUse>();
    compareUse(*m_firstClosed, *m_firstClosed, "closed", done);
    m_user = std::make_unique<ViewerUser>();
    toStandard();
    m_firstOpen = std::make_unique<MonkeyUse>();
  }
  compareUse(MonkeyUse(), *m_firstOpen, "open", done);
}

void ViewerMonkey::compareUse(const MonkeyUse& now, const MonkeyUse& first, const char* when, int done) {
  now.print(std::to_string(done) + " actions, viewer " + when + ", " + std::to_string(privateBytes() / 1024) +
            " kB");
  now.expectNoMoreThan(first, storesOfTheSystem + leftByAnAction * done);
}

void ViewerMonkey::toStandard() {
  m_operator.keepsNothing = true;
  host::MainFrame& frame = m_user->frame();
  frame.ShowWindow(SW_SHOWNORMAL);
  showAllPanes();
  // The largest picture of each pane once, of the largest set in all depths, so that the memory that panes
  // keep for the next picture is there in every count.
  m_user->choose(ID_FILE_NEW_SET);
  m_user->choose(ID_FILE_PHANTOM);
  m_user->session().resetView();
  m_user->session().view().toleranceMm.reset();
  frame.openFiles({m_folder.path("large.dipset")});
  frame.SetWindowPos(nullptr, 0, 0, 1600, 1200, SWP_NOMOVE | SWP_NOZORDER);
  if (::IsWindowVisible(m_user->panel()) != FALSE) {
    m_user->choose(ID_VIEW_PANEL);
  }
  for (int pane = 0; pane < host::MainFrame::paneCount; ++pane) {
    m_user->key(pane, VK_SPACE);
    m_user->key(pane, VK_SPACE);
  }
  m_user->choose(ID_VIEW_PANEL);
  frame.SetWindowPos(nullptr, 0, 0, standardWidth, standardHeight, SWP_NOMOVE | SWP_NOZORDER);
  m_user->choose(ID_FILE_NEW_SET);
  m_user->choose(ID_FILE_PHANTOM);
  m_user->session().resetView();
  m_user->drop({m_examples + "auditory.dip"});
  m_user->choose(ID_DIPOLES_MANAGER);
  ::SendMessageW(m_user->manager(), WM_COMMAND, ID_DIPOLE_EDIT, 0);
  m_user->choose(ID_DIPOLES_EDITOR);
  m_user->choose(ID_DIPOLES_COORDINATES);
  m_user->waitQuiet();
  m_operator.keepsNothing = false;
}

// A pane that is hidden keeps what it last drew, a head too.
void ViewerMonkey::showAllPanes() {
  for (int pane = 0; pane < host::MainFrame::paneCount; ++pane) {
    const bool isAlone =
        m_user->frame().pane(pane).IsWindowVisible() != FALSE &&
        m_user->frame().pane((pane + 1) % host::MainFrame::paneCount).IsWindowVisible() == FALSE;
    if (isAlone) {
      m_user->key(pane, VK_SPACE);
    }
  }
  for (int pane = 0; pane < host::MainFrame::paneCount; ++pane) {
    EXPECT_TRUE(m_user->frame().pane(pane).IsWindowVisible());
  }
}

void ViewerMonkey::checkViewer() {
  ASSERT_TRUE(m_user->isOpen());
  for (const CString& text : m_operator.broken) {
    ADD_FAILURE() << "a window failed: " << toUtf8(text);
  }
  const host::Vector3 at = m_user->session().crosshair();
  for (const double coordinate : {at.x, at.y, at.z}) {
    EXPECT_LE(std::abs(coordinate), reach);  // false for what is no number
  }
  const bool hasStar = m_user->title().find(" * - ") != std::string::npos;
  EXPECT_EQ(hasStar, m_user->session().isUnsaved()) << m_user->title();
  EXPECT_EQ(::GetCapture(), nullptr);
  checkCounts();
  checkManager();
}

void ViewerMonkey::checkCounts() {
  const CDipoleFacezq& set = m_user->dipoles();
  int there = 0;
  for (int slot = 0; slot < set.m_totalDipoles; ++slot) {
    there += set.getDipole(slot) != nullptr ? 1 : 0;
  }
  const host::VisibleCount count = host::countVisible(set, m_user->session().view());
  EXPECT_EQ(count.total, there);
  const std::string text =
      "Dipoles shown: " + std::to_string(count.shown) + " of " + std::to_string(count.total);
  EXPECT_EQ(m_user->status(host::MainFrame::countPart).rfind(text, 0), 0U)
      << m_user->status(host::MainFrame::countPart) << " instead of " << text;
  const bool isTold =
      m_user->status(host::MainFrame::countPart).find("MRI NOT REGISTERED") != std::string::npos;
  EXPECT_EQ(isTold, !m_user->session().head().isRegistered());
  if (const CDipoleszq* const current = set.getCurrentDipole()) {
    const std::string dipole = "Dipole " + std::to_string(set.m_currentDipole + 1) + " of ";
    EXPECT_EQ(m_user->status(host::MainFrame::dipolePart).rfind(dipole, 0), 0U)
        << m_user->status(host::MainFrame::dipolePart) << " instead of " << dipole
        << toUtf8(current->m_label);
  }
}

// Whatever changes the set fills the list anew.
void ViewerMonkey::checkManager() {
  if (isManagerOpen()) {
    EXPECT_EQ(ListView_GetItemCount(m_user->list()), m_user->dipoles().m_totalDipoles);
  }
}
