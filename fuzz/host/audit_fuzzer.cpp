// Imports the input by the module, audits it, repairs it, audits it again.
//
// The first byte decides what happens around it: bits 0 to 3 answer the module's questions in turn, bit 4
// reads a 4D/MSI table instead of a CTF file, bit 5 gives the audit no answers, bit 6 has other dipoles in
// the set before, bits 6 and 7 together say the unit, bit 7 alone changes the set behind the import's back.
#include <afxwin.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>

#include "fuzz/Check.h"
#include "fuzz/FuzzFile.h"
#include "fuzz/FuzzUser.h"
#include "fuzz/import/CtfWords.h"
#include "host/audit/FileAudit.h"
#include "host/text/PathText.h"

namespace {

enum : std::uint8_t { answerBits = 0x0F, msi = 0x10, noAnswers = 0x20, behindOthers = 0x40, changed = 0x80 };

// Importers that take a path of any name.
class Set : public CDipoleFace9File {
 public:
  void importFile(const CString& path, bool isMsi) {
    CString name = path;
    const int result = isMsi ? import4DMSIDipolesX(name, false) : importCTFDipolesX(name, false);
    check(result == 1, "an import of a file that is there gives 1");
  }
};

void checkSlots(const host::AuditReport& report, const Set& set, int first) {
  for (const host::Finding& finding : report.findings) {
    check(!finding.sentence.empty(), "every finding has a sentence");
    check(finding.line >= 0, "a line is one of the file, or none");
    int before = -1;
    for (const int slot : finding.slots) {
      check(slot >= first && slot < set.m_totalDipoles, "the slots of a finding are those of the file");
      check(slot > before, "the slots of a finding rise");
      before = slot;
    }
  }
  check(report.unknown.end() <= set.m_totalDipoles, "unknown values are those of dipoles");
}

// Whether everything wrong that is left says that it has no remedy, or needs a word of the user.
void checkRepaired(const host::AuditReport& left, bool isUnitSaid) {
  for (const host::Finding& finding : left.findings) {
    const bool needsUnit = finding.asksForUnit && !isUnitSaid;
    const bool isLeft = finding.severity == host::Severity::wrong && !finding.remedy.empty() && !needsUnit;
    check(!isLeft, ("nothing wrong is left behind a repair: " + lineOf(finding)).c_str());
  }
}

std::string stateOf(const Set& set) {
  std::string state = std::to_string(set.m_totalDipoles);
  const auto add = [&state](const auto& value) {
    state.append(reinterpret_cast<const char*>(&value), sizeof value);
  };
  for (int slot = 0; slot < set.m_totalDipoles; ++slot) {
    const CDipoleszq& dipole = *set.m_dipoles[slot];
    add(dipole.m_location);
    add(dipole.m_orientation);
    add(dipole.m_rawLocation.m_center);
    add(dipole.m_rawOrientation.m_center);
    add(dipole.m_latency);
    add(dipole.m_fitError);
    add(dipole.m_moment);
    add(dipole.m_id);
    add(dipole.m_fitTag);
    add(dipole.m_number);
    add(dipole.m_colorF);
    add(dipole.m_display);
    state += host::utf8Of(dipole.m_label);
  }
  add(set.m_sphereCtf.m_center);
  add(set.m_sphereCtf.m_radius);
  return state + host::utf8Of(set.m_patient) + host::utf8Of(set.m_fileVersion) + host::utf8Of(set.m_mriFile);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const FuzzFile file("input");
  static const CString path = host::textOf(file.path());
  static FuzzUser user(ctfMessages, ctfQuestions);
  static const auto set = std::make_unique<Set>();
  if (size == 0) {
    return 0;
  }
  const std::uint8_t mode = data[0];
  const bool isMsi = (mode & msi) != 0;
  set->cleanDipoles();
  set->m_bCtfSphereSet = 0;
  set->m_fiducialMri.resetAllFiducialPt();
  set->m_fiducialCtf.resetAllFiducialPt();
  set->m_patient = set->m_fileVersion = set->m_mriFile = _T("non");
  for (int i = 0; i < ((mode & behindOthers) != 0 ? 3 : 0); ++i) {
    set->addDipoleF(1, 2, 3);
  }
  const int first = set->m_totalDipoles;
  file.write(data + 1, size - 1);
  user.start(mode & answerBits);
  set->importFile(path, isMsi);

  host::ImportedText imported;
  imported.name = "input";
  imported.text = {reinterpret_cast<const char*>(data) + 1, size - 1};
  imported.format = isMsi ? host::DipoleTextFormat::msi : host::DipoleTextFormat::ctf;
  imported.firstSlot = first;
  const bool isUnitSaid = (mode & behindOthers) != 0 && (mode & changed) != 0;
  if (isUnitSaid) {
    imported.unit = (mode & 1U) != 0 ? host::LengthUnit::centimetre : host::LengthUnit::millimetre;
  } else if ((mode & changed) != 0 && set->m_totalDipoles > 0) {
    set->deleteDipole(set->m_totalDipoles - 1, 1);
    imported.firstSlot = (std::min)(first, set->m_totalDipoles);
  }
  const bool hasAnswers = (mode & noAnswers) == 0;
  for (std::size_t i = 0; i < user.questions.size() && hasAnswers; ++i) {
    const bool isMoving = user.questions[i].starts_with(ctfQuestions[0]);
    (isMoving ? imported.answers.moving : imported.answers.distant)
        .push_back(FuzzUser::isYes(mode & answerBits, i));
  }
  user.start(0);

  const std::string before = stateOf(*set);
  const host::AuditReport report = host::audit(imported, *set);
  check(stateOf(*set) == before, "an audit changes nothing");
  checkSlots(report, *set, imported.firstSlot);
  // Bytes that only claim to be UTF-16 may hold sections that the module sees.
  const bool isWide = imported.text.starts_with("\xFF\xFE") || imported.text.starts_with("\xFE\xFF");
  if (hasAnswers && !isWide && !((mode & changed) != 0 && !isUnitSaid)) {
    for (const host::Finding& finding : report.findings) {
      check(finding.sentence.find("should have come") == std::string::npos,
            "the audit knows how many dipoles an import gives");
      check(finding.sentence.find("to the place") == std::string::npos,
            "the audit knows where an import puts its dipoles");
    }
  }
  const host::RepairReport repaired = host::repair(imported, *set, host::allFindingCodes());
  checkSlots(repaired.left, *set, imported.firstSlot);
  checkRepaired(repaired.left, isUnitSaid);
  const std::string after = stateOf(*set);
  const host::RepairReport again = host::repair(imported, *set, host::allFindingCodes());
  check(stateOf(*set) == after, "a second repair changes nothing");
  check(again.told.empty(), "a second repair tells nothing");
  check(again.left.findings == repaired.left.findings, "and finds the same");
  check(user.messages.empty() && user.questions.empty(), "an audit shows nothing");
  return 0;
}
