#include "host/audit/Finding.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <set>

namespace host {

namespace {

constexpr std::array<FindingMeaning, 22> meanings = {{
    {FindingCode::unit, "unit", "the file does not say whether its positions are cm or mm, or says mm"},
    {FindingCode::latencyUnit, "latency-unit",
     "latencies were taken in another unit than the file's, or the file does not say in which they are"},
    {FindingCode::movingColumns, "moving-columns",
     "rows of dipoles have other columns than the import takes for granted"},
    {FindingCode::rowOrder, "row-order",
     "latency, fit error or colour of a dipole came from the row of another one, or from none"},
    {FindingCode::noFit, "no-fit", "the file has no latency and fit error for some dipoles"},
    {FindingCode::msiColumns, "msi-columns",
     "a 4D/MSI table has other columns than the import takes for granted"},
    {FindingCode::msiPercent, "msi-percent", "a 4D/MSI table gives the goodness of fit in percent"},
    {FindingCode::fiducials, "fiducials", "the file's fiducial points were not read"},
    {FindingCode::sphere, "sphere", "the file's head sphere was not read as it stands there"},
    {FindingCode::encoding, "encoding", "texts of the file were read in another encoding than its own"},
    {FindingCode::labels, "labels", "a dipole's label was cut, or is that of the dipole before it"},
    {FindingCode::lostRows, "lost-rows", "rows of dipoles did not arrive as they stand in the file"},
    {FindingCode::sections, "sections", "a section is unclosed, repeated, misspelt or missing"},
    {FindingCode::outsideHead, "outside-head", "dipoles lie outside of the head"},
    {FindingCode::severalPatients, "several-patients", "the files name different patients"},
    {FindingCode::otherHead, "other-head", "the fiducial points are those of another head"},
    {FindingCode::symmetricEars, "symmetric-ears",
     "Neuromag positions were read without the head's fiducial points"},
    {FindingCode::heading, "heading", "a Neuromag file does not name its columns or its coordinate system"},
    {FindingCode::momentVector, "moment-vector", "a dipole's amplitude is not the length of its moment"},
    {FindingCode::goodness, "goodness-of-fit", "a fit error was made of a goodness of fit"},
    {FindingCode::leftOut, "left-out", "the file holds values that a set has no room for"},
    {FindingCode::mriPoints, "mri-points", "the fiducial points in an MRI are in doubt, or no usual head's"},
}};

}  // namespace

std::span<const FindingMeaning> findingMeanings() {
  return meanings;
}

std::string_view nameOf(FindingCode code) {
  return meanings.at(static_cast<std::size_t>(code)).name;
}

std::string_view nameOf(Severity severity) {
  constexpr std::array<std::string_view, 3> names = {"note", "doubtful", "wrong"};
  return names.at(static_cast<std::size_t>(severity));
}

std::optional<FindingCode> findingCodeNamed(std::string_view name) {
  const auto* const found =
      std::find_if(meanings.begin(), meanings.end(),
                   [name](const FindingMeaning& meaning) { return meaning.name == name; });
  return found != meanings.end() ? std::optional(found->code) : std::nullopt;
}

std::string lineOf(const Finding& finding) {
  std::string text = finding.file;
  if (finding.line > 0) {
    text += ":" + std::to_string(finding.line);
  }
  text += text.empty() ? "" : ": ";
  text.append(nameOf(finding.severity)).append(" (").append(nameOf(finding.code)).append("): ");
  return text + finding.sentence;
}

std::vector<std::string> textsWithFiles(std::span<const FileText> texts) {
  struct Said {
    const FileText* first;
    std::set<std::string_view> files;
  };
  std::vector<Said> all;  // the same of many files is one text
  for (const FileText& text : texts) {
    const auto same =
        std::find_if(all.begin(), all.end(), [&](const Said& said) { return said.first->text == text.text; });
    (same != all.end() ? *same : all.emplace_back(Said{&text, {}})).files.insert(text.file);
  }
  std::vector<std::string> result;
  for (const Said& said : all) {
    const std::string_view file = said.first->file;
    std::string text(file.substr(file.find_last_of("/\\") + 1));
    text += said.files.size() > 1 ? " and " + std::to_string(said.files.size() - 1) + " more" : "";
    result.push_back(text + (text.empty() ? "" : ": ") + said.first->text);
  }
  return result;
}

std::vector<std::string> wrongTexts(std::span<const Finding> findings) {
  std::vector<FileText> texts;
  for (const Finding& finding : findings) {
    if (finding.severity == Severity::wrong) {
      texts.push_back({finding.file, finding.sentence});
    }
  }
  return textsWithFiles(texts);
}

}  // namespace host
