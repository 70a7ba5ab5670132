#include "host/undo/UndoHistory.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "host/text/Failure.h"
#include "host/undo/ChangeName.h"

namespace host {

UndoHistory::UndoHistory(DipoleSet& set, std::size_t budget)
    : m_set(set), m_budget(budget), m_known(imageOf(set)) {
  m_undo.reserve(mostSteps + 1);  // so that adding a step cannot fail
  m_redo.reserve(mostSteps + 1);
}

void UndoHistory::clear() {
  m_unknown.follow(m_set);
  m_known = imageOf(m_set, &m_unknown);
  forgetSteps();
}

void UndoHistory::startFrom(SetImage target) {
  SetRestoration restoration(m_set, imageOf(m_set), target);
  UnknownDipoles unknown = restoration.unknownIn(target);
  restoration.carryOut(target);
  m_unknown = std::move(unknown);
  m_unknown.hold(m_set);
  m_known = std::move(target);
  forgetSteps();
}

void UndoHistory::forgetSteps() noexcept {
  m_undo.clear();
  m_redo.clear();
  m_dropped = 0;
  m_state = ++m_lastState;
}

UndoHistory::Recorded UndoHistory::record(const CString& name) {
  auto outcome = Recorded::nothing;
  const bool isDone = hasMemoryFor([&] {
    m_unknown.follow(m_set);
    SetImage now = imageOf(m_set, &m_unknown);
    if (isSame(now, m_known)) {
      m_known = std::move(now);  // it knows the objects of today
    } else if (!isSameButForWindows(now, m_known)) {
      outcome = addStep(name, std::move(now));
    }
  });
  return isDone ? outcome : Recorded::noMemory;
}

UndoHistory::Recorded UndoHistory::addStep(const CString& name, SetImage now) {
  Step step{name.IsEmpty() ? nameOfChange(m_known, now) : name, SetDifference(m_known, now), m_state};
  // From here on nothing can fail.
  m_known = std::move(now);
  m_state = ++m_lastState;
  m_redo.clear();
  m_undo.push_back(std::move(step));
  if (m_undo.size() > mostSteps) {
    m_undo.erase(m_undo.begin());
  }
  keepBudget(m_undo, m_redo);
  return m_undo.empty() ? Recorded::tooLarge : Recorded::step;
}

UndoHistory::Moved UndoHistory::undo() {
  return move(m_undo, m_redo);
}

UndoHistory::Moved UndoHistory::redo() {
  return move(m_redo, m_undo);
}

UndoHistory::Moved UndoHistory::move(Steps& from, Steps& to) {
  if (from.empty()) {
    return Moved::nothing;
  }
  const bool isDone = hasMemoryFor([&] {
    m_unknown.follow(m_set);
    const SetImage now = imageOf(m_set, &m_unknown);
    SetImage target = from.back().back.appliedTo(m_known);
    // What was changed without record makes a state of its own.
    Step opposite{from.back().name, SetDifference(now, target),
                  isSameButForWindows(now, m_known) ? m_state : m_lastState + 1};
    // The next step the other way round starts from the set as it was known.
    std::optional<SetDifference> fromNow;
    if (!to.empty() && !isSame(now, m_known)) {
      fromNow.emplace(to.back().back.appliedTo(m_known), now);
    }
    SetRestoration restoration(m_set, now, target);
    UnknownDipoles unknown = restoration.unknownIn(target);
    // From here on nothing can fail.
    restoration.carryOut(target);
    m_unknown = std::move(unknown);
    m_unknown.hold(m_set);
    m_known = std::move(target);
    m_lastState = (std::max)(m_lastState, opposite.state);
    m_state = from.back().state;
    from.pop_back();
    if (fromNow) {
      to.back().back = std::move(*fromNow);
    }
    to.push_back(std::move(opposite));
  });
  if (!isDone) {
    return Moved::noMemory;
  }
  keepBudget(to, from);
  return Moved::done;
}

// Lets the steps go that are farthest from the present state, first those in the direction that has grown.
void UndoHistory::keepBudget(Steps& grown, Steps& other) {
  std::size_t used = bytes();
  const auto dropFarthest = [&](Steps& steps, std::size_t kept) {
    while (steps.size() > kept && used > m_budget) {
      used -= bytesOf(steps.front());
      steps.erase(steps.begin());
      ++m_dropped;
    }
  };
  dropFarthest(grown, 1);
  dropFarthest(other, 0);
  dropFarthest(grown, 0);
}

std::vector<std::uint64_t> UndoHistory::states() const {
  std::vector<std::uint64_t> states = {m_state};
  for (const Steps* steps : {&m_undo, &m_redo}) {
    for (const Step& step : *steps) {
      states.push_back(step.state);
    }
  }
  return states;
}

CString UndoHistory::undoText() const {
  return m_undo.empty() ? CString(_T("Undo")) : _T("Undo ") + m_undo.back().name;
}

CString UndoHistory::redoText() const {
  return m_redo.empty() ? CString(_T("Redo")) : _T("Redo ") + m_redo.back().name;
}

std::size_t UndoHistory::bytesOf(const Step& step) {
  return sizeof step + static_cast<std::size_t>(step.name.GetLength()) * sizeof(TCHAR) + step.back.bytes();
}

std::size_t UndoHistory::bytes() const {
  std::size_t bytes = sizeof *this + m_known.bytes();
  for (const Steps* steps : {&m_undo, &m_redo}) {
    for (const Step& step : *steps) {
      bytes += bytesOf(step);
    }
  }
  return bytes;
}

}  // namespace host
