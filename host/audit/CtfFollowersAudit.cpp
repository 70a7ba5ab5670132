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

bool shows(const CDipoleszq& dipole, const ToldFit& told) {
  return dipole.m_latency == told.latency && dipole.m_fitError == told.fitError &&
         (!told.id || dipole.m_id == *told.id) && (!told.fitTag || dipole.m_fitTag == *told.fitTag);
}

void give(CDipoleszq& dipole, const ToldFlags& told) {
  std::copy(std::begin(told.color), std::end(told.color), std::begin(dipole.m_colorF));
  dipole.m_display = told.display;
}

void give(CDipoleszq& dipole, const ToldFit& told) {
  dipole.m_latency = told.latency;
  dipole.m_fitError = told.fitError;
  dipole.m_id = told.id.value_or(dipole.m_id);
  dipole.m_fitTag = told.fitTag.value_or(dipole.m_fitTag);
}

// Compares a dipole with what it should show; a repair changes it.
template <typename Told>
void settle(AuditPass& pass, Gathered& gathered, std::size_t local, const Told& told, int line) {
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

constexpr std::string_view remedy = "The rows are matched with the dipoles by the numbers in front of them.";

std::string openSentence(std::string_view what) {
  std::string sentence = "The numbers in front of the rows do not tell which ";
  return sentence.append(what).append(" belongs to which dipole; they were given out in order.");
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
  Gathered gathered;
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
      settle(m_pass, gathered, local, told.value_or(ToldFit{0, 0, 0.0, 0.2}),
             row != nullptr ? row->line : line);
    }
  }
  m_pass.tellOf(gathered, "latency and fit error were taken from its own row");
  const std::string who = counted(gathered.slots.size(), "dipole");
  m_pass.add(
      FindingCode::rowOrder, Severity::wrong, "Dipole_FitInfo", std::move(gathered),
      who + ": latency and fit error are those of another dipole, or none although the file gives them.",
      std::string(remedy));
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
