#include "host/page/PageTexts.h"

#include <algorithm>
#include <string_view>
#include <utility>

#include "host/dipoles/DipoleArrows.h"
#include "host/dipoles/DipolePlace.h"
#include "host/dipoles/DipoleScene.h"
#include "host/page/PageDipoles.h"
#include "host/panes/AtlasTexts.h"
#include "host/panes/PaneWarnings.h"
#include "host/text/Numbers.h"
#include "host/text/PathText.h"
#include "host/text/Utf8.h"

namespace host {

namespace {

std::string asSentence(std::string text) {
  if (!text.empty() && text.front() >= 'a' && text.front() <= 'z') {
    text.front() = static_cast<char>(text.front() - 'a' + 'A');
  }
  return text + ".";
}

std::string withoutFolders(const std::string& file) {
  return utf8Of(fileNameOf(fromUtf8(file)));
}

std::string meaningOf(FindingCode code) {
  const auto meanings = findingMeanings();
  const auto found = std::find_if(meanings.begin(), meanings.end(),
                                  [&](const FindingMeaning& meaning) { return meaning.code == code; });
  return found == meanings.end() ? std::string() : asSentence(std::string(found->meaning));
}

Json rowsJson(const Finding& finding, const std::vector<int>& rows) {
  Json list = Json::array();
  for (const int slot : finding.slots) {
    const auto at = static_cast<std::size_t>(slot);
    if (slot >= 0 && at < rows.size() && rows[at] >= 0) {
      list.push_back(rows[at]);
    }
  }
  return list;
}

int withoutPlace(const CDipoleFace& set) {
  int count = 0;
  for (int slot = 0; slot < set.m_totalDipoles; ++slot) {
    const CDipoleszq* const dipole = set.m_dipoles[slot];
    count += dipole != nullptr && !isPlace(placeOf(*dipole)) ? 1 : 0;
  }
  return count;
}

bool hasFinding(const PageSource& source, FindingCode code) {
  return std::any_of(source.findings.begin(), source.findings.end(),
                     [&](const Finding& finding) { return finding.code == code; });
}

}  // namespace

Json findingsJson(const PageSource& source) {
  const std::vector<int> rows = rowsOf(source.set);
  Json list = Json::array();
  for (const Finding& finding : source.findings) {
    list.push_back({{"severity", nameOf(finding.severity)},
                    {"code", nameOf(finding.code)},
                    {"file", source.isAnonymous ? Json() : jsonText(withoutFolders(finding.file))},
                    {"line", source.isAnonymous ? 0 : finding.line},
                    {"sentence", source.isAnonymous ? meaningOf(finding.code) : finding.sentence},
                    {"remedy", source.isAnonymous ? std::string() : finding.remedy},
                    {"rows", rowsJson(finding, rows)}});
  }
  return list;
}

Json repairedJson(const PageSource& source) {
  if (source.isAnonymous) {
    return source.repaired.empty()
               ? Json::array()
               : Json::array({"What was imported was repaired; by what is left out here."});
  }
  std::vector<FileText> repaired = source.repaired;
  if (source.files.size() == 1) {  // which the page names
    for (FileText& text : repaired) {
      text.file.clear();
    }
  }
  Json list = Json::array();
  for (const std::string& text : textsWithFiles(repaired)) {
    list.push_back(text);
  }
  return list;
}

Json warningsJson(const PageSource& source, const PageWorld& world) {
  Json list = Json::array();
  const int nowhere = withoutPlace(source.set);
  if (world.hasHead) {
    for (const CaptionLine& warning : headWarnings(source.head, source.set.m_totalDipoles)) {
      list.push_back(warning.text);
    }
    if (source.head.arePointsAssumed) {
      list.push_back("Fiducial points are not known: only places of Neuromag's files are right");
    }
  } else if (!source.head.isAbsent) {
    list.push_back("The MRI is not registered to the dipoles, so it is not shown");
  }
  if (hasFinding(source, FindingCode::symmetricEars)) {
    list.push_back("Places were carried from the Neuromag head frame as if the ears lay symmetric");
  }
  std::vector<Finding> findings = source.findings;
  if (source.isAnonymous) {
    for (Finding& finding : findings) {
      finding.sentence = meaningOf(finding.code);
      finding.file.clear();
    }
  }
  for (const std::string& text : wrongTexts(findings)) {
    list.push_back(text);
  }
  if (nowhere > 0) {
    list.push_back(std::to_string(nowhere) + (nowhere == 1 ? " dipole has" : " dipoles have") +
                   " no place and no picture, only a row");
  }
  for (const std::string& warning : source.warnings) {
    list.push_back(warning);
  }
  return list;
}

Json conventionsJson(const PageSource& source, const PageWorld& world, const std::string& ofHead) {
  Json list = Json::array();
  if (world.hasHead) {
    list.push_back("Left and right of the head are known by " + source.head.source.sides + ".");
  }
  for (const PageFrame& known : world.frames) {
    list.push_back(asSentence(known.frame.description + "; millimetres"));
  }
  if (!ofHead.empty()) {
    list.push_back(ofHead);
  }
  if (source.known.mni && !source.known.mni->assumed.empty()) {
    list.push_back("The way to MNI: " + source.known.mni->assumed + ".");
  }
  const DipoleArrows arrows(source.set, source.settings.arrowsByMoment, source.settings.unknown);
  if (arrows.strongest() > 0.0) {
    list.push_back("Arrows are as long as their moments are large; the longest is one of " +
                   shortest(arrows.strongest()) + (source.set.m_momentInNAm != 0 ? " nAm." : "."));
  }
  if (source.places != nullptr && !source.isAnonymous) {
    list.push_back(atlasNote(*source.places));
  }
  list.push_back(
      "The spread of dipoles is the root mean square of their distances from their mean place, and the "
      "largest of these.");
  list.push_back(
      "Their mean orientation is that of the sum of their orientations, each of length 1. The cone is the "
      "smallest one around it that holds 95 % of the orientations, those of fewer than 20 dipoles all; its "
      "angle is told from the middle to the edge. It is no confidence cone.");
  list.push_back("Signs of orientations count.");
  list.push_back("A value that a file leaves open passes no limit that is set on it.");
  if (source.isAnonymous) {
    list.push_back(
        "Names of the patient, of files and of dipoles are left out, and so is what findings quote. A face "
        "in "
        "the MRI identifies too.");
  }
  return list;
}

}  // namespace host
