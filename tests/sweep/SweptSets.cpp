#include "tests/sweep/SweptSets.h"

#include <algorithm>
#include <iterator>
#include <sstream>

namespace {

bool startsWith(const std::string& line, const char* words) {
  return line.rfind(words, 0) == 0;
}

bool isOfSlot(const std::string& line) {
  return startsWith(line, "slot ");
}

// A line's numbers and, as one, its quoted text.
std::vector<std::string> partsOf(const std::string& line) {
  const std::string::size_type quote = (std::min)(line.find('"'), line.size());
  std::istringstream numbers(line.substr(0, quote));
  std::vector<std::string> parts{std::istream_iterator<std::string>(numbers), {}};
  parts.push_back(line.substr(quote));
  return parts;
}

bool isMixed(const std::string& now, const std::string& before, const std::string& after) {
  const std::vector<std::string> parts = partsOf(now);
  const std::vector<std::string> first = partsOf(before);
  const std::vector<std::string> second = partsOf(after);
  if (parts.size() != first.size() || parts.size() != second.size()) {
    return false;
  }
  for (std::size_t i = 0; i < parts.size(); ++i) {
    if (parts[i] != first[i] && parts[i] != second[i]) {
      return false;
    }
  }
  return true;
}

}  // namespace

Set sweptSet(int count) {
  Set set = filledSet(count);
  for (int slot = 0; slot < count; ++slot) {
    set->m_dipoles[slot]->m_label.Format(_T("a label that needs memory %d"), slot);
  }
  set->m_currentDipole = count - 1;
  return set;
}

Lines placeOf(const CDipoleszq& dipole) {
  Lines place;
  for (const std::string& line : linesOf(dipole)) {
    for (const char* member : {"m_location ", "m_orientation ", "m_moment ", "m_label "}) {
      if (startsWith(line, member)) {
        place.push_back(line);
      }
    }
  }
  EXPECT_EQ(place.size(), 4U);
  return place;
}

Lines slotLines(const CDipoleFace& set, int slot) {
  const CDipoleszq* dipole = set.m_dipoles[slot];
  return dipole == nullptr ? Lines{"empty"} : linesOf(*dipole);
}

Lines setWideLines(const CDipoleFace& set) {
  Lines lines = linesOf(set);
  std::erase_if(lines, [](const std::string& line) {
    return isOfSlot(line) || startsWith(line, "m_totalDipoles ") || startsWith(line, "m_currentDipole ");
  });
  return lines;
}

testing::AssertionResult isBetween(const Lines& now, const Lines& before, const Lines& after) {
  if (now.size() != before.size() || now.size() != after.size()) {
    return testing::AssertionFailure() << "other members: " << now.size();
  }
  for (std::size_t i = 0; i < now.size(); ++i) {
    if (!isMixed(now[i], before[i], after[i])) {
      return testing::AssertionFailure()
             << now[i] << "\nis neither " << before[i] << "\nnor     " << after[i];
    }
  }
  return testing::AssertionSuccess();
}

void expectUsable(CDipoleFace9File& set) {
  const ScriptedOperator user;
  ASSERT_GE(set.m_totalDipoles, 0);
  ASSERT_LE(set.m_totalDipoles, int{DipoleTable::capacity});
  int kept = 0;
  for (int slot = 0; slot < set.m_totalDipoles; ++slot) {
    kept += set.m_dipoles[slot] != nullptr ? 1 : 0;
  }
  EXPECT_EQ(set.sortDipoles(1), 1);
  EXPECT_EQ(set.reOrderDipoles(), 1);
  EXPECT_EQ(set.addDipole(), kept + 1);
  EXPECT_EQ(set.deleteCurrentDipole(), 1);
  EXPECT_EQ(set.m_totalDipoles, kept);
  const std::string bytes = currentBytes(set);
  const Set again = std::make_unique<CDipoleFace9File>();
  EXPECT_EQ(readCurrent(bytes, *again), 1);
  EXPECT_EQ(again->m_totalDipoles, kept);
  EXPECT_EQ(currentBytes(*again), bytes);
  EXPECT_EQ(user.texts(), Texts{});
}
