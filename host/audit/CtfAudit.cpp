#include "host/audit/CtfAudit.h"

#include <algorithm>
#include <cstddef>
#include <memory>
#include <utility>

#include "host/audit/CtfSectionAudit.h"

namespace host {

namespace {

bool isOfDipoles(const CtfSection& section) {
  return section.kind == CtfKind::dipoles || section.kind == CtfKind::moving;
}

// Why rows with this fate did not come.
std::string_view causeOf(RowFate fate) {
  switch (fate) {
    case RowFate::refused:
      return "their fields are not the numbers that the import expects";
    case RowFate::marked:
      return "they hold a brace, // or (cm), which means something else to the import";
    case RowFate::behindEnd:
      return "they stand behind the end of their section";
    case RowFate::unclosed:
      return "the last line of the file has no line end";
    case RowFate::noRoom:
      return "a set has room for 30000 dipoles";
    default:
      return {};
  }
}

}  // namespace

CtfAudit::CtfAudit(AuditPass& pass, const TextEncoding& encoding)
    : m_pass(pass), m_encoding(encoding), m_reading(pass.file(), encoding) {}

void CtfAudit::run() {
  insertUnread();
  const auto come = static_cast<std::size_t>((std::max)(m_pass.dipolesOfFile(), 0));
  const std::vector<int>& slots = isRepairedByRows() ? m_reading.repairedSlots : m_reading.slots;
  if (slots.size() == come) {
    const CtfFollowers followers(m_reading, slots);
    lookAtDipoles(followers, slots);
    lookAtFlags(followers, slots);
    lookAtFits(followers, slots);
  } else {
    sayProblem(FindingCode::lostRows, Severity::wrong, 0, {},
               counted(slots.size(), "dipole") + " should have come of this file, but " +
                   std::to_string(come) + " did.");
  }
  countMissing();
  lookAtLostRows();
  lookAtProblems();
  lookAtReplaced();
  lookAtHead();
}

// Whether the set holds what only the encoding had kept away.
bool CtfAudit::isRepairedByRows() const {
  return m_pass.dipolesOfFile() == static_cast<int>(m_reading.repairedSlots.size());
}

// The dipoles that only the encoding kept away; none when not all of them can be told, or fit into the set.
std::vector<LateDipole> CtfAudit::unreadDipoles() const {
  return lateDipolesOf(
      m_pass, m_reading, [](const CtfRow& row) { return row.fate == RowFate::unread; },
      [this](const CtfRow& row) {
        return CtfSectionAudit(m_pass, m_encoding, m_reading, row.section).makeDipole(row);
      });
}

void CtfAudit::insertUnread() {
  if (!m_pass.repairs(FindingCode::encoding) || isRepairedByRows()) {
    return;
  }
  std::vector<LateDipole> late = unreadDipoles();
  if (late.empty()) {
    return;
  }
  m_pass.tell(counted(late.size(), "dipole") + " of a section that its encoding had hidden came to the set.");
  m_pass.target().m_coordinateType = 3;
  m_pass.target().m_momentInNAm = m_reading.namesNanoamperemetre ? 1 : m_pass.set().m_momentInNAm;
  insertDipoles(m_pass.target(), std::move(late));
}

void CtfAudit::lookAtDipoles(const CtfFollowers& followers, const std::vector<int>& slots) {
  std::map<int, CtfSectionAudit> sections;
  CtfSectionAudit* current = nullptr;
  int open = -1;
  Gathered foreign;
  for (std::size_t local = 0; local < slots.size(); ++local) {
    const CtfRow& row = m_reading.rows[static_cast<std::size_t>(slots[local])];
    if (row.section != open) {
      open = row.section;
      current = &sections.try_emplace(open, m_pass, m_encoding, m_reading, open).first->second;
    }
    current->look(local, row, followers);
    if (row.isForeign) {
      foreign.add(m_pass.slotOf(local), row.line);
    }
  }
  for (auto& [section, audit] : sections) {
    audit.finish();
  }
  const std::string who = counted(foreign.slots.size(), "dipole");
  m_pass.add(FindingCode::sections, Severity::wrong, {}, std::move(foreign),
             who + " came of rows that stand behind the beginning of another section: they are no dipoles.",
             {});
}

void CtfAudit::countMissing() {
  for (const CtfRow& row : m_reading.rows) {
    if (row.fate != RowFate::arrived) {
      Missing& missing = m_missing[{row.section, row.fate}];
      missing.line = missing.count++ == 0 ? row.line : missing.line;
    }
  }
}

void CtfAudit::lookAtLostRows() {
  for (const auto& [key, missing] : m_missing) {
    const auto& [section, fate] = key;
    const std::string_view cause = causeOf(fate);
    if (!cause.empty()) {
      std::string sentence = counted(missing.count, "row") + " of dipoles did not come: ";
      sentence.append(cause).append(".");
      sayProblem(FindingCode::lostRows, Severity::wrong, missing.line,
                 m_reading.sections[static_cast<std::size_t>(section)].name, std::move(sentence));
    }
  }
}

void CtfAudit::sayProblem(FindingCode code, Severity severity, int line, std::string_view section,
                          std::string sentence) {
  m_pass.add({code, severity, {}, line, std::string(section), {}, std::move(sentence), {}});
}

void CtfAudit::lookAtProblems() {
  bool isMeant = std::any_of(m_reading.sections.begin(), m_reading.sections.end(), isOfDipoles);
  for (const CtfProblem& problem : m_reading.problems) {
    const std::string text(problem.text);
    const std::string_view section = problem.section >= 0
                                         ? m_reading.sections[static_cast<std::size_t>(problem.section)].name
                                         : std::string_view();
    std::string sentence;
    switch (problem.kind) {
      case CtfProblemKind::swallowed:
        sentence.append("The section before ").append(text).append(" has no end, so ").append(text);
        sentence.append(" was not read.");
        break;
      case CtfProblemKind::endsInside:
        sentence = "The file ends inside of a section; its end may be missing.";
        break;
      case CtfProblemKind::misspelt:
        isMeant = true;
        sentence =
            "The section " + text + " was not read, because its name does not stand alone on its line.";
        break;
      case CtfProblemKind::stopped:
        sentence = "The section " + text + " was not read, because a section of dipoles before it has none.";
        break;
    }
    sayProblem(FindingCode::sections, Severity::wrong, problem.line, section, std::move(sentence));
  }
  if (!isMeant) {
    sayProblem(FindingCode::sections, Severity::wrong, 0, {},
               "The file has no section of dipoles; it does not look like a CTF dipole file.");
  }
}

// Moving dipoles that are accepted take the place of all dipoles before them.
void CtfAudit::lookAtReplaced() {
  std::vector<int> replaced;  // sections
  std::size_t rows = 0;
  for (const auto& [key, missing] : m_missing) {
    if (key.second == RowFate::replaced) {
      replaced.push_back(key.first);
      rows += missing.count;
    }
  }
  if (replaced.empty()) {
    return;
  }
  const bool hasMoving = std::any_of(replaced.begin(), replaced.end(), [this](int section) {
    return m_reading.sections[static_cast<std::size_t>(section)].kind == CtfKind::moving;
  });
  const CtfSection& first = m_reading.sections[static_cast<std::size_t>(replaced.front())];
  Finding finding{FindingCode::sections,
                  hasMoving ? Severity::wrong : Severity::doubtful,
                  {},
                  first.line,
                  std::string(first.name),
                  {},
                  {},
                  {}};
  finding.sentence = "The last section of moving dipoles that was accepted replaced " +
                     counted(rows, "dipole") + " of sections before it.";
  finding.isAnswered = true;
  m_pass.add(std::move(finding));
}

}  // namespace host
