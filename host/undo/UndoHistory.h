// Undo and redo of whatever changes in one collection: every member of every dipole, what of it is unknown,
// the order, empty slots, what imports left behind the count, and the set-wide members. Callbacks, the
// manager's title and the parent window belong to the host and stay out of it.
//
// The host calls record after each command, with its name; the history compares the set with what it was at
// the last call and keeps the difference. undo and redo bring back a whole state, bit by bit, whatever
// happened to the set since: what was changed without record comes back with the opposite step.
//
// A dipole that was deleted and comes back is a new object with the same values: pointers into the set do not
// survive, and a copy of the collection (collection/DipoleFace.h) keeps the old object.
//
// No exception leaves it, but from the constructor, clear and startFrom, which throw what an allocation
// throws. Without memory nothing has changed, neither in the set nor in the history.
#pragma once

#include <afxwin.h>

#include <cstddef>
#include <cstdint>
#include <vector>

#include "host/undo/SetDifference.h"

namespace host {

class UndoHistory {
 public:
  static constexpr std::size_t mostSteps = 100;
  // Memory for the steps and for the image of the set as it was last known. While one of the operations runs
  // it works on two more images, about 12 MB each for a full set with short labels.
  static constexpr std::size_t usualBudget = std::size_t{208} * 1024 * 1024;

  enum class Recorded {
    nothing,   // no difference, or only in list rows, selection and current dipole: those alone make no step
    step,      // from now on this can be undone; what could be redone is forgotten
    tooLarge,  // the step alone is beyond the budget: there is nothing left to undo
    noMemory   // the next step will hold this change too
  };
  enum class Moved {
    done,
    nothing,  // no step in this direction
    noMemory  // the set is as it was; the user may try again
  };

  // The set as it is now is the first state. It must live as long as the history is used.
  explicit UndoHistory(DipoleSet& set, std::size_t budget = usualBudget);

  // Forgets all steps and starts anew with the set as it is.
  void clear();
  // Brings the set to a state that is no step of its history, and starts anew with it. Throws what an
  // allocation throws; nothing has changed then.
  void startFrom(SetImage target);

  // What of the dipoles is unknown; part of every state. record follows what a command did to it.
  UnknownDipoles& unknown() { return m_unknown; }
  const UnknownDipoles& unknown() const { return m_unknown; }

  // `name`: of the command, as a menu names it, such as "Delete"; when empty, nameOfChange finds one.
  Recorded record(const CString& name);
  Moved undo();
  Moved redo();

  // Which state the set was in at the last record, undo or redo: the same number whenever undo or redo come
  // back to it, and another one for every other state.
  std::uint64_t state() const { return m_state; }
  // That state, and those that undo and redo can still come to.
  std::vector<std::uint64_t> states() const;

  std::size_t undoSteps() const { return m_undo.size(); }
  std::size_t redoSteps() const { return m_redo.size(); }
  // For the menu: "Undo Delete", or "Undo" when there is nothing to undo.
  CString undoText() const;
  CString redoText() const;

  // Steps that were let go because of the budget, not because of their number: the user should hear of it.
  std::size_t droppedSteps() const { return m_dropped; }
  std::size_t bytes() const;

 private:
  struct Step {
    CString name;
    SetDifference back;   // from the state behind the step to the one before it
    std::uint64_t state;  // the number of the one before it
  };
  using Steps = std::vector<Step>;  // the last one is the next one to go

  static std::size_t bytesOf(const Step& step);
  void forgetSteps() noexcept;
  Recorded addStep(const CString& name, SetImage now);
  Moved move(Steps& from, Steps& to);
  void keepBudget(Steps& grown, Steps& other);

  DipoleSet& m_set;
  std::size_t m_budget;
  UnknownDipoles m_unknown;
  SetImage m_known;  // the set at the last record, undo or redo
  Steps m_undo;
  Steps m_redo;
  std::uint64_t m_state = 1;
  std::uint64_t m_lastState = 1;  // numbers are given once
  std::size_t m_dropped = 0;
};

}  // namespace host
