// All that a set holds, for comparing two states of it: every member as a line, exact to the bit, and the
// bytes of the set in its present and in its old file format.
#pragma once

#include <gtest/gtest.h>
#include <string>

#include "host/undo/UndoHistory.h"
#include "tests/file/SetFixture.h"

struct WholeSet {
  Lines lines;
  std::string current;
  std::string obsolete;

  bool operator==(const WholeSet&) const = default;
};

inline WholeSet wholeSet(CDipoleFace9File& set) {
  WholeSet whole{linesOf(set), currentBytes(set), obsoleteBytes(set)};
  whole.lines.push_back("m_importFirst " + std::to_string(set.m_importFirst));
  whole.lines.push_back("m_importEnd " + std::to_string(set.m_importEnd));
  return whole;
}

inline testing::AssertionResult isSame(const WholeSet& now, const WholeSet& wanted) {
  if (now == wanted) {
    return testing::AssertionSuccess();
  }
  testing::AssertionResult failure = testing::AssertionFailure() << "not the same:";
  int told = 0;
  for (const std::string& line : differences(wanted.lines, now.lines)) {
    failure << (++told <= 12 ? "\n" + line : "");
  }
  return failure << (now.lines != wanted.lines && told == 0 ? "\nlines in another order" : "")
                 << (now.current != wanted.current ? "\nbytes of the present format" : "")
                 << (now.obsolete != wanted.obsolete ? "\nbytes of the old format" : "");
}

inline const host::UndoHistory::Recorded recordedStep = host::UndoHistory::Recorded::step;
inline const host::UndoHistory::Recorded recordedNothing = host::UndoHistory::Recorded::nothing;
inline const host::UndoHistory::Moved moved = host::UndoHistory::Moved::done;
