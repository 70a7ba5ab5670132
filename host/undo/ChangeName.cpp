#include "host/undo/ChangeName.h"

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <vector>

namespace host {

namespace {

// What differs in dipoles that both states have.
struct MemberChanges {
  bool isNamed = false;
  bool isColoured = false;
  bool isShown = false;
  bool isEdited = false;
  bool isMoved = false;  // to another slot

  CString name() const {
    const int kinds = int{isNamed} + int{isColoured} + int{isShown} + int{isEdited};
    if (isMoved && kinds == 0) {
      return _T("Sort");
    }
    if (kinds != 1 || isEdited) {
      return kinds == 0 ? _T("Set") : _T("Edit");
    }
    return isNamed ? _T("Name") : isColoured ? _T("Color") : _T("Show/Hide");
  }
};

// Where the members of a kind stand in the image of a dipole.
template <typename Take>
void markColumns(const DipoleImage& before, const DipoleImage& after, Take take) {
  if (before.numbers == after.numbers) {
    return;
  }
  std::size_t offset = 0;
  std::size_t index = 0;
  std::apply(
      [&](auto... member) {
        const auto compare = [&](auto one) {
          const std::size_t size = members::sizeOfOne(one);
          if (std::memcmp(before.numbers.data() + offset, after.numbers.data() + offset, size) != 0) {
            take(index);
          }
          offset += size;
          ++index;
        };
        (compare(member), ...);
      },
      members::ofDipole);
  if (std::memcmp(before.numbers.data() + offset, after.numbers.data() + offset,
                  before.numbers.size() - offset) != 0) {
    take(index);
  }
}

template <typename Member>
constexpr std::size_t placeOf(Member wanted) {
  std::size_t place = 0;
  bool isFound = false;
  std::apply(
      [&](auto... member) {
        const auto look = [&](auto one) {
          if constexpr (std::is_same_v<decltype(one), Member>) {
            isFound = isFound || one == wanted;
          }
          if (!isFound) {
            ++place;
          }
        };
        (look(member), ...);
      },
      members::ofDipole);
  return place;
}

void compare(const DipoleImage& before, const DipoleImage& after, MemberChanges& changes) {
  constexpr std::size_t windowColumns = 2;  // list row and selection: notes of the windows
  markColumns(before, after, [&](std::size_t column) {
    if (column < windowColumns) {
      return;
    }
    if (column == placeOf(&CDipoles::m_color) || column == placeOf(&CDipoles::m_colorF)) {
      changes.isColoured = true;
    } else if (column == placeOf(&CDipoles::m_show) || column == placeOf(&CDipoles::m_showOrientation) ||
               column == placeOf(&CDipoles::m_display)) {
      changes.isShown = true;
    } else {
      changes.isEdited = true;
    }
  });
  changes.isNamed = changes.isNamed || !isSameText(before.texts[0], after.texts[0]);
  changes.isEdited = changes.isEdited || !isSameText(before.texts[1], after.texts[1]) ||
                     !isSameText(before.texts[2], after.texts[2]);
}

// The set-wide members tell which dipoles the last import brought.
bool isImport(const SetImage& before, const SetImage& after) {
  constexpr std::size_t place = members::sizeOf(members::ofFace);
  constexpr std::size_t size = members::sizeOf(members::ofImport);
  return std::memcmp(before.wide.numbers.data() + place, after.wide.numbers.data() + place, size) != 0;
}

// The label that the module gives an average begins so.
bool isAverage(const CString& label) {
  const CString beginning = _T("AverageDipole");
  return label.Left(beginning.GetLength()) == beginning;
}

// An average stands behind the other dipoles. It may have got the memory, and so seem to be the object, of
// one that it replaces; its label tells.
bool endsInNewAverage(const SetImage& before, const SetImage& after, const std::vector<int>& sources) {
  if (sources.empty() || !isAverage(after.dipoles.back().texts[0])) {
    return false;
  }
  const int source = sources.back();
  return source < 0 || !isSameText(before.dipoles[static_cast<std::size_t>(source)].texts[0],
                                   after.dipoles.back().texts[0]);
}

CString nameOfComing(const SetImage& before, const SetImage& after, std::size_t come, std::size_t gone) {
  if (gone > 0) {
    return _T("Replace");
  }
  return isImport(before, after) || come > 1 ? _T("Import") : _T("Add");
}

}  // namespace

CString nameOfChange(const SetImage& before, const SetImage& after) {
  const std::vector<int> sources = entriesFor(after, before);
  const auto come = static_cast<std::size_t>(std::count(sources.begin(), sources.end(), -1));
  const std::size_t gone = before.dipoles.size() + come - after.dipoles.size();
  if (come <= 1 && come + gone > 0 && endsInNewAverage(before, after, sources)) {
    return _T("Average");
  }
  if (come > 0) {
    return nameOfComing(before, after, come, gone);
  }
  if (gone > 0) {
    return after.dipoles.empty() ? _T("Clear") : _T("Delete");
  }
  MemberChanges changes;
  for (std::size_t i = 0; i < sources.size(); ++i) {
    const auto source = static_cast<std::size_t>(sources[i]);
    changes.isMoved = changes.isMoved || before.slots[source] != after.slots[i];
    compare(before.dipoles[source], after.dipoles[i], changes);
  }
  return changes.name();
}

}  // namespace host
