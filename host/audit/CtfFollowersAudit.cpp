// Flags and fit information of a CTF file beside what the dipoles show.
#include <algorithm>
#include <iterator>
#include <optional>
#include <utility>

#include "host/audit/CtfAudit.h"

namespace host {

namespace {

bool shows(const CDipoleszq& dipole, const ToldFlags& told) {
  return dipole.m_display == told.display &&
         std::equal(std::begin(told.color), std::end(told.color), std::begin(dipole.m_colorF));
}

bool shows(const CDipoleszq& dipole, const ToldFit& told, double latency) {
  return dipole.m_latency == latency && dipole.m_fitError == told.fitError &&
         (!told.id || dipole.m_id == *told.id) && (!told.fitTag || dipole.m_fitTag == *told.fitTag);
}

void give(CDipoleszq& dipole, const ToldFlags& told) {
  std::copy(std::begin(told.color), std::end(told.color), std::begin(dipole.m_colorF));
  dipole.m_display = told.display;
}

void give(CDipoleszq& dipole, const ToldFit& told, double latency) {
  dipole.m_latency = latency;
  dipole.m_fitError = told.fitError;
  dipole.m_id = told.id.value_or(dipole.m_id);
  dipole.m_fitTag = told.fitTag.value_or(dipole.m_fitTag);
}

// Compares a dipole with what it should show; a repair changes it.
void settle(AuditPass& pass, Gathered& gathered, std::size_t local, const ToldFlags& told, int line) {
  CDipoleszq* const dipole = pass.dipole(local);
  if (dipole == nullptr || shows(*dipole, told)) {
    return;
  }
  if (pass.repairs(FindingCode::rowOrder)) {
    give(*dipole, told);
    ++gathered.changed;
  } else {
    gathered.add(pass.slotOf(local), line);
  }
}

// What is wrong with the fits of the dipoles.
struct FitFaults {
  Gathered rows;
  Gathered columns;
  Gathered latency;
  Gathered openLatency;
};

// A fit may be that of another row or column, and its latency in another unit; each has its repair.
void settle(AuditPass& pass, FitFaults& faults, std::size_t local, const ToldFit& told, int line) {
  CDipoleszq* const dipole = pass.dipole(local);
  if (dipole == nullptr) {
    return;
  }
  const int slot = pass.slotOf(local);
  const FindingCode code = told.hasOtherColumns ? FindingCode::movingColumns : FindingCode::rowOrder;
  Gathered& gathered = told.hasOtherColumns ? faults.columns : faults.rows;
  const bool isMeant = shows(*dipole, told, told.latency);
  const bool isOwn = isMeant || shows(*dipole, told, told.takenLatency);
  const bool hasFit = isOwn || pass.repairs(code);
  const bool hasUnit = isMeant || told.latency == told.takenLatency || pass.repairs(FindingCode::latencyUnit);
  if (hasFit && !(isOwn && isMeant == hasUnit)) {
    give(*dipole, told, hasUnit ? told.latency : told.takenLatency);
    gathered.changed += isOwn ? 0 : 1;
    faults.latency.changed += told.latency != told.takenLatency && hasUnit ? 1 : 0;
  }
  if (!hasFit) {
    gathered.add(slot, line);
  }
  if (!hasUnit) {
    faults.latency.add(slot, line);
  } else if (told.isLatencyUnitOpen) {
    faults.openLatency.add(slot, line);
  }
}

constexpr std::string_view remedy = "The rows are matched with the dipoles by the numbers in front of them.";

std::string openSentence(std::string_view what) {
  std::string sentence = "The numbers in front of the rows do not tell which ";
  return sentence.append(what).append(" belongs to which dipole; they were given out in order.");
}

void sayFitFaults(AuditPass& pass, FitFaults&& faults) {
  constexpr std::string_view section = "Dipole_FitInfo";
  pass.tellOf(faults.rows, "latency and fit error were taken from its own row");
  pass.tellOf(faults.columns, "latency and fit error were taken from the columns that the heading names");
  pass.tellOf(faults.latency, "the latency was taken in the unit that the heading names");
  const std::string who = counted(faults.rows.slots.size(), "dipole");
  pass.add(FindingCode::rowOrder, Severity::wrong, section, std::move(faults.rows),
           who + ": latency and fit error are those of another dipole, or none although the file gives them.",
           std::string(remedy));
  pass.add(
      FindingCode::movingColumns, Severity::wrong, section, std::move(faults.columns),
      "The fit information has other columns than the import takes for granted, so the latencies and fit "
      "errors that are shown are not those of the file.",
      "Latencies and fit errors are taken from the columns that the heading names.");
  pass.add(
      FindingCode::latencyUnit, Severity::wrong, section, std::move(faults.latency),
      "The latencies were taken as seconds, but the heading gives them in milliseconds, so they are wrong "
      "by a factor of 1000.",
      "The latencies are taken in the unit of the heading.");
  pass.add(FindingCode::latencyUnit, Severity::doubtful, section, std::move(faults.openLatency),
           "The file does not say whether its latencies are seconds or milliseconds; they were taken as "
           "seconds.",
           {});
}

}  // namespace

void CtfAudit::lookAtFlags(const CtfFollowers& followers, const std::vector<int>& slots) {
  const int line = followers.firstLine(CtfKind::flags);
  if (!followers.areFlagsCertain()) {
    sayProblem(FindingCode::rowOrder, Severity::wrong, line, "Dipole_Flags", openSentence("colour"));
    return;
  }
  const bool areNew = line == 0 && !hasMoving();  // dipoles that nothing has given a colour
  Gathered gathered;
  for (std::size_t local = 0; local < slots.size() && !areNew; ++local) {
    const CtfFollower* const row = followers.flags(local);
    const ToldFlags told = row != nullptr ? CtfFollowers::toldFlags(*row).value_or(ToldFlags()) : ToldFlags();
    settle(m_pass, gathered, local, told, row != nullptr ? row->line : line);
  }
  m_pass.tellOf(gathered, "colour and visibility were taken from its own row");
  const std::string who = counted(gathered.slots.size(), "dipole");
  m_pass.add(FindingCode::rowOrder, Severity::wrong, "Dipole_Flags", std::move(gathered),
             who + ": colour and visibility are those of another dipole, or of none.", std::string(remedy));
}

void CtfAudit::lookAtFits(const CtfFollowers& followers, const std::vector<int>& slots) {
  const int line = followers.firstLine(CtfKind::fitInfo);
  if (!followers.areFitsCertain()) {
    sayProblem(FindingCode::rowOrder, Severity::wrong, line, "Dipole_FitInfo",
               openSentence("latency and fit error"));
    return;
  }
  FitFaults faults;
  std::vector<int> unfitted;
  unfitted.reserve(line == 0 ? slots.size() : 0);
  for (std::size_t local = 0; local < slots.size(); ++local) {
    const CtfRow& dipole = m_reading.rows[static_cast<std::size_t>(slots[local])];
    const CtfSection& section = m_reading.sections[static_cast<std::size_t>(dipole.section)];
    const std::optional<ToldFit> told = line != 0 ? followers.toldFit(local) : std::nullopt;
    if (dipole.isForeign || (section.kind == CtfKind::moving && !told)) {
      continue;  // moving dipoles bring their own
    }
    if (!told) {
      unfitted.push_back(m_pass.slotOf(local));
    }
    if (line != 0) {  // else nothing has given it a fit
      const CtfFollower* const row = followers.fit(local);
      ToldFit none;
      none.id = none.fitTag = 0;
      settle(m_pass, faults, local, told.value_or(none), row != nullptr ? row->line : line);
    }
  }
  sayFitFaults(m_pass, std::move(faults));
  sayNoFit(std::move(unfitted));
}

// Moving dipoles may take the places of others, and their colours.
bool CtfAudit::hasMoving() const {
  return std::any_of(m_reading.sections.begin(), m_reading.sections.end(), [](const CtfSection& section) {
    return section.kind == CtfKind::moving && section.isAccepted;
  });
}

void CtfAudit::sayNoFit(std::vector<int>&& slots) {
  if (slots.empty()) {
    return;
  }
  std::for_each(slots.rbegin(), slots.rend(), [this](int slot) {  // the last one makes room for all
    m_pass.markUnknown(slot, DipoleValue::latency);
    m_pass.markUnknown(slot, DipoleValue::fitError);
  });
  const std::string who = counted(slots.size(), "dipole");
  m_pass.add({FindingCode::noFit,
              Severity::note,
              {},
              0,
              "Dipole_FitInfo",
              std::move(slots),
              "The file gives no latency and no fit error for " + who +
                  "; the latency 0 ms and the fit error 0.2 % that a dipole then has are not fitted.",
              {}});
}

}  // namespace host
