#include "host/session/AuditedSet.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

#include "host/audit/AuditPass.h"
#include "host/audit/HeadChecks.h"
#include "host/dipoles/HeaderText.h"
#include "host/dipoles/SetFiducials.h"
#include "host/session/CarriedRepair.h"
#include "host/text/Failure.h"

namespace host {

namespace {

constexpr int gone = CarriedRepair::none;

// The module's label of one that it makes of others.
bool isAverage(const CDipoleszq& dipole) {
  return dipole.m_label.Find(_T("AverageDipole")) == 0;
}

// A set of its own with copies of the dipoles.
std::unique_ptr<CDipoleFace9File> copyOf(const CDipoleFace9File& set) {
  auto copy = std::make_unique<CDipoleFace9File>();
  appendTo(*copy, set);
  return copy;
}

// For each slot of a set that has been repaired the slot in which the dipole was before.
std::vector<int> originsIn(const CDipoleFace9File& repaired,
                           const std::unordered_map<const CDipoleszq*, int>& before) {
  std::vector<int> origins;
  for (int slot = 0; slot < repaired.m_totalDipoles; ++slot) {
    const auto known = before.find(repaired.m_dipoles[slot]);
    origins.push_back(known != before.end() ? known->second : CarriedRepair::none);
  }
  return origins;
}

std::unordered_map<const CDipoleszq*, int> slotsOf(const CDipoleFace9File& set) {
  std::unordered_map<const CDipoleszq*, int> slots;
  for (int slot = 0; slot < set.m_totalDipoles; ++slot) {
    slots.emplace(set.m_dipoles[slot], slot);
  }
  return slots;
}

bool isAnyThere(const std::vector<int>& slots) {
  return std::any_of(slots.begin(), slots.end(), [](int slot) { return slot != gone; });
}

// What is unknown, by the slots of the set instead of those of the file.
UnknownValues inSet(const UnknownValues& unknown, const std::vector<int>& slots) {
  UnknownValues values;
  for (std::size_t own = 0; own < slots.size(); ++own) {
    if (slots[own] != gone) {
      values.markAll(slots[own], unknown.of(static_cast<int>(own)));
    }
  }
  return values;
}

}  // namespace

void AuditedFile::takeFindings(std::vector<Finding> audited, const CDipoleFace9File& set) {
  findings = std::move(audited);
  if (std::optional<Finding> outside = findOutsideSphere(set, 0, set.m_totalDipoles, part.name)) {
    findings.push_back(std::move(*outside));
  }
}

AuditedFile auditedFileOf(const ImportedFile& file) {
  AuditedFile audited;
  audited.part.name = file.name;
  audited.isCarried = file.isCarried;
  audited.carriedBy = file.carriedBy;
  audited.takeFindings(file.findings, *file.set);
  const bool isWhole = file.dipoles() == file.set->m_totalDipoles;  // without empty slots
  const bool hasRemedy = std::any_of(file.findings.begin(), file.findings.end(),
                                     [](const Finding& finding) { return !finding.remedy.empty(); });
  if (file.source && hasRemedy && isWhole) {
    audited.source = file.source;
    audited.own = copyOf(*file.set);
  }
  return audited;
}

void AuditedSet::startAnew() noexcept {
  m_files = noFiles();
  m_known.clear();
  m_states.clear();
  m_hasGaps = false;
}

void AuditedSet::know(int slot, const Origin& origin) {
  if (m_dipoles.m_dipoles[slot] != nullptr) {
    m_known[m_dipoles.m_dipoles[slot]] = {DipoleTable::Hold(m_dipoles.m_dipoles, slot), origin};
  }
}

void AuditedSet::add(AuditedFile file) {
  auto files = std::make_shared<Files>(*m_files);
  for (int slot = 0; slot < m_dipoles.m_totalDipoles && files->empty(); ++slot) {
    know(slot, {});  // those of this file are overwritten
  }
  const int number = static_cast<int>(files->size());
  for (int slot = file.part.firstSlot; slot < file.part.endSlot; ++slot) {
    know(slot, {number, slot - file.part.firstSlot});
  }
  files->push_back(std::make_shared<const AuditedFile>(std::move(file)));
  m_files = std::move(files);
}

AuditedSet::Origins AuditedSet::originsNow() const {
  Origins origins;
  for (int slot = 0; slot < m_dipoles.m_totalDipoles && !m_known.empty(); ++slot) {
    const auto known = m_known.find(m_dipoles.m_dipoles[slot]);
    origins.push_back(known != m_known.end() ? std::optional(known->second.origin) : std::nullopt);
  }
  return origins;
}

void AuditedSet::noteState(const UndoHistory& history) noexcept {
  m_hasGaps = !hasMemoryFor([&] { keepState(history); }) || m_hasGaps;
}

void AuditedSet::keepState(const UndoHistory& history) {
  const std::vector<std::uint64_t> reachable = history.states();
  std::erase_if(m_states, [&](const auto& state) {
    return std::find(reachable.begin(), reachable.end(), state.first) == reachable.end();
  });
  auto origins = std::make_shared<const Origins>(originsNow());
  const auto same = std::find_if(m_states.rbegin(), m_states.rend(),
                                 [&](const auto& state) { return *state.second.origins == *origins; });
  origins = same != m_states.rend() ? same->second.origins : origins;
  m_states[history.state()] = {m_files, std::move(origins)};
}

// A state that nobody noted is the first one, of which nothing is to be said.
void AuditedSet::noteMove(const UndoHistory& history) noexcept {
  const auto found = m_states.find(history.state());
  if (found == m_states.end() && m_hasGaps) {
    return;
  }
  if (found == m_states.end()) {
    m_files = noFiles();
    m_known.clear();
    return;
  }
  m_files = found->second.files;
  m_known.clear();
  const bool isDone = hasMemoryFor([&] {
    const Origins& origins = *found->second.origins;
    for (std::size_t slot = 0; slot < origins.size(); ++slot) {
      if (origins[slot]) {
        know(static_cast<int>(slot), *origins[slot]);
      }
    }
  });
  m_hasGaps = m_hasGaps || !isDone;
}

std::vector<std::vector<int>> AuditedSet::slotsNow() const {
  std::vector<std::vector<int>> slots;
  for (const auto& file : *m_files) {
    slots.emplace_back(static_cast<std::size_t>(file->part.endSlot - file->part.firstSlot), gone);
  }
  const Origins origins = originsNow();
  for (std::size_t slot = 0; slot < origins.size(); ++slot) {
    if (origins[slot] && origins[slot]->file >= 0) {
      const auto [file, own] = *origins[slot];
      slots[static_cast<std::size_t>(file)][static_cast<std::size_t>(own)] = static_cast<int>(slot);
    }
  }
  return slots;
}

// Averages that were made since of dipoles that nobody can tell.
bool AuditedSet::hasAverages() const {
  for (int slot = 0; slot < m_dipoles.m_totalDipoles && !m_known.empty(); ++slot) {
    const CDipoleszq* const dipole = m_dipoles.m_dipoles[slot];
    if (dipole != nullptr && isAverage(*dipole) && !m_known.contains(dipole)) {
      return true;
    }
  }
  return false;
}

std::vector<JoinedSet::Part> AuditedSet::partsNow(const std::vector<std::vector<int>>& slots) const {
  std::vector<JoinedSet::Part> parts;
  const Origins origins = originsNow();
  if (std::find(origins.begin(), origins.end(), Origin{}) != origins.end()) {
    JoinedSet::Part before;
    before.name = "the dipoles before";
    before.patient = patientOf(m_dipoles);
    before.points = measuredPoints(m_dipoles);
    before.slices = slicesOfSet(m_dipoles);
    parts.push_back(std::move(before));
  }
  for (std::size_t file = 0; file < slots.size(); ++file) {
    if (isAnyThere(slots[file])) {
      parts.push_back((*m_files)[file]->part);
    }
  }
  return parts;
}

std::vector<StandingFinding> AuditedSet::findings() const {
  std::vector<StandingFinding> standing;
  const std::vector<std::vector<int>> slots = slotsNow();
  const bool isAveraged = hasAverages();
  for (std::size_t file = 0; file < slots.size(); ++file) {
    const bool isShown = isAnyThere(slots[file]) || isAveraged;
    if (!isShown && !slots[file].empty()) {
      continue;
    }
    for (const Finding& finding : (*m_files)[file]->findings) {
      Finding now = finding;
      now.slots.clear();
      for (const int slot : finding.slots) {
        const int place = slots[file][static_cast<std::size_t>(slot)];
        if (place != gone) {
          now.slots.push_back(place);
        }
      }
      std::sort(now.slots.begin(), now.slots.end());
      if (finding.slots.empty() || !now.slots.empty() || isAveraged) {
        standing.push_back({std::move(now), file, isShown});
      }
    }
  }
  for (Finding& finding : findingsBetween(partsNow(slots))) {
    standing.push_back({std::move(finding), StandingFinding::none, true});
  }
  return standing;
}

std::vector<StandingFinding> AuditedSet::findingsIn(const Head& head) const {
  std::vector<StandingFinding> standing;
  if (!head.isRegistered() || head.isPhantom || head.isAbsent) {
    return standing;
  }
  const auto add = [&](std::optional<Finding> finding, std::size_t file) {
    if (finding) {
      standing.push_back({std::move(*finding), file, true});
    }
  };
  add(findOutsideMri(m_dipoles, 0, m_dipoles.m_totalDipoles, *head.volume, head.frame, {}),
      StandingFinding::none);
  const std::vector<std::vector<int>> slots = slotsNow();
  for (std::size_t file = 0; file < slots.size(); ++file) {
    const AuditedFile& audited = *(*m_files)[file];
    if (isAnyThere(slots[file])) {
      add(findOtherHead(audited.part, head), file);
    }
    if (isAnyThere(slots[file]) && audited.isCarried) {
      add(findCarriedByOthers(audited.carriedBy, audited.part.name, *head.fiducials), file);
    }
  }
  const std::optional<Fiducials> own = measuredPoints(m_dipoles);
  const bool isSaid = std::any_of(standing.begin(), standing.end(), [](const StandingFinding& one) {
    return one.finding.code == FindingCode::otherHead;
  });
  if (own && !isSaid) {  // of a set that was opened
    add(findOtherHead(*own, {}, head), StandingFinding::none);
  }
  return standing;
}

RepairReport AuditedSet::repair(std::size_t file, const Repairs& repairs) {
  const std::shared_ptr<const AuditedFile> was = m_files->at(file);
  if (!was->source || !was->own) {
    return {};
  }
  AuditedFile next;
  next.part = was->part;
  next.source = was->source;
  next.unit = repairs.unit ? repairs.unit : was->unit;
  next.own = copyOf(*was->own);
  const auto before = slotsOf(*next.own);
  RepairReport report = repairImport(*next.source, *next.own, 0, {repairs.codes, next.unit});
  next.takeFindings(report.left.findings, *next.own);
  next.part.endSlot = next.part.firstSlot + next.own->m_totalDipoles;
  next.part.patient = patientOf(*next.own);
  next.part.points = measuredPoints(*next.own);
  next.part.slices = slicesOfSet(*next.own);
  const CarriedRepair carried{*was->own, *next.own, originsIn(*next.own, before), slotsNow()[file]};
  const auto late = std::count(carried.origins.begin(), carried.origins.end(), CarriedRepair::none);
  if (hasAverages() || !carried.fits(m_dipoles)) {
    throw std::runtime_error(next.part.name +
                             ": its dipoles were changed or averaged since the import. Undo that first, or "
                             "import the file again.");
  }
  if (m_dipoles.m_totalDipoles + late > DipoleTable::capacity) {
    throw std::runtime_error("the set has no room for " + counted(static_cast<std::size_t>(late), "dipole") +
                             " more");
  }
  auto files = std::make_shared<Files>(*m_files);
  const auto slots = slotsAfter(carried.carryOut(m_dipoles));
  std::erase_if(m_known,
                [&](const auto& known) { return known.second.origin.file == static_cast<int>(file); });
  for (std::size_t own = 0; own < slots.size(); ++own) {
    if (slots[own] != gone) {
      know(slots[own], {static_cast<int>(file), static_cast<int>(own)});
    }
  }
  (*files)[file] = std::make_shared<const AuditedFile>(std::move(next));
  m_files = std::move(files);
  report.left.unknown = inSet(report.left.unknown, slots);
  return report;
}

std::vector<int> AuditedSet::slotsAfter(const std::vector<const CDipoleszq*>& dipoles) const {
  const auto now = slotsOf(m_dipoles);
  std::vector<int> slots;
  slots.reserve(dipoles.size());
  for (const CDipoleszq* const dipole : dipoles) {
    slots.push_back(dipole != nullptr ? now.at(dipole) : gone);
  }
  return slots;
}

}  // namespace host
