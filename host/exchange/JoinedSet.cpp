#include "host/exchange/JoinedSet.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "host/audit/HeadChecks.h"
#include "host/dipoles/HeaderText.h"
#include "host/dipoles/SetFiducials.h"
#include "host/text/PathText.h"

namespace host {

namespace {

constexpr double samePlace = 3.0;  // mm between centres or radii of spheres

using Dipoles = std::vector<std::unique_ptr<CDipoleszq>>;

// Empty slots are null.
Dipoles copiesOf(const CDipoleFace& set) {
  Dipoles copies;
  copies.reserve(static_cast<std::size_t>(set.m_totalDipoles));
  for (int slot = 0; slot < set.m_totalDipoles; ++slot) {
    const CDipoleszq* dipole = set.m_dipoles[slot];
    copies.push_back(dipole == nullptr ? nullptr : std::make_unique<CDipoleszq>(*dipole));
  }
  return copies;
}

void appendSlots(CDipoleFace& set, Dipoles dipoles) {
  for (std::unique_ptr<CDipoleszq>& dipole : dipoles) {
    set.m_dipoles.store(set.m_totalDipoles++, std::move(dipole));
  }
}

// What imports write of the members of a whole set.
void takeHeader(CDipoleFace9File& set, const CDipoleFace9File& source) {
  set.m_fileVersion = source.m_fileVersion;
  set.m_mriFile = source.m_mriFile;
  set.m_patient = source.m_patient;
  set.m_megOnly = source.m_megOnly;
  set.m_coordinateType = source.m_coordinateType;
  set.m_momentInNAm = source.m_momentInNAm;
  set.m_fiducialMri = source.m_fiducialMri;
  set.m_fiducialCtf = source.m_fiducialCtf;
  set.m_sphereCtf = source.m_sphereCtf;
  set.m_bCtfSphereSet = source.m_bCtfSphereSet;
  set.m_sphereLocational = source.m_sphereLocational;
}

void cutAt(CDipoleFace& set, int count) {
  while (set.m_totalDipoles > count) {
    set.m_dipoles.clear(--set.m_totalDipoles);
  }
  set.m_currentDipole = (std::min)(set.m_currentDipole, count - 1);
}

void numberFrom(CDipoleFace& set, int before) {
  for (int slot = 0; slot < set.m_totalDipoles; ++slot) {
    if (set.m_dipoles[slot] != nullptr) {
      set.m_dipoles[slot]->m_number += before;
    }
  }
}

bool differ(const CSpherezq& one, const CSpherezq& other) {
  bool result = std::abs(one.m_radius - other.m_radius) > samePlace;
  for (int axis = 0; axis < 3; ++axis) {
    result = result || std::abs(one.m_center[axis] - other.m_center[axis]) > samePlace;
  }
  return result;
}

}  // namespace

JoinedSet::Part partOf(const ImportedFile& file, int first, int end) {
  return {file.path,
          file.name,
          first,
          end,
          patientOf(*file.set),
          file.set->m_momentInNAm != 0,
          measuredPoints(*file.set),
          slicesOfSet(*file.set)};
}

JoinedSet::JoinedSet(int before) : m_before(before) {}

CDipoleFace9File& JoinedSet::madeSet() const {
  if (!m_set) {
    m_set = std::make_unique<CDipoleFace9File>();
  }
  return *m_set;
}

int JoinedSet::nextSlot() const {
  return m_before + (m_parts.empty() ? 0 : m_set->m_totalDipoles);
}

int JoinedSet::room() const {
  return DipoleTable::capacity - nextSlot();
}

void JoinedSet::add(ImportedFile file) {
  const int first = nextSlot();
  for (Finding& finding : file.findings) {
    takeFinding(std::move(finding), first);
  }
  if (file.dipoles() == 0) {
    if (m_parts.empty() && file.failure.empty()) {
      m_set = std::move(file.set);  // what it says about the whole set, until a file brings dipoles
    }
    return;
  }
  const int slots = file.set->m_totalDipoles;
  const int count = (std::min)(slots, room());
  if (count < slots) {
    m_leftOut += slots - count;
    m_warnings.push_back(utf8Of(file.path) + ": a set holds " + std::to_string(DipoleTable::capacity) +
                         " dipoles, " + std::to_string(slots - count) + " of this file were left out");
  }
  for (int slot = 0; slot < count; ++slot) {
    m_unknown.markAll(first + slot, file.unknown.of(slot));
  }
  cutAt(*file.set, count);
  numberFrom(*file.set, isForeign(file.format) ? first : 0);
  if (std::optional<Finding> outside = findOutsideSphere(*file.set, 0, count, file.name)) {
    takeFinding(std::move(*outside), first);
  }
  Part part = partOf(file, first, first + count);
  if (m_parts.empty()) {
    m_set = std::move(file.set);
  } else {
    append(file);
  }
  m_parts.push_back(std::move(part));
}

// Of a file whose first dipole comes to that slot.
void JoinedSet::takeFinding(Finding finding, int first) {
  for (int& slot : finding.slots) {
    slot += first;
  }
  std::erase_if(finding.slots, [](int slot) { return slot >= DipoleTable::capacity; });
  m_findings.push_back(std::move(finding));
}

void JoinedSet::append(const ImportedFile& file) {
  if (file.set->m_bCtfSphereSet != 0 && m_set->m_bCtfSphereSet != 0 &&
      differ(file.set->m_sphereCtf, m_set->m_sphereCtf)) {
    m_warnings.push_back(utf8Of(file.path) +
                         ": its head sphere differs by more than 3 mm from that of the files before");
  }
  appendSlots(*m_set, copiesOf(*file.set));
  if ((file.set->m_momentInNAm != 0) != (m_set->m_momentInNAm != 0)) {
    m_set->m_momentInNAm = 0;
    m_hasMixedUnits = true;
  }
}

std::vector<std::string> JoinedSet::patients() const {
  std::vector<std::string> names;
  for (const Part& part : m_parts) {
    addPatient(names, part.patient);
  }
  return names;
}

std::vector<Finding> findingsBetween(std::span<const JoinedSet::Part> parts) {
  std::vector<Finding> findings;
  const auto take = [&](std::optional<Finding> finding) {
    if (finding) {
      findings.push_back(std::move(*finding));
    }
  };
  std::vector<FilePatient> patients;
  const JoinedSet::Part* measured = nullptr;
  for (const JoinedSet::Part& part : parts) {
    patients.push_back({part.name, part.patient});
    if (part.points && measured != nullptr) {
      take(findOtherHead(*part.points, part.name, *measured->points, measured->name));
    }
    measured = part.points && measured == nullptr ? &part : measured;
  }
  take(findSeveralPatients(patients));
  return findings;
}

std::optional<Finding> findOtherHead(const JoinedSet::Part& part, const Head& head) {
  if (part.slices && head.source.slices) {
    return findOtherHead(*part.slices, part.name, *head.source.slices);
  }
  return part.points ? findOtherHead(*part.points, part.name, head) : std::nullopt;
}

std::vector<Finding> findingsIn(const Head& head, const JoinedSet& joined) {
  if (!head.isRegistered() || head.isPhantom || head.isAbsent) {
    return {};
  }
  std::vector<Finding> findings;
  for (const JoinedSet::Part& part : joined.parts()) {
    if (std::optional<Finding> other = findOtherHead(part, head)) {
      findings.push_back(std::move(*other));
    }
  }
  const int before = joined.before();
  for (const JoinedSet::Part& part : joined.parts()) {
    if (std::optional<Finding> outside =
            findOutsideMri(joined.set(), part.firstSlot - before, part.endSlot - before, *head.volume,
                           head.frame, part.name)) {
      for (int& slot : outside->slots) {
        slot += before;
      }
      findings.push_back(std::move(*outside));
    }
  }
  return findings;
}

void addPatient(std::vector<std::string>& names, const std::string& patient) {
  if (!patient.empty() && std::find(names.begin(), names.end(), patient) == names.end()) {
    names.push_back(patient);
  }
}

void appendTo(CDipoleFace9File& set, const CDipoleFace9File& more) {
  const int first = set.m_totalDipoles;
  Dipoles dipoles = copiesOf(more);
  if (first == 0) {
    takeHeader(set, more);
  } else if (more.m_momentInNAm == 0) {
    set.m_momentInNAm = 0;
  }
  appendSlots(set, std::move(dipoles));
  set.m_currentDipole = set.m_totalDipoles - 1;
  set.m_importFirst = first;
  set.m_importEnd = set.m_totalDipoles;
}

}  // namespace host
