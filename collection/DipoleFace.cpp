#include "collection/DipoleFace.h"

#include <algorithm>
#include <cmath>
#include <initializer_list>
#include <utility>

#include "collection/WithinMemory.h"
#include "headmodel/Triple.h"

namespace {

// The smallest and the largest value met along one axis, single precision.
struct Extremes {
  float lowest;
  float highest;

  explicit Extremes(double first) : lowest(static_cast<float>(first)), highest(static_cast<float>(first)) {}

  // Takes a value in where the deciding coordinate lies beyond the extremes.
  void update(double deciding, double value) {
    if (deciding > static_cast<double>(highest)) {
      highest = static_cast<float>(value);
    }
    if (deciding < static_cast<double>(lowest)) {
      lowest = static_cast<float>(value);
    }
  }
};

Triple tripleOf(float x, float y, float z) {
  return {static_cast<double>(x), static_cast<double>(y), static_cast<double>(z)};
}

}  // namespace

CDipoleFace& CDipoleFace::operator=(const CDipoleFace& other) {
  if (this != &other) {
    // All that may run out of memory happens to the copy. Large: on the heap.
    *this = std::move(*std::make_unique<CDipoleFace>(other));
  }
  return *this;
}

CDipoleFace::CDipoleFace() = default;
CDipoleFace::CDipoleFace(const CDipoleFace&) = default;
CDipoleFace::~CDipoleFace() = default;

std::unique_ptr<CDipoleszq> CDipoleFace::makeDipole(const CDipoleszq* source) {
  std::unique_ptr<CDipoleszq> dipole;
  const bool made = isWithinMemory([&] {
    dipole.reset(new CDipoleszq);  // make_unique would clear it before it is made
    if (source != nullptr) {
      *dipole = *source;
    }
  });
  return made ? std::move(dipole) : nullptr;
}

int CDipoleFace::appendDipole(std::unique_ptr<CDipoleszq> dipole) {
  m_dipoles.store(m_totalDipoles, std::move(dipole));
  m_currentDipole = m_totalDipoles;
  return ++m_totalDipoles;
}

// A dipole for one of the add operations; empty, after a message, when there is no place or no memory.
std::unique_ptr<CDipoleszq> CDipoleFace::makeDipoleToAdd(const CDipoleszq* source) {
  if (m_totalDipoles >= DipoleTable::capacity) {
    AfxMessageBox(_T("No more dipole space"));
    return nullptr;
  }
  std::unique_ptr<CDipoleszq> dipole = makeDipole(source);
  if (!dipole) {
    AfxMessageBox(_T("Not enough memory"));
  }
  return dipole;
}

int CDipoleFace::addDipole() {
  std::unique_ptr<CDipoleszq> dipole = makeDipoleToAdd();
  if (!dipole) {
    return 0;
  }
  setTriple(dipole->m_location, tripleOf(m_allDipoleRange));
  return appendDipole(std::move(dipole));
}

int CDipoleFace::addDipoleF(float x, float y, float z) {
  std::unique_ptr<CDipoleszq> dipole = makeDipoleToAdd();
  if (!dipole) {
    return 0;
  }
  setTriple(dipole->m_location, tripleOf(x, y, z));
  return appendDipole(std::move(dipole));
}

int CDipoleFace::addDipolePME(const double* position, const double* moment, double fitError) {
  if (position == nullptr || moment == nullptr) {
    return 0;
  }
  std::unique_ptr<CDipoleszq> dipole = makeDipoleToAdd();
  if (!dipole) {
    return 0;
  }
  const double length = std::sqrt(moment[0] * moment[0] + moment[1] * moment[1] + moment[2] * moment[2]);
  setTriple(dipole->m_location, {position[0], position[1], position[2]});
  dipole->m_moment = length;
  setTriple(dipole->m_orientation, {moment[0] / length, moment[1] / length, moment[2] / length});
  dipole->m_fitError = fitError;
  return appendDipole(std::move(dipole));
}

int CDipoleFace::addDipolex(const CDipoleszq* source) {
  if (source == nullptr) {
    return 0;
  }
  std::unique_ptr<CDipoleszq> dipole = makeDipoleToAdd(source);
  return dipole ? appendDipole(std::move(dipole)) : 0;
}

