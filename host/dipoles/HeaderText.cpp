#include "host/dipoles/HeaderText.h"

#include "host/text/Blanks.h"
#include "host/text/PathText.h"

namespace host {

namespace {

std::string_view withoutKeyword(std::string_view text, std::string_view keyword) {
  std::string_view rest = withoutBlanks(text);
  for (std::string_view end = keyword; !end.empty(); end.remove_prefix(1)) {
    if (rest.starts_with(end)) {
      rest.remove_prefix(end.size());
      break;
    }
  }
  return withoutBlanks(rest);
}

}  // namespace

std::string headerText(const CString& text, std::string_view keyword) {
  const std::string all = utf8Of(text);
  return all == "non" ? std::string() : std::string(withoutKeyword(all, keyword));
}

std::string patientOf(const CDipoleFace& set) {
  const std::string fromCtf = headerText(set.m_patient, "PATIENT:");
  return std::string(withoutKeyword(fromCtf, "MRI/CT Patient:"));
}

std::string versionOf(const CDipoleFace& set) {
  const std::string fromCtf = headerText(set.m_fileVersion, "VERSION:");
  return std::string(withoutKeyword(fromCtf, "Dipole File:"));
}

}  // namespace host
