#include <algorithm>
#include <optional>
#include <stdexcept>
#include <string>
#include <system_error>
#include <vector>

#include "host/audit/HeadChecks.h"
#include "host/head/FiducialFile.h"
#include "host/head/HeadFile.h"
#include "host/head/NiftiWriter.h"
#include "host/text/Numbers.h"
#include "host/text/PathText.h"
#include "host/text/SafeFile.h"
#include "tool/ArgumentCheck.h"
#include "tool/Commands.h"
#include "tool/FileNames.h"
#include "tool/FindingTexts.h"
#include "tool/HeadOptions.h"
#include "tool/ImportOptions.h"
#include "tool/Output.h"
#include "tool/OutputOptions.h"
#include "tool/TerminalOperator.h"
#include "tool/Text.h"
#include "tool/UsageError.h"

namespace tool {
namespace {

constexpr const char* help =
    R"(The content of a file tells its format: NIfTI (also a pair of .hdr and .img), CTF MRI 2.2 and 4.x,
MGH or MGZ; a folder with a series of DICOM files is read by way of dcm2niix. Points are
millimetres to the right, to the front and up: the scanner's, or what else the code of a NIfTI
file says (MNI's, Talairach's, another image's), or, where a format has none, those around the
middle of the volume.

-o writes the head as NIfTI (.nii, .nii.gz) and, when it is registered, its fiducial points beside
it (head.fiducials for head.nii.gz), so that the next program finds both. --accept mri-points
takes fiducial points in an MRI that are no usual head's.

Examples:
  dipole head ch2.nii.gz
  dipole head --json ch2.nii.gz
  dipole head ch2.nii.gz -o head.nii)";

constexpr std::array<const char*, 3> pointNames = {"nasion", "left ear", "right ear"};

std::array<host::Vector3, 3> pointsOf(const host::Fiducials& points) {
  return {points.nasion, points.leftEar, points.rightEar};
}

host::Vector3 spacingOf(const host::Volume& volume) {
  const host::Affine& map = volume.toScanner();
  return {length(map.column(0)), length(map.column(1)), length(map.column(2))};
}

Json triple(const host::Vector3& point) {
  return Json::array({point.x, point.y, point.z});
}

std::string tripleText(const host::Vector3& point, int decimals) {
  return host::fixed(point.x, decimals) + "  " + host::fixed(point.y, decimals) + "  " +
         host::fixed(point.z, decimals);
}

std::string spaceText(const host::HeadSource& source) {
  return host::textOf(source.space) + (source.spaceCode.empty() ? "" : " (" + source.spaceCode + ")");
}

std::string line(const std::string& name, const std::string& value) {
  constexpr std::size_t column = 20;
  return "  " + name + std::string(column - (std::min)(column - 1, name.size()), ' ') + value + "\n";
}

class HeadCommand : public Command {
 public:
  explicit HeadCommand(CLI::App& program);
  int run() const override;

 private:
  host::OpenedHead open(const std::string& file) const;
  void checkOutput() const;
  void write(const host::Head& head) const;