int CDipoleFace::backupLocationRotationRaw() {
  for (int slot = 0; slot < m_totalDipoles; ++slot) {
    if (m_dipoles[slot] != nullptr) {
      m_dipoles[slot]->backUpLocationRotationRaw();
    }
  }
  return 1;
}

int CDipoleFace::cleanDipoles() {
  m_dipoles.clearAll();
  m_totalDipoles = 0;
  m_currentDipole = -1;
  return 1;
}

// Closes the gap of an emptied slot. An object left in the slot behind the old count is released: the slot
// ends empty, and later imports find nothing there to reuse.
void CDipoleFace::removeSlot(int slot) {
  for (int from = slot + 1; from < m_totalDipoles; ++from) {
    m_dipoles.move(from, from - 1);
  }
  if (m_totalDipoles < DipoleTable::capacity) {
    m_dipoles.clear(m_totalDipoles);
  }
  --m_totalDipoles;
  if (m_currentDipole >= m_totalDipoles) {
    m_currentDipole = m_totalDipoles - 1;
  }
}

int CDipoleFace::deleteCurrentDipole() {
  if (m_currentDipole >= 0 && m_currentDipole < m_totalDipoles) {
    m_dipoles.clear(m_currentDipole);
    removeSlot(m_currentDipole);
  }
  return 1;
}

int CDipoleFace::deleteDipole(int index, int shift) {
  if (m_totalDipoles < 1) {
    return 1;
  }
  const int slot = std::clamp(index, 0, m_totalDipoles - 1);
  m_dipoles.clear(slot);
  if (shift != 0) {
    removeSlot(slot);
  }
  return 1;
}

int CDipoleFace::getCurrentDipoleID() const {
  return m_currentDipole;
}

CDipoleszq* CDipoleFace::getCurrentDipole() const {
  return getDipole(-1);
}

CDipoleszq* CDipoleFace::getDipole(int index) const {
  const int slot = index == -1 ? m_currentDipole : index;
  return slot >= 0 && slot < m_totalDipoles ? m_dipoles[slot] : nullptr;
}

int CDipoleFace::getDipoleListItemID(int index) const {
  if (m_currentDipole < 0 || index < 0) {
    return -1;
  }
  const CDipoleszq* dipole = getDipole(index);
  return dipole != nullptr ? dipole->m_listItemId : -1;
}

int CDipoleFace::getDipoleLocation(int index, double& x, double& y, double& z) const {
  x = y = z = 0.0;
  const CDipoleszq* dipole = getDipole(index);
  return dipole != nullptr ? dipole->getDipoleLocationD(x, y, z) : 0;
}

int CDipoleFace::getDipoleOrientation(int index, float& x, float& y, float& z) const {
  double values[3];
  const int result = getDipoleOrientationD(index, values[0], values[1], values[2]);
  x = static_cast<float>(values[0]);
  y = static_cast<float>(values[1]);
  z = static_cast<float>(values[2]);
  return result;
}

int CDipoleFace::getDipoleOrientationD(int index, double& x, double& y, double& z) const {
  x = y = z = 0.0;
  const CDipoleszq* dipole = getDipole(index);
  return dipole != nullptr ? dipole->getDipoleOrientation(x, y, z) : 0;
}

double CDipoleFace::getDipoleOrientationLength(int index) const {
  const CDipoleszq* dipole = getDipole(index);
  return dipole != nullptr ? dipole->m_orientationLength : 0.0;
}

int CDipoleFace::firstFilledSlot() const {
  int slot = 0;
  while (slot < m_totalDipoles && m_dipoles[slot] == nullptr) {
    ++slot;
  }
  return slot;
}

float CDipoleFace::getMaxDipoleRange() const {
  int slot = firstFilledSlot();
  if (slot >= m_totalDipoles) {
    return 0.0F;
  }
  const double(&first)[3] = m_dipoles[slot]->m_location;
  Extremes x(first[0]);
  Extremes y(first[1]);
  Extremes z(first[2]);
  for (++slot; slot < m_totalDipoles; ++slot) {
    if (m_dipoles[slot] == nullptr) {
      continue;
    }
    const double(&location)[3] = m_dipoles[slot]->m_location;
    x.update(location[0], location[0]);
    y.update(location[0], location[1]);  // decided by x on purpose, see the header
    z.update(location[2], location[2]);
  }
  float largest = std::fabs(x.lowest);
  for (const float extreme : {x.highest, y.lowest, y.highest, z.lowest, z.highest}) {
    if (std::fabs(extreme) > largest) {
      largest = std::fabs(extreme);
    }
  }
  return largest;
}

