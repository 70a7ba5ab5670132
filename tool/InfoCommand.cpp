#include <algorithm>
#include <memory>
#include <optional>
#include <string>
#include <utility>

#include "host/text/Numbers.h"
#include "tool/Commands.h"
#include "tool/FileInfo.h"
#include "tool/FindingTexts.h"
#include "tool/FrameOptions.h"
#include "tool/ImportOptions.h"
#include "tool/Output.h"
#include "tool/SetWriter.h"
#include "tool/Text.h"

namespace tool {
namespace {

constexpr const char* help =
    R"(Positions are millimetres in the head frame: x to the left ear, y up, z to the nose, origin
midway between the ears. MRI fiducial points are voxels counted from the right, from below
and from behind. With --atlas the labels are counted that the dipoles lie in or near.

Examples:
  dipole info auditory.dip
  dipole info --json auditory.dip spikes.dip)";

constexpr std::array<const char*, 3> pointNames = {"nasion", "left ear", "right ear"};

// One line of the report: a name, then a value, at a common column.
class Report {
 public:
  void line(const std::string& name, const std::string& value) {
    constexpr std::size_t column = 20;
    m_text += "  " + name + std::string(column - (std::min)(column - 1, name.size()), ' ') + value + "\n";
  }
  void text(const std::string& text) { m_text += text; }
  const std::string& result() const { return m_text; }

 private:
  std::string m_text;
};

std::string orDash(const std::string& text) {
  return text.empty() ? "-" : printable(text);
}

std::string rangeText(const std::optional<Range>& range, const std::string& unit) {
  if (!range) {
    return "-";
  }
  return host::fixed(range->smallest, 2) + " .. " + host::fixed(range->largest, 2) +
         (unit.empty() ? "" : " " + unit);
}

std::string pointText(const Point& point, int decimals) {
  return host::fixed(point[0], decimals) + "  " + host::fixed(point[1], decimals) + "  " +
         host::fixed(point[2], decimals);
}

void addFiducials(Report& report, const std::string& title, const std::optional<FiducialTriple>& points,
                  int decimals, const std::string& note) {
  if (!points) {
    report.line(title, "-");
    return;
  }
  report.line(title, note);
  for (std::size_t i = 0; i < pointNames.size(); ++i) {
    report.line(std::string("  ") + pointNames.at(i), pointText(points->at(i), decimals));
  }
}

// Without MRI points the module derives the head's points from the sphere: that has to be said, since they
// were not measured.
std::string headFiducialNote(const FileInfo& info) {
  return info.mriFiducials ? "mm, from the MRI points" : "mm, from the radius of the sphere alone";
}

std::string messageText(const Message& message) {
  return message.text + (message.isQuestion ? message.isYes ? " Answered: yes" : " Answered: no" : "");
}

void addPlaces(Report& report, const FileInfo& info) {
  if (!info.places) {
    return;
  }
  report.line("atlas", printable(info.places->about));
  const auto dipoles = [](int count) {
    return std::to_string(count) + (count == 1 ? " dipole" : " dipoles");
  };
  for (const host::LabelCount& label : info.labels.labels) {
    report.line("  " + printable(label.name),
                dipoles(label.dipoles) +
                    (label.nearby == 0 ? "" : ", " + std::to_string(label.nearby) + " of them only near it"));
  }
  if (info.labels.without > 0) {
    report.line("  no label", dipoles(info.labels.without) + " farther than " +
                                  host::fixed(host::Atlas::reach, 0) + " mm from each");
  }
}

std::string report(const FileInfo& info, const ImportSession& session) {
  Report result;
  result.text(printable(info.file) + "\n");
  result.line("version", orDash(info.version));
  result.line("patient", orDash(info.patient));
  result.line("MRI file", orDash(info.mriFile));
  result.line("head model", info.isMegOnly ? "MEG only" : "-");
  result.line("sphere", info.sphere ? "centre " + pointText(info.sphere->centre, 2) + " mm, radius " +
                                          host::fixed(info.sphere->radius, 2) + " mm"
                                    : "-");
  addFiducials(result, "fiducials, MRI", info.mriFiducials, 0,
               "voxels from the right, from below, from behind");
  addFiducials(result, "fiducials, head", info.headFiducials, 2, headFiducialNote(info));
  result.line("dipoles",
              std::to_string(info.dipoles) + ", shown on slices: " + std::to_string(info.shownOnSlices));
  if (info.isOtherFrame) {
    result.line("frame", info.frame + " (of x, y, z below)");
  }
  for (std::size_t axis = 0; axis < info.axes.size(); ++axis) {
    const std::string name = std::string(1, "xyz"[axis]) + " (" + info.axes.at(axis) + ")";
    result.line(name, rangeText(info.position.at(axis), "mm"));
  }
  result.line("latency", rangeText(info.latency, "ms"));
  result.line("moment", rangeText(info.moment, info.isMomentInNAm ? "nAm" : ""));
  result.line("fit error", rangeText(info.fitError, "%"));
  addPlaces(result, info);
  for (const Message& message : info.messages) {
    result.line("message", printable(messageText(message)));
  }
  for (const host::FileText& repaired : session.repaired()) {
    result.line("repaired", printable(repaired.text));
  }
  for (const host::Finding& finding : session.findings()) {
    result.line("finding", printable(findingLine(finding)));
  }
  return result.result();
}

Json jsonRepaired(const ImportSession& session) {
  Json texts = Json::array();
  for (const host::FileText& repaired : session.repaired()) {
    texts.push_back(repaired.text);
  }
  return texts;
}

// For the eye: a number that came in single precision has the digits of one.
Json numberFor(double value) {
  return host::jsonNumber(host::withShortestDigits(value));
}

Json jsonPoint(const Point& point) {
  return Json::array({numberFor(point[0]), numberFor(point[1]), numberFor(point[2])});
}

Json jsonPoints(const std::optional<FiducialTriple>& points) {
  if (!points) {
    return nullptr;
  }
  return {{"nasion", jsonPoint(points->at(0))},
          {"left_ear", jsonPoint(points->at(1))},
          {"right_ear", jsonPoint(points->at(2))}};
}

Json jsonRange(const std::optional<Range>& range) {
  if (!range) {
    return nullptr;
  }
  return Json::array({numberFor(range->smallest), numberFor(range->largest)});
}

Json jsonMessages(const std::vector<Message>& messages) {
  Json result = Json::array();
  for (const Message& message : messages) {
    Json entry = {{"text", message.text}};
    if (message.isQuestion) {
      entry["answer"] = message.isYes ? "yes" : "no";
    }
    result.push_back(std::move(entry));
  }
  return result;
}

Json jsonFindings(const ImportSession& session) {
  Json result = Json::array();
  for (const host::Finding& finding : session.findings()) {
    result.push_back(findingJson(finding, session.collection(), session.accepts(finding)));
  }
  return result;
}

Json jsonSphere(const std::optional<Sphere>& sphere) {
  if (!sphere) {
    return nullptr;
  }
  return {{"centre_mm", jsonPoint(sphere->centre)}, {"radius_mm", numberFor(sphere->radius)}};
}

Json jsonPlaces(const FileInfo& info) {
  Json places = Json::array();
  for (const host::LabelCount& label : info.labels.labels) {
    places.push_back({{"label", label.name}, {"dipoles", label.dipoles}, {"near_it", label.nearby}});
  }
  return places;
}

Json jsonReport(const FileInfo& info, const ImportSession& session) {
  Json report = {{"file", info.file},
                 {"version", host::jsonText(info.version)},
                 {"patient", host::jsonText(info.patient)},
                 {"mri_file", host::jsonText(info.mriFile)},
                 {"meg_only", info.isMegOnly},
                 {"sphere", jsonSphere(info.sphere)},
                 {"fiducials_mri_voxels", jsonPoints(info.mriFiducials)},
                 {"fiducials_head_mm", jsonPoints(info.headFiducials)},
                 {"fiducials_head_from_sphere", info.headFiducials && !info.mriFiducials},
                 {"dipoles", info.dipoles},
                 {"shown_on_slices", info.shownOnSlices},
                 {"x_mm", jsonRange(info.position[0])},
                 {"y_mm", jsonRange(info.position[1])},
                 {"z_mm", jsonRange(info.position[2])},
                 {"latency_ms", jsonRange(info.latency)},
                 {"moment", jsonRange(info.moment)},
                 {"moment_unit", host::jsonText(info.isMomentInNAm ? "nAm" : "")},
                 {"fit_error_percent", jsonRange(info.fitError)},
                 {"messages", jsonMessages(info.messages)},
                 {"repaired", jsonRepaired(session)},
                 {"findings", jsonFindings(session)}};
  if (info.isOtherFrame) {
    report["frame"] = info.frame;  // of the ranges of x, y and z
  }
  if (info.places) {
    report["atlas"] = info.places->json();
    report["places"] = jsonPlaces(info);
    report["without_label"] = info.labels.without;
  }
  return report;
}

class InfoCommand final : public Command {
 public:
  explicit InfoCommand(CLI::App& program);

