// Long random sessions against a plain model: a list of states, the place in it, and what was saved.
#include <gtest/gtest.h>
#include <optional>
#include <random>
#include <vector>

#include "collection/SelectedDipoles.h"
#include "host/session/Session.h"
#include "tests/host/undo/WholeSet.h"
#include "tests/support/TempFolder.h"

namespace {

using host::Session;

class Model {
 public:
  explicit Model(unsigned seed) : m_random(seed), m_set(filledSet(4)), m_session(*m_set) { restart(); }

  void step() {
    switch (pick(12)) {
      case 0:
        return undo();
      case 1:
        return redo();
      case 2:
        return save();
      case 3:
        return pick(4) == 0 ? open() : undo();
      case 4:
        return pick(8) == 0 ? empty() : redo();
      default:
        return command();
    }
  }

  void check() {
    ASSERT_TRUE(isSame(wholeSet(*m_set), m_states[m_place]));
    ASSERT_EQ(m_session.isUnsaved(), m_saved != m_place);
    ASSERT_EQ(m_session.history().undoSteps(), m_place);
    ASSERT_EQ(m_session.history().redoSteps(), m_states.size() - 1 - m_place);
  }

 private:
  int pick(int count) { return std::uniform_int_distribution(0, count - 1)(m_random); }
  int slot() { return m_set->m_totalDipoles > 0 ? pick(m_set->m_totalDipoles) : 0; }

  // The set as it is has no history and is saved.
  void restart() {
    m_states = {wholeSet(*m_set)};
    m_place = 0;
    m_saved = 0;
  }

  void change() {
    const int one = slot();
    switch (pick(9)) {
      case 0:
        m_set->addDipole();
        break;
      case 1:
        deleteDipoles(*m_set, {one});
        break;
      case 2:
        colorDipoles(*m_set, {one}, RGB(pick(256), pick(256), pick(256)));
        break;
      case 3:
        m_set->sortDipoles(pick(10));
        break;
      case 4:
        m_set->setDipoleLocation(one, static_cast<float>(pick(100)), 1, 2);
        break;
      case 5:
        addAverage(*m_set, {one});
        break;
      case 6:
        m_set->deleteDipole(one, 0);
        break;
      case 7:
        m_set->reOrderDipoles();
        break;
      default:
        m_set->m_mergeRadius = static_cast<float>(pick(5));
    }
  }

  void command() {
    const int current = m_set->m_currentDipole;
    change();
    if (!m_session.noteChange()) {
      m_set->m_currentDipole = current;  // at most this one differs, and no state knows of it
      return;
    }
    m_states.resize(m_place + 1);
    if (m_saved && *m_saved > m_place) {
      m_saved.reset();
    }
    m_states.push_back(wholeSet(*m_set));
    ++m_place;
    if (m_states.size() > host::UndoHistory::mostSteps + 1) {
      m_states.erase(m_states.begin());
      --m_place;
      m_saved = m_saved && *m_saved > 0 ? std::optional(*m_saved - 1) : std::nullopt;
    }
  }

  void undo() {
    m_session.undo();
    m_place -= m_place > 0 ? 1 : 0;
  }

  void redo() {
    m_session.redo();
    m_place += m_place + 1 < m_states.size() ? 1 : 0;
  }

  void save() {
    m_session.saveSet(m_folder.path("a.dipset"));
    m_saved = m_place;
    m_savedBytes = currentBytes(*m_set);
    EXPECT_EQ(m_folder.read("a.dipset"), m_savedBytes);
  }

  void open() {
    if (m_savedBytes.empty()) {
      return;
    }
    m_session.openSet(m_folder.path("a.dipset"));
    EXPECT_EQ(currentBytes(*m_set), m_savedBytes);
    restart();
  }

  void empty() {
    m_session.newSet();
    EXPECT_EQ(m_set->m_totalDipoles, 0);
    restart();
  }

  std::mt19937 m_random;
  Set m_set;
  Session m_session;
  ScriptedOperator m_user;
  TempFolder m_folder;
  std::vector<WholeSet> m_states;
  std::size_t m_place = 0;
  std::optional<std::size_t> m_saved;
  std::string m_savedBytes;
};

}  // namespace

TEST(SessionModel, RandomSessionsAgreeWithTheModel) {
  for (unsigned seed = 1; seed <= 6; ++seed) {
    SCOPED_TRACE(testing::Message() << "seed " << seed);
    Model model(seed);
    for (int step = 0; step < 250 && !testing::Test::HasFailure(); ++step) {
      SCOPED_TRACE(testing::Message() << "step " << step);
      model.step();
      model.check();
    }
  }
}