CFiducialzq* CDipoleFace::getMriFiducialVoxel() {
  return &m_fiducialMri;
}

CString CDipoleFace::getMriName() const {
  return m_mriFile;
}

CDipoleszq* CDipoleFace::getNextDipole() {
  if (m_totalDipoles < 1) {
    AfxMessageBox(_T("No dipole available"));
    return nullptr;
  }
  const bool hasNext = m_currentDipole >= -1 && m_currentDipole < m_totalDipoles - 1;
  m_currentDipole = hasNext ? m_currentDipole + 1 : 0;
  return m_dipoles[m_currentDipole];
}

CDipoleszq* CDipoleFace::getPreviousDipole() {
  if (m_totalDipoles < 1) {
    AfxMessageBox(_T("No dipole available"));
    return nullptr;
  }
  const bool hasPrevious = m_currentDipole > 0 && m_currentDipole <= m_totalDipoles;
  m_currentDipole = hasPrevious ? m_currentDipole - 1 : m_totalDipoles - 1;
  return m_dipoles[m_currentDipole];
}

// Moves the dipoles to the front and returns how many there are.
int CDipoleFace::compact() {
  int kept = 0;
  for (int slot = 0; slot < m_totalDipoles; ++slot) {
    if (m_dipoles[slot] != nullptr) {
      m_dipoles.move(slot, kept);
      ++kept;
    }
  }
  m_totalDipoles = kept;
  if (m_currentDipole >= kept) {
    m_currentDipole = kept - 1;
  }
  return kept;
}

unsigned long CDipoleFace::getTotalDipoles() const {
  return static_cast<unsigned long>(m_totalDipoles);
}

int CDipoleFace::reOrderDipoles() {
  const int kept = compact();
  for (int slot = 0; slot < kept; ++slot) {
    m_dipoles[slot]->m_number = slot + 1;
  }
  return 1;
}

int CDipoleFace::reSortDipoles() {
  compact();
  // An emptied set ends with 0, not with -1 as in reOrderDipoles: the difference is deliberate.
  m_currentDipole = (std::max)(m_currentDipole, 0);
  return 1;
}

int CDipoleFace::setCurrentDipole(int index) {
  if (m_totalDipoles < 1) {
    AfxMessageBox(_T("No dipole available"));
    return 0;
  }
  m_currentDipole = std::clamp(index, 0, m_totalDipoles - 1);
  return 1;
}

int CDipoleFace::setDipoleColor(int index, COLORREF color) {
  if (CDipoleszq* dipole = getDipole(index)) {
    dipole->setColorValue(color);
  }
  return 1;
}

int CDipoleFace::setDipoleListItemID(int index, int id) {
  if (CDipoleszq* dipole = getDipole(index)) {
    dipole->m_listItemId = id;
  }
  return 1;
}

int CDipoleFace::setDipoleLocation(int index, float x, float y, float z) {
  CDipoleszq* dipole = getDipole(index);
  if (dipole == nullptr) {
    return 0;
  }
  setTriple(dipole->m_location, tripleOf(x, y, z));
  return 1;
}

int CDipoleFace::setDipoleName(int index, CString name) {
  if (CDipoleszq* dipole = getDipole(index)) {
    dipole->m_label = std::move(name);
  }
  return 1;
}

int CDipoleFace::setDipoleOrientation(int index, float x, float y, float z) {
  CDipoleszq* dipole = getDipole(index);
  if (dipole == nullptr) {
    return 0;
  }
  return dipole->setDipoleOrientation(static_cast<double>(x), static_cast<double>(y), static_cast<double>(z));
}

int CDipoleFace::setDipoleSelection(int index, bool selected) {
  if (index < 0 || index >= m_totalDipoles) {
    return 0;
  }
  if (m_dipoles[index] != nullptr) {
    m_dipoles[index]->m_selected = selected;
  }
  return 1;
}

int CDipoleFace::traceDipoleSphere() {
  return 1;
}