  std::vector<std::string> m_files;
  std::string m_output;
  std::string m_accept;
  bool m_takesCtf21 = false;
  bool m_force = false;
  bool m_json = false;
};

// What is said of a head, whether its points were taken or not.
std::vector<host::Finding> findingsOf(const host::OpenedHead& opened, const std::string& file) {
  std::vector<host::Finding> findings = host::findingsOf(opened.head, file);
  if (!opened.notice.empty()) {
    findings.push_back(
        {host::FindingCode::mriPoints, host::Severity::doubtful, file, 0, {}, {}, opened.notice + ".", {}});
  }
  return findings;
}

bool standsWrong(const host::OpenedHead& opened) {
  return !opened.question.empty();
}

std::string report(const host::OpenedHead& opened, const std::string& file) {
  const host::Head& head = opened.head;
  const host::HeadSource& source = head.source;
  const host::Volume& volume = *head.volume;
  const auto& [width, height, depth] = volume.dimensions();
  std::string text = printable(file) + "\n" + line("format", source.format);
  text += line("size", std::to_string(width) + " x " + std::to_string(height) + " x " +
                           std::to_string(depth) + " voxels");
  text += line("spacing", tripleText(spacingOf(volume), 3) + " mm");
  text += line("sides", (volume.sidesStated() ? "known by " : "assumed, known by ") + source.sides);
  text += line("millimetres", spaceText(source));
  if (!source.matrix.empty()) {
    text += line("head matrix", source.matrix);
  }
  if (!source.unplaceable.empty()) {
    text += line("dipoles", "cannot be placed: " + source.unplaceable);
  }
  if (head.fiducials) {
    text += line("fiducial points", "mm right, front, up");
    const auto points = pointsOf(*head.fiducials);
    for (std::size_t i = 0; i < points.size(); ++i) {
      text += line(std::string("  ") + pointNames.at(i), tripleText(points.at(i), 2));
    }
  } else {
    text += line("fiducial points", standsWrong(opened) ? "not taken, see below" : "-");
  }
  for (const host::Finding& finding : findingsOf(opened, file)) {
    text += "  " + findingLine(finding) + "\n";
  }
  return text;
}

Json jsonReport(const host::OpenedHead& opened, const std::string& file) {
  const host::Head& head = opened.head;
  const host::HeadSource& source = head.source;
  const host::Volume& volume = *head.volume;
  Json points = nullptr;
  if (head.fiducials) {
    points = {{"nasion", triple(head.fiducials->nasion)},
              {"left_ear", triple(head.fiducials->leftEar)},
              {"right_ear", triple(head.fiducials->rightEar)}};
  }
  Json map = Json::array();
  for (int row = 0; row < 3; ++row) {
    const host::Affine& affine = volume.toScanner();
    map.push_back({affine.column(0)[row], affine.column(1)[row], affine.column(2)[row], affine.shift()[row]});
  }
  Json findings = Json::array();
  for (const host::Finding& finding : findingsOf(opened, file)) {
    findings.push_back({{"severity", host::nameOf(finding.severity)},
                        {"code", host::nameOf(finding.code)},
                        {"sentence", finding.sentence}});
  }
  return {{"file", file},
          {"format", source.format},
          {"size_voxels", volume.dimensions()},
          {"spacing_mm", triple(spacingOf(volume))},
          {"sides_known", volume.sidesStated()},
          {"sides_by", source.sides},
          {"scanner_frame", source.space == host::MriSpace::scanner},
          {"millimetres", spaceText(source)},
          {"voxel_to_mm", map},
          {"fiducials_mm", points},
          {"matrix", source.matrix.empty() ? Json(nullptr) : Json(source.matrix)},
          {"unplaceable", source.unplaceable.empty() ? Json(nullptr) : Json(source.unplaceable)},
          {"findings", findings}};
}

HeadCommand::HeadCommand(CLI::App& program)
    : Command(program, "head", "Tell what the files of heads hold, or write one as NIfTI", help) {
  options()
      .add_option("FILE", m_files, "MRIs: NIfTI, CTF (.mri), MGH or MGZ, or folders of DICOM files")
      ->required()
      ->type_name("");
  options().add_option("-o,--output", m_output, "Write the head as NIfTI (.nii, .nii.gz)")->type_name("OUT");
  options().add_flag("--force", m_force, "Replace OUT and the points beside it when they are there already");
  options().add_flag("--json", m_json, "JSON: a list with one entry per file");
  options()
      .add_option("--accept", m_accept, "Go on although this is wrong")
      ->type_name("mri-points")
      ->check(CLI::IsMember({"mri-points"}).description(""));
  addCtf21(options(), m_takesCtf21);
}

host::OpenedHead HeadCommand::open(const std::string& file) const {
  host::OpenedHead opened = host::openHead(pathTextOf(file), {m_takesCtf21});
  if (!m_accept.empty()) {
    host::takeOwnPoints(opened);
  }
  return opened;
}

void HeadCommand::checkOutput() const {
  if (m_output.empty()) {
    return;
  }
  if (m_files.size() != 1) {
    throw UsageError("-o writes one head, and " + std::to_string(m_files.size()) + " are given");
  }
  const CString output = pathTextOf(m_output);
  if (!host::hasEnding(output, ".nii") && !host::hasEnding(output, ".nii.gz")) {
    throw UsageError(m_output + ": a head is written as NIfTI; the name has to end in .nii or .nii.gz");
  }
  std::error_code error;
  if (std::filesystem::equivalent(pathOf(m_files.front()), pathOf(m_output), error)) {
    throw UsageError("the head " + m_output + " would overwrite the input");
  }
  refuseToReplace(m_output, m_force);
}

void HeadCommand::write(const host::Head& head) const {
  const std::filesystem::path beside = host::fiducialsBeside(pathOf(m_output));
  const std::string points = host::utf8Of(host::textOf(beside));
  std::error_code error;
  if (head.fiducials) {
    refuseToReplace(points, m_force);
  } else if (std::filesystem::exists(beside, error)) {
    // The next reader would take them for those of this head.
    throw std::runtime_error("cannot write " + m_output + ": the head has no fiducial points, but " + points +
                             " lies beside it");
  }
  host::writeNifti(pathTextOf(m_output), *head.volume, head.source.space);
  if (head.fiducials) {
    const std::string text = host::fiducialText(*head.fiducials, head.source.space);
    host::writeSafely(host::textOf(beside),
                      [&](CFile& file) { file.Write(text.data(), static_cast<UINT>(text.size())); });
  }
}

int HeadCommand::run() const {
  checkOutput();
  int code = exitDone;
  std::string text;
  Json json = Json::array();
  for (const std::string& file : m_files) {
    const host::OpenedHead opened = open(file);
    if (standsWrong(opened)) {
      code = exitFailure;
    }
    if (!m_output.empty()) {
      if (standsWrong(opened)) {
        throw std::runtime_error(file + ": " + opened.question + "; --accept mri-points takes them");
      }
      write(opened.head);
    }
    text += (text.empty() ? "" : "\n") + report(opened, file);
    json.push_back(jsonReport(opened, file));
  }
  if (m_json) {
    writeResult(json);
  } else {
    writeResult(text);
  }
  return code;
}

}  // namespace

std::unique_ptr<Command> makeHeadCommand(CLI::App& program) {
  return std::make_unique<HeadCommand>(program);
}

}  // namespace tool
