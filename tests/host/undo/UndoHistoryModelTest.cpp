// Ten thousand random commands, undos and redos against a model that keeps full copies of every state.
#include <gtest/gtest.h>
#include <memory>
#include <random>
#include <vector>

#include "collection/SelectedDipoles.h"
#include "tests/host/undo/WholeSet.h"

namespace {

using host::UndoHistory;

class RandomHistory {
 public:
  explicit RandomHistory(unsigned seed) : m_random(seed), m_set(filledSet(5)), m_history(*m_set) {
    m_last = wholeSet(*m_set);
    m_saved = currentBytes(*m_set);
  }

  void step() {
    const int choice = whole(0, 99);
    if (choice < 55) {
      change();
      if (whole(0, 9) > 0) {
        record();
      }
    } else if (choice < 80) {
      move(m_undo, m_redo, m_history.undo());
    } else {
      move(m_redo, m_undo, m_history.redo());
    }
    ASSERT_EQ(m_history.undoSteps(), m_undo.size());
    ASSERT_EQ(m_history.redoSteps(), m_redo.size());
    m_now = wholeSet(*m_set);
  }

  int undone = 0;
  int redone = 0;

 private:
  int whole(int low, int high) { return std::uniform_int_distribution<int>(low, high)(m_random); }
  int anySlot() { return whole(0, (std::max)(m_set->m_totalDipoles - 1, 0)); }

  DipoleSlots someSlots() {
    DipoleSlots slots;
    for (int slot = 0; slot < m_set->m_totalDipoles; ++slot) {
      if (whole(0, 2) == 0) {
        slots.push_back(slot);
      }
    }
    return slots;
  }

  CString anyText() {
    CString text;
    for (int length = whole(0, 20); length > 0; --length) {
      text += static_cast<TCHAR>(whole(0, 3) == 0 ? whole(0, 0xFFFF) : whole('a', 'c'));
    }
    return text;
  }

  void editAny() {
    CDipoleszq* dipole = m_set->getDipole(anySlot());
    if (dipole == nullptr) {
      return;
    }
    switch (whole(0, 6)) {
      case 0:
        dipole->m_latency = whole(-3, 3);
        break;
      case 1:
        dipole->m_location[whole(0, 2)] = whole(-3, 3) * 0.1;
        break;
      case 2:
        dipole->m_moment = -dipole->m_moment;
        break;
      case 3:
        dipole->m_rawOrientation.m_auxText = anyText();
        break;
      case 4:
        dipole->m_selected = !dipole->m_selected;
        break;
      case 5:
        dipole->m_listItemId = whole(0, 3);
        break;
      default:
        dipole->m_importTag2 += 1.0F;
    }
  }

  void change() {
    switch (whole(0, 17)) {
      case 0:
        return deleteDipoles(*m_set, someSlots());
      case 1:
        return static_cast<void>(m_set->deleteDipole(anySlot(), 0));
      case 2:
        return static_cast<void>(m_set->deleteCurrentDipole());
      case 3:
        return showDipoles(*m_set, someSlots(), whole(0, 1));
      case 4:
        return nameDipoles(*m_set, someSlots(), anyText());
      case 5:
        return colorDipoles(*m_set, someSlots(), static_cast<COLORREF>(whole(0, 2)));
      case 6:
        return static_cast<void>(addAverage(*m_set, someSlots()));
      case 7:
        return static_cast<void>(replaceByAverage(*m_set, someSlots()));
      case 8:
        m_set->reOrderDipoles();
        return static_cast<void>(m_set->sortDipoles(whole(0, 9)));
      case 9:
        return whole(0, 9) == 0 ? static_cast<void>(m_set->cleanDipoles()) : editAny();
      case 10:
        return load();
      case 11:
        // As some imports leave it: objects behind the count.
        m_set->m_totalDipoles -= m_set->m_totalDipoles > 3 ? 1 : 0;
        return;
      case 12:
        m_set->m_patient = anyText();
        m_set->setAllDipoleRotation(whole(0, 1), 0.0, whole(0, 1));
        return;
      case 13:
        return static_cast<void>(m_set->backupLocationRotationRaw());
      case 14:
      case 15:
        if (m_set->m_totalDipoles < 9) {
          m_set->addDipoleF(static_cast<float>(whole(-9, 9)), 1.0F, 0.0F);
        }
        return;
      default:
        return editAny();
    }
  }

  void load() {
    if (whole(0, 1) == 0) {
      m_saved = currentBytes(*m_set);
    } else {
      ASSERT_EQ(readCurrent(m_saved, *m_set), 1);
    }
  }

  // Rows, selection and the current dipole alone make no step.
  static bool isNoted(const WholeSet& before, const WholeSet& now) {
    for (const std::string& line : differences(before.lines, now.lines)) {
      if (line.find("m_listItemId") == std::string::npos && line.find("m_selected") == std::string::npos &&
          line.find("m_currentDipole") == std::string::npos) {
        return true;
      }
    }
    return false;
  }

  void record() {
    WholeSet now = wholeSet(*m_set);
    const bool isStep = isNoted(m_last, now);
    ASSERT_EQ(m_history.record(_T("Step")), isStep ? recordedStep : recordedNothing);
    if (isStep) {
      m_undo.push_back(std::move(m_last));
      m_last = std::move(now);
      m_redo.clear();
      if (m_undo.size() > UndoHistory::mostSteps) {
        m_undo.erase(m_undo.begin());
      }
    }
  }

  void move(std::vector<WholeSet>& from, std::vector<WholeSet>& to, UndoHistory::Moved outcome) {
    if (from.empty()) {
      ASSERT_EQ(outcome, UndoHistory::Moved::nothing);
      return;
    }
    ASSERT_EQ(outcome, moved);
    to.push_back(m_now);
    m_last = std::move(from.back());
    from.pop_back();
    ASSERT_TRUE(isSame(wholeSet(*m_set), m_last));
    ++(&from == &m_undo ? undone : redone);
  }

  std::mt19937 m_random;
  Set m_set;
  UndoHistory m_history;
  std::vector<WholeSet> m_undo;
  std::vector<WholeSet> m_redo;
  WholeSet m_last;                    // at the last record, undo or redo
  WholeSet m_now = wholeSet(*m_set);  // behind the last step
  std::string m_saved;
};

}  // namespace

TEST(UndoHistoryModel, TenThousandRandomSteps) {
  for (const unsigned seed : {1U, 2U, 3U, 4U}) {
    SCOPED_TRACE(seed);
    RandomHistory history(seed);
    for (int i = 0; i < 2500 && !HasFatalFailure(); ++i) {
      SCOPED_TRACE(i);
      history.step();
    }
    EXPECT_GT(history.undone, 400);
    EXPECT_GT(history.redone, 100);
  }
}
