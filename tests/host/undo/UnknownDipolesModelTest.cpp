// What is unknown follows its dipoles through random commands, undos and redos, as a model has it that knows
// dipoles by a number of their own.
#include <gtest/gtest.h>
#include <map>
#include <memory>
#include <random>
#include <vector>

#include "host/undo/UndoHistory.h"
#include "tests/file/SetFixture.h"
#include "tests/host/undo/Selecting.h"

namespace {

using host::DipoleValue;
using host::UndoHistory;

constexpr int mostDipoles = 40;

class RandomCommands {
 public:
  explicit RandomCommands(unsigned seed)
      : m_random(seed), m_set(std::make_unique<CDipoleFace9File>()), m_history(*m_set) {}

  void step() {
    if (m_isRecorded && below(4) == 0) {
      below(2) == 0 ? move(m_undo, m_redo, m_history.undo()) : move(m_redo, m_undo, m_history.redo());
    } else {
      command();
      if (!m_isRecorded && below(3) > 0) {
        record();
      }
    }
    compare();
  }

  int averages = 0;
  int unknownSeen = 0;
  int moved = 0;

 private:
  // Of a dipole, by its m_id: a sum of DipoleValues.
  using Masks = std::map<int, int>;

  int below(int end) { return std::uniform_int_distribution<int>(0, end - 1)(m_random); }

  DipoleSlots someSlots() {
    DipoleSlots slots;
    for (int slot = 0; slot < m_set->m_totalDipoles; ++slot) {
      if (below(4) == 0) {
        slots.push_back(slot);
      }
    }
    return slots;
  }

  void command() {
    switch (below(9)) {
      case 0:
      case 1:
        return add();
      case 2:
        return mark();
      case 3:
        return changed([&] { deleteDipoles(*m_set, someSlots()); });
      case 4:
        return changed([&] { m_set->sortDipoles(below(10)); });
      case 5:
        return average(addAverage);
      case 6:
        return average(replaceByAverage);
      case 7:
        return edit();
      default:
        return changed([&] { below(10) == 0 ? m_set->cleanDipoles() : m_set->deleteCurrentDipole(); });
    }
  }

  template <typename Work>
  void changed(Work work) {
    work();
    m_isRecorded = false;
  }

  void add() {
    if (m_set->m_totalDipoles >= mostDipoles) {
      return;
    }
    changed([&] { m_set->addDipole(); });
    CDipoleszq& dipole = *m_set->getCurrentDipole();
    dipole.m_id = ++m_lastId;
    dipole.m_location[0] = below(1000) / 7.0;
    dipole.m_latency = below(5);
    dipole.m_moment = below(100);
  }

  void mark() {
    record();  // a mark is a command of the host, which takes note before
    host::UnknownValues values;
    for (const int slot : someSlots()) {
      const int mask = below(32);
      values.markAll(slot, static_cast<std::uint8_t>(mask));
      m_masks[m_set->m_dipoles[slot]->m_id] |= mask;
    }
    m_history.unknown().mark(*m_set, values);
    m_isRecorded = false;
    record();
  }

  // As the manager does it: the selection is known for a while, then only the average is selected.
  void average(bool (*make)(CDipoleFace&, const DipoleSlots&)) {
    const DipoleSlots slots = someSlots();
    select(*m_set, slots);
    m_isRecorded = false;
    record();
    int mask = 0;
    for (const int slot : slots) {
      mask |= m_masks[m_set->m_dipoles[slot]->m_id];
    }
    if (m_set->m_totalDipoles >= mostDipoles || !make(*m_set, slots)) {
      m_isRecorded = false;
      return record();
    }
    select(*m_set, {m_set->m_currentDipole});
    m_set->getCurrentDipole()->m_id = ++m_lastId;
    m_masks[m_lastId] = mask & ~16;  // the label is the module's
    m_isRecorded = false;
    record();
    ++averages;
  }

  void edit() {
    if (m_set->m_totalDipoles == 0) {
      return;
    }
    CDipoleszq& dipole = *m_set->m_dipoles[below(m_set->m_totalDipoles)];
    int& mask = m_masks[dipole.m_id];
    m_isRecorded = false;
    switch (below(6)) {
      case 0:
        dipole.m_latency += 1.0;
        mask &= ~1;
        return;
      case 1:
        dipole.m_fitError += 1.0;
        mask &= ~2;
        return;
      case 2:
        dipole.m_moment += 1.0;
        mask &= ~4;
        return;
      case 3:
        dipole.m_orientation[below(3)] += 1.0;
        mask &= ~8;
        return;
      case 4:
        dipole.m_label.Format(_T("named %d"), ++m_lastId);
        mask &= ~16;
        return;
      default:
        dipole.m_location[0] += 1.0;
    }
  }

  void record() {
    if (m_isRecorded) {
      return;
    }
    m_isRecorded = true;
    if (m_history.record(_T("Step")) == UndoHistory::Recorded::step) {
      m_undo.push_back(m_recorded);
      m_redo.clear();
      if (m_undo.size() > UndoHistory::mostSteps) {
        m_undo.erase(m_undo.begin());
      }
    }
    m_recorded = m_masks;
  }

  void move(std::vector<Masks>& from, std::vector<Masks>& to, UndoHistory::Moved outcome) {
    ASSERT_EQ(outcome, from.empty() ? UndoHistory::Moved::nothing : UndoHistory::Moved::done);
    if (from.empty()) {
      return;
    }
    to.push_back(m_masks);
    m_masks = std::move(from.back());
    from.pop_back();
    m_recorded = m_masks;
    ++moved;
  }

  void compare() {
    const host::UnknownValues bySlot = m_history.unknown().in(*m_set);
    for (int slot = 0; slot < m_set->m_totalDipoles; ++slot) {
      const CDipoleszq& dipole = *m_set->m_dipoles[slot];
      ASSERT_EQ(int{m_history.unknown().of(dipole)}, m_masks[dipole.m_id]) << "id " << dipole.m_id;
      ASSERT_EQ(int{bySlot.of(slot)}, m_masks[dipole.m_id]);
      unknownSeen += m_masks[dipole.m_id] != 0 ? 1 : 0;
    }
  }

  std::mt19937 m_random;
  Set m_set;
  UndoHistory m_history;
  Masks m_masks;
  Masks m_recorded;
  std::vector<Masks> m_undo;
  std::vector<Masks> m_redo;
  int m_lastId = 0;
  bool m_isRecorded = true;
};

}  // namespace

TEST(UnknownDipolesModel, TwentyThousandRandomSteps) {
  int averages = 0;
  int unknownSeen = 0;
  int moved = 0;
  for (unsigned seed = 1; seed <= 10 && !HasFatalFailure(); ++seed) {
    SCOPED_TRACE(seed);
    RandomCommands commands(seed);
    for (int i = 0; i < 2000 && !HasFatalFailure(); ++i) {
      SCOPED_TRACE(i);
      commands.step();
    }
    averages += commands.averages;
    unknownSeen += commands.unknownSeen;
    moved += commands.moved;
  }
  EXPECT_GT(averages, 500);
  EXPECT_GT(unknownSeen, 10000);
  EXPECT_GT(moved, 500);
}
