// The audit of one imported file: its text is read a second time, by this program's own reader, and compared
// with what the module's import made of it.
//
// It looks at the set as it is right after the import of this file, before another file is imported and
// before anybody changes it: the file's dipoles are the last ones of the set. Nothing here shows a message.
#pragma once

#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "host/audit/Finding.h"
#include "host/dipoles/UnknownValues.h"
#include "module/dipole.h"

namespace host {

enum class DipoleTextFormat { ctf, msi };

enum class LengthUnit { centimetre, millimetre };

// What the module asked about the file and was told, in the order of the questions; true for yes. A question
// that has no answer here counts as answered with no.
struct ImportAnswers {
  std::vector<bool> moving;   // "This is moving dipoles, would you like to import?"
  std::vector<bool> distant;  // "It seems the dipole location is wrong (...), do you like to import?"
};

struct ImportedText {
  std::string name;       // of the file, as findings shall give it (UTF-8)
  std::string_view text;  // all bytes of the file
  DipoleTextFormat format = DipoleTextFormat::ctf;
  ImportAnswers answers;
  int firstSlot = 0;               // how many dipoles the set had before the import
  std::optional<LengthUnit> unit;  // of the positions, when the user has said it: for files that do not
};

struct AuditReport {
  std::vector<Finding> findings;  // in the order of the codes, then of the lines
  UnknownValues unknown;          // by slot of the set, of this file's dipoles alone
};

// The findings about one file. Never changes the set.
AuditReport audit(const ImportedText& file, const CDipoleFace9File& set);

struct RepairReport {
  std::vector<std::string> told;  // UTF-8, a sentence for each thing that was changed
  AuditReport left;               // what the audit says afterwards
};

// Applies the remedies of the findings that have one of the codes. `unit` needs file.unit. What a remedy is
// not sure about stays as it is; a second repair changes nothing. Slots of dipoles may change: rows that the
// import refused come where they stand in the file. Throws what an allocation throws; the set may then be
// repaired in part.
RepairReport repair(const ImportedText& file, CDipoleFace9File& set, const std::set<FindingCode>& codes);

// All codes, for "--repair all".
std::set<FindingCode> allFindingCodes();

}  // namespace host