  int run() const override;

 private:
  ImportOptions m_import;
  FrameOptions m_frame;
  bool m_json = false;
};

InfoCommand::InfoCommand(CLI::App& program)
    : Command(program, "info", "Tell what each of the files holds", help) {
  m_import.addTo(options());
  m_frame.addTo(options(), m_import);
  options().add_flag("--json", m_json, "JSON: a list with one entry per file");
}

int InfoCommand::run() const {
  int code = exitDone;
  std::string text;
  Json json = Json::array();
  const host::SetFrame frame = m_frame.frame();
  const std::optional<host::PlaceNames> names = m_frame.places();
  const std::vector<InputFile> files = m_import.files();
  ImportChoices choices = m_import.choices();
  choices.head = m_frame.headFor(files);
  for (const InputFile& file : files) {
    ImportSession session({file}, choices);
    session.add(m_frame.findings(session.joined()));
    const FileInfo info(file.name, session, frame, placesOf(session, names));
    code = (std::max)(code, session.exitCode());
    json.push_back(jsonReport(info, session));
    text += (text.empty() ? "" : "\n") + report(info, session);
  }
  if (m_json) {
    writeResult(json);
  } else {
    writeResult(text);
  }
  return code;
}

}  // namespace

std::unique_ptr<Command> makeInfoCommand(CLI::App& program) {
  return std::make_unique<InfoCommand>(program);
}

}  // namespace tool
