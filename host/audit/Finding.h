// What the audit of an imported file has to say: one finding for each thing that arrived otherwise than the
// file says, or that cannot be told from the file. docs/audit.md explains each code.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace host {

enum class Severity {
  note,      // nothing shown is wrong; a value may be unknown
  doubtful,  // the file leaves open whether what is shown is right
  wrong      // what is shown is not what the file says
};

enum class FindingCode {
  unit,
  latencyUnit,
  movingColumns,
  rowOrder,
  noFit,
  msiColumns,
  msiPercent,
  fiducials,
  sphere,
  encoding,
  labels,
  lostRows,
  sections,
  outsideHead,
  severalPatients,
  otherHead,
  symmetricEars,
  heading,
  momentVector,
  goodness,
  leftOut,
  mriPoints
};

struct FindingMeaning {
  FindingCode code;
  std::string_view name;     // as users write it: "row-order"
  std::string_view meaning;  // one line for help texts, without a full stop
};

// Every code, in the order of FindingCode.
std::span<const FindingMeaning> findingMeanings();

std::string_view nameOf(FindingCode code);
std::string_view nameOf(Severity severity);  // "note", "doubtful", "wrong"
std::optional<FindingCode> findingCodeNamed(std::string_view name);

struct Finding {
  FindingCode code = FindingCode::sections;
  Severity severity = Severity::note;
  std::string file;          // as the caller names it; empty when the finding is about several files
  int line = 0;              // of the file, from 1, the first one concerned; 0: the file as a whole
  std::string section;       // of a CTF file, such as "Dipoles"; else empty
  std::vector<int> slots;    // of the dipoles concerned in the set, in rising order
  std::string sentence;      // UTF-8, whole sentences for a clinician
  std::string remedy;        // UTF-8, what a repair would do; empty when there is none
  bool isAnswered = false;   // the user's own answer to the module's question brought it about
  bool asksForUnit = false;  // the remedy needs the user's word: cm or mm

  bool operator==(const Finding&) const = default;
};

// One line: "auditory.dip:12: wrong (unit): ..."; the remedy is not in it.
std::string lineOf(const Finding& finding);

// What is said about a file; without a file's name about all of them.
struct FileText {
  std::string file;
  std::string text;
};

// For pictures: each text once, with the file's name without folders, "old.dip and 2 more: ...".
std::vector<std::string> textsWithFiles(std::span<const FileText> texts);

// What is wrong, likewise.
std::vector<std::string> wrongTexts(std::span<const Finding> findings);

}  // namespace host
