#include "host/audit/AuditPass.h"

#include <algorithm>
#include <cstring>
#include <memory>
#include <utility>

namespace host {

namespace {

void set3(double (&target)[3], const Place& values) {
  std::copy(values.begin(), values.end(), target);
}

Place of3(const double (&values)[3]) {
  return {values[0], values[1], values[2]};
}

// What was never backed up, or was changed since, stays.
void follow(CSpherezq& backup, const Place& before, const Place& now) {
  if (backup.m_radius != 0.0 && of3(backup.m_center) == before) {
    set3(backup.m_center, now);
  }
}

}  // namespace

std::string counted(std::size_t count, std::string_view one) {
  std::string text = std::to_string(count) + " ";
  text.append(one);
  return count == 1 ? text : text + "s";
}

const CString& noLabel() {
  static const CString text(_T("Non"));
  return text;
}

bool AuditPass::settleMoment(FindingCode code, CDipoleszq& dipole, double moment, const Place& orientation,
                             bool& isChanged) {
  const bool isSettled = settle(code, dipole.m_moment, moment, isChanged);
  if (orientationOf(dipole) == orientation) {
    return isSettled;
  }
  if (!repairs(code)) {
    return false;
  }
  setOrientation(dipole, orientation);
  isChanged = true;
  return isSettled;
}

bool AuditPass::settleHeader(CString CDipoleFace::*member, const CString& meant, std::string_view what) {
  if (m_set.*member == meant) {
    return true;
  }
  if (!repairs(FindingCode::encoding)) {
    return false;
  }
  target().*member = meant;
  tell(std::string("The ").append(what).append(" was decoded."));
  return true;
}

void AuditPass::tellOf(const Gathered& gathered, std::string_view what) {
  if (gathered.changed > 0) {
    tell(counted(gathered.changed, "dipole").append(": ").append(what).append("."));
  }
}

void AuditPass::add(Finding finding) {
  finding.file = m_file.name;
  m_findings.push_back(std::move(finding));
}

void AuditPass::add(FindingCode code, Severity severity, std::string_view section, Gathered&& gathered,
                    std::string sentence, std::string remedy) {
  if (!gathered.isEmpty()) {
    add({code,
         severity,
         {},
         gathered.line,
         std::string(section),
         std::move(gathered.slots),
         std::move(sentence),
         std::move(remedy)});
  }
}

void AuditPass::addOpenUnit(Severity severity, std::string_view section, Gathered&& gathered,
                            std::string sentence) {
  const bool isThere = !gathered.isEmpty();
  add(FindingCode::unit, severity, section, std::move(gathered), std::move(sentence),
      "The positions are taken in the unit that you say, cm or mm.");
  if (isThere) {
    m_findings.back().asksForUnit = true;
  }
}

AuditReport AuditPass::takeReport() {
  std::stable_sort(m_findings.begin(), m_findings.end(), [](const Finding& a, const Finding& b) {
    return std::pair(a.code, a.line) < std::pair(b.code, b.line);
  });
  return {std::move(m_findings), std::move(m_unknown)};
}

void setPlace(CDipoleszq& dipole, const Place& place) {
  follow(dipole.m_rawLocation, placeOf(dipole), place);
  set3(dipole.m_location, place);
}

Place orientationOf(const CDipoleszq& dipole) {
  return of3(dipole.m_orientation);
}

void setOrientation(CDipoleszq& dipole, const Place& orientation) {
  follow(dipole.m_rawOrientation, orientationOf(dipole), orientation);
  set3(dipole.m_orientation, orientation);
}

void insertDipoles(CDipoleFace9File& set, std::vector<LateDipole>&& late) {
  if (late.empty()) {
    return;
  }
  const int first = late.front().slot;
  int from = set.m_totalDipoles;
  int to = from + static_cast<int>(late.size());
  set.m_totalDipoles = set.m_importEnd = to;
  set.m_currentDipole = to - 1;  // as an import leaves it
  while (!late.empty()) {
    --to;
    if (late.back().slot == to) {
      late.back().dipole->backUpLocationRotationRaw();
      set.m_dipoles.store(to, std::move(late.back().dipole));
      late.pop_back();
    } else {
      set.m_dipoles.move(--from, to);
    }
  }
  for (int slot = first; slot < set.m_totalDipoles; ++slot) {
    if (CDipoleszq* const dipole = set.m_dipoles[slot]) {
      dipole->m_number = slot + 1;
    }
  }
}

}  // namespace host
