#include "collection/SelectedDipoles.h"

#include <algorithm>
#include <functional>

namespace {

// By the slot alone: -1 does not stand for the current dipole here, and no slot is clamped into the range.
CDipoleszq* dipoleIn(const CDipoleFace& face, int slot) {
  return slot >= 0 ? face.getDipole(slot) : nullptr;
}

// Compares held dipoles, also with one that is only looked for.
struct ByAddress {
  static const CDipoleszq* of(const CDipoleszq* dipole) { return dipole; }
  static const CDipoleszq* of(const DipoleTable::Hold& held) { return held.get(); }

  template <typename First, typename Second>
  bool operator()(const First& first, const Second& second) const {
    return std::less<>()(of(first), of(second));
  }
};

bool isRowSelected(const CDipoleFace& face, int slot, const std::vector<bool>& selectedRows) {
  const int row = face.getDipoleListItemID(slot);
  return row >= 0 && static_cast<std::size_t>(row) < selectedRows.size() &&
         selectedRows[static_cast<std::size_t>(row)];
}

// A flag that is right is not written: in a full set that would be most of the work. Asks for no memory.
void mark(CDipoleFace& face, int slot, bool isSelected) {
  const CDipoleszq* dipole = dipoleIn(face, slot);
  if (dipole != nullptr && dipole->m_selected != isSelected) {
    face.setDipoleSelection(slot, isSelected);
  }
}

// The extent of coordinates and of the origin, along one axis.
class ExtentWithOrigin {
 public:
  void include(double value) {
    m_least = (std::min)(m_least, value);
    m_most = (std::max)(m_most, value);
  }
  double half() const { return (m_most - m_least) * 0.5; }

 private:
  // From 0, not from the first value, deliberately: hosts know the size that comes of it.
  double m_least = 0.0;
  double m_most = 0.0;
};

void add(double (&sum)[3], const double (&values)[3]) {
  for (int axis = 0; axis < 3; ++axis) {
    sum[axis] += values[axis];
  }
}

void divide(double (&values)[3], double divisor) {
  for (double& value : values) {
    value /= divisor;
  }
}

void fill(CDipoleszq& dipole, const DipoleAverage& average, LPCTSTR labelPattern) {
  std::copy_n(average.location, 3, dipole.m_location);
  std::copy_n(average.orientation, 3, dipole.m_orientation);
  dipole.m_latency = average.latency;
  dipole.m_moment = average.moment;
  dipole.m_fitError = average.fitError;
  dipole.m_size = average.size;
  dipole.m_label.Format(labelPattern, average.count);
}

// The added dipole is the current one.
bool add(CDipoleFace& face, const DipoleAverage& average, LPCTSTR labelPattern) {
  if (average.count == 0 || face.addDipole() == 0) {
    return false;
  }
  fill(*face.getCurrentDipole(), average, labelPattern);
  face.reSortDipoles();
  return true;
}

}  // namespace

DipoleSlots dipolesOfRows(const CDipoleFace& face, const std::vector<bool>& selectedRows) {
  DipoleSlots slots;
  for (int slot = 0; slot < face.m_totalDipoles; ++slot) {
    if (isRowSelected(face, slot, selectedRows)) {
      slots.push_back(slot);
    }
  }
  return slots;
}

DipoleSlots markRows(CDipoleFace& face, const std::vector<bool>& selectedRows) {
  DipoleSlots slots = dipolesOfRows(face, selectedRows);
  auto next = slots.cbegin();
  for (int slot = 0; slot < face.m_totalDipoles; ++slot) {
    const bool isSelected = next != slots.cend() && *next == slot;
    mark(face, slot, isSelected);
    next += isSelected ? 1 : 0;
  }
  return slots;
}

void deleteDipoles(CDipoleFace& face, const DipoleSlots& dipoles) {
  for (const int slot : dipoles) {
    if (dipoleIn(face, slot) != nullptr) {
      face.deleteDipole(slot, 0);
    }
  }
  face.reSortDipoles();
}

void showDipoles(CDipoleFace3On3DView& face, const DipoleSlots& dipoles, int show) {
  for (const int slot : dipoles) {
    if (dipoleIn(face, slot) != nullptr) {
      face.setShowDipole(slot, show);
    }
  }
}

void nameDipoles(CDipoleFace& face, const DipoleSlots& dipoles, const CString& name) {
  for (const int slot : dipoles) {
    if (CDipoleszq* dipole = dipoleIn(face, slot)) {
      dipole->m_label = name;
    }
  }
  face.reSortDipoles();
}

void colorDipoles(CDipoleFace& face, const DipoleSlots& dipoles, COLORREF color) {
  for (const int slot : dipoles) {
    if (CDipoleszq* dipole = dipoleIn(face, slot)) {
      dipole->setColorValue(color);
    }
  }
}

DipoleAverage averageOf(const CDipoleFace& face, const DipoleSlots& dipoles) {
  DipoleAverage average;
  ExtentWithOrigin box[3];
  for (const int slot : dipoles) {
    const CDipoleszq* dipole = dipoleIn(face, slot);
    if (dipole == nullptr) {
      continue;
    }
    ++average.count;
    add(average.location, dipole->m_location);
    add(average.orientation, dipole->m_orientation);
    average.latency += dipole->m_latency;
    average.moment += dipole->m_moment;
    average.fitError += dipole->m_fitError;
    for (int axis = 0; axis < 3; ++axis) {
      box[axis].include(dipole->m_location[axis]);
    }
  }
  if (average.count > 0) {
    const double count = average.count;
    divide(average.location, count);
    divide(average.orientation, count);
    average.latency /= count;
    average.moment /= count;
    average.fitError /= count;
    average.size = (box[0].half() + box[1].half() + box[2].half()) / 3.0;
  }
  return average;
}

bool addAverage(CDipoleFace& face, const DipoleSlots& dipoles) {
  return add(face, averageOf(face, dipoles), _T("AverageDipole_%d"));
}

bool replaceByAverage(CDipoleFace& face, const DipoleSlots& dipoles) {
  if (face.m_totalDipoles < 1) {
    return false;  // not even the current index changes
  }
  const DipoleAverage average = averageOf(face, dipoles);
  deleteDipoles(face, dipoles);
  return add(face, average, _T("AverageDipole%d"));
}

ChosenDipoles::ChosenDipoles(const CDipoleFace& face, const DipoleSlots& dipoles) {
  for (const int slot : dipoles) {
    if (dipoleIn(face, slot) != nullptr) {
      m_dipoles.emplace_back(face.m_dipoles, slot);
    }
  }
  std::sort(m_dipoles.begin(), m_dipoles.end(), ByAddress());
}

std::optional<DipoleSlots> ChosenDipoles::slotsIn(const CDipoleFace& face) const {
  DipoleSlots slots;
  for (int slot = 0; slot < face.m_totalDipoles; ++slot) {
    const CDipoleszq* const dipole = face.getDipole(slot);
    if (std::binary_search(m_dipoles.begin(), m_dipoles.end(), dipole, ByAddress())) {
      slots.push_back(slot);
    }
  }
  return slots.size() == m_dipoles.size() ? std::optional(slots) : std::nullopt;
}
