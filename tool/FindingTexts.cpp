#include "tool/FindingTexts.h"

#include <algorithm>
#include <cstddef>

#include "tool/Text.h"

namespace tool {
namespace {

// The option that applies the remedy; empty when there is none.
std::string repairOption(const host::Finding& finding) {
  if (finding.remedy.empty()) {
    return {};
  }
  return finding.asksForUnit ? "--unit cm or --unit mm" : "--repair " + std::string(nameOf(finding.code));
}

std::vector<int> numbersOf(const host::Finding& finding, const CDipoleFace& set) {
  std::vector<int> numbers;
  for (const int slot : finding.slots) {
    if (const CDipoleszq* const dipole = set.m_dipoles[slot]) {
      numbers.push_back(dipole->m_number);
    }
  }
  return numbers;
}

// "dipole 3", "dipoles 1-5, 7, 9-12, ... (40 in all)".
std::string dipolesText(const std::vector<int>& numbers) {
  constexpr std::size_t mostRanges = 12;
  std::string text = numbers.size() == 1 ? "dipole " : "dipoles ";
  std::size_t ranges = 0;
  for (std::size_t first = 0; first < numbers.size(); ++ranges) {
    if (ranges == mostRanges) {
      return text + ", ... (" + std::to_string(numbers.size()) + " in all)";
    }
    std::size_t last = first;
    while (last + 1 < numbers.size() && numbers[last + 1] == numbers[last] + 1) {
      ++last;
    }
    text += (ranges == 0 ? "" : ", ") + std::to_string(numbers[first]);
    text += last > first ? "-" + std::to_string(numbers[last]) : "";
    first = last + 1;
  }
  return text;
}

}  // namespace

std::string findingLine(const host::Finding& finding) {
  const std::string option = repairOption(finding);
  return lineOf(finding) + (option.empty() ? "" : " [" + option + "]");
}

std::string findingReport(const host::Finding& finding, const CDipoleFace& set, bool isAccepted) {
  std::string text = finding.file + (finding.line > 0 ? ":" + std::to_string(finding.line) : "");
  text += (text.empty() ? "" : ": ") + std::string(nameOf(finding.severity)) + ", " +
          std::string(nameOf(finding.code)) + (isAccepted ? ", accepted" : "");
  const std::vector<int> numbers = numbersOf(finding, set);
  std::string where = finding.section.empty() ? "" : "section " + finding.section;
  where += numbers.empty() ? "" : (where.empty() ? "" : ", ") + dipolesText(numbers);
  text += "\n";
  for (const std::string& line : {where, finding.sentence}) {
    text += line.empty() ? "" : "  " + line + "\n";
  }
  if (!finding.remedy.empty()) {
    text += "  Remedy (" + repairOption(finding) + "): " + finding.remedy + "\n";
  }
  return printableLines(text);
}

host::Json findingJson(const host::Finding& finding, const CDipoleFace& set, bool isAccepted) {
  return {{"severity", nameOf(finding.severity)},
          {"code", nameOf(finding.code)},
          {"file", host::jsonText(finding.file)},
          {"line", finding.line > 0 ? host::Json(finding.line) : host::Json(nullptr)},
          {"section", host::jsonText(finding.section)},
          {"dipoles", numbersOf(finding, set)},
          {"sentence", finding.sentence},
          {"remedy", host::jsonText(finding.remedy)},
          {"accepted", isAccepted}};
}

std::string codesHelp() {
  std::size_t width = 0;
  for (const host::FindingMeaning& meaning : host::findingMeanings()) {
    width = (std::max)(width, meaning.name.size());
  }
  std::string text;
  for (const host::FindingMeaning& meaning : host::findingMeanings()) {
    text += "  " + std::string(meaning.name) + std::string(width + 2 - meaning.name.size(), ' ');
    text += std::string(meaning.meaning) + "\n";
  }
  return text;
}

}  // namespace tool
