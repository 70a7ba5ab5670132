#include "tests/ui/endurance/Monkey.h"

#include <algorithm>
#include <cstdio>
#include <gtest/gtest.h>

#include "ui/resource.h"

namespace {

constexpr int mostBetweenCounts = 1000;  // actions
constexpr int patience = 1000;           // dipoles; with more of them the monkey soon wants another set
constexpr long long storesOfTheSystem = 200LL * 1024;  // bytes that the system may take once
constexpr long long leftByAnAction = 50;               // bytes: Wine's labels leave 24 each, for good

}  // namespace

const MonkeyAction<Monkey> Monkey::actions[] = {
    {"click", 160, &Monkey::clickRow},
    {"double click", 20, &Monkey::doubleClickRow},
    {"right click", 10, &Monkey::rightClickRow},
    {"key", 160, &Monkey::pressKey},
    {"select all", 25, &Monkey::selectAll},
    {"type a number", 3, &Monkey::typeNumber},
    {"heading", 40, &Monkey::clickHeading},
    {"show or hide", 50, &Monkey::showOrHide},
    {"show or hide all", 20, &Monkey::showOrHideAll},
    {"delete", 25, &Monkey::deleteSelected},
    {"current only", 20, &Monkey::toggleCurrentOnly},
    {"check box", 20, &Monkey::checkBox},
    {"average as", 15, &Monkey::average},
    {"average zip", 10, &Monkey::averageZip},
    {"name", 12, &Monkey::nameSelected},
    {"colour", 20, &Monkey::colorSelected},
    {"import", 8, &Monkey::import},
    {"export", 6, &Monkey::exportSet},
    {"close", 10, &Monkey::closeManager},
    {"open", 15, &Monkey::openManager},
    {"resize", 20, &Monkey::resizeManager},
    {"open editor", 20, &Monkey::openEditor},
    {"next or previous", 40, &Monkey::stepEditor},
    {"add in editor", 30, &Monkey::addInEditor},
    {"delete in editor", 20, &Monkey::deleteInEditor},
    {"type in editor", 40, &Monkey::typeInEditor},
    {"type merge radius", 20, &Monkey::typeRadius},
    {"button of editor", 25, &Monkey::pressInEditor},
    {"coordinates", 20, &Monkey::useCoordinates},
    {"host adds", 30, &Monkey::addByHost},
    {"host changes", 25, &Monkey::changeByHost},
    {"host cleans", 4, &Monkey::cleanByHost},
    {"new set", 12, &Monkey::newSet},
    {"new set under a dialog", 2, &Monkey::newSetInDialog},
    {"copy", 6, &Monkey::copySet},
    {"swap copies", 6, &Monkey::swapCopies},
    {"drop copy", 6, &Monkey::dropCopy},
};

Monkey::Monkey(unsigned seed, std::string examples) : m_chance(seed), m_examples(std::move(examples)) {
  ::SetCursorPos(1, 1);  // nothing is to happen because it lies over something
  makeSet(10);
}

Monkey::~Monkey() = default;

bool Monkey::run(int count) {
  const int betweenCounts = std::clamp(count / 4, 1, mostBetweenCounts);
  for (int i = 1; i <= count && !hasFailed(); ++i) {
    if (m_host.face->m_totalDipoles > patience && m_chance.oneIn(12)) {
      makeSet(10);
    }
    const MonkeyAction<Monkey>& action = anyAction(actions, m_chance);
    m_done.act(*this, action);
    expectWhole(*m_host.face);
    if (m_copy) {
      expectWhole(*m_copy);
      EXPECT_EQ(m_copy->m_totalDipoles, m_copyTotal);
    }
    if (hasFailed()) {
      std::printf("action %d, \"%s\", on %d dipoles\n", i, action.name, m_host.face->m_totalDipoles);
    } else if (i % betweenCounts == 0) {
      countUse(i);
    }
  }
  m_done.print();
  return !hasFailed();
}

// With one small set, its manager and its editors open, nothing else is there; the first count is what the
// others are compared with.
void Monkey::countUse(int done) {
  m_copy.reset();
  makeSet(10);
  m_host.choose(ID_DIPOLE_EDIT);
  m_host.face->dipoleEdit(&m_host.window);
  m_host.face->setDipoleCoordinate(&m_host.window);
  pump();
  const MonkeyUse now;
  now.print(std::to_string(done) + " actions, " + std::to_string(m_setsMade) + " sets");
  if (!m_use) {
    m_use = std::make_unique<MonkeyUse>(now);
    return;
  }
  EXPECT_EQ(now.windows, m_use->windows);
  now.expectNoMoreThan(*m_use, storesOfTheSystem + leftByAnAction * done);
}

bool Monkey::isListOpen() const {
  return m_host.face->getDlgDipoleList() != nullptr && ::IsWindowVisible(m_host.manager()) != FALSE;
}

void Monkey::makeSet(int dipoles) {
  ++m_setsMade;
  m_host.face.reset();
  m_host.face = std::make_unique<CDipoleFacezq>();
  m_host.face->setCbfUpdateViewers(&countUpdate);
  m_host.addDipoles(dipoles);
  m_host.openManager();
  expectRefilled();
}

void Monkey::expectRefilled() {
  expectFilled(m_host);
  expectCaption(m_host);
}

// Every command fills the list and tells the host once.
void Monkey::command(UINT id) {
  m_host.forget();
  m_host.choose(id);
  EXPECT_EQ(m_host.updates(), 1) << id;
  expectRefilled();
}
