#include <memory>
#include <string>
#include <vector>

#include "tool/Commands.h"
#include "tool/FindingTexts.h"
#include "tool/FrameOptions.h"
#include "tool/ImportOptions.h"
#include "tool/ImportSession.h"
#include "tool/Output.h"

namespace tool {
namespace {

constexpr const char* help =
    R"(Each file is read a second time, by this program's own reader, and compared with what the
import made of it. A finding is wrong (what is shown is not what the file says), doubtful (the
file leaves it open) or a note. Dipoles are named by their numbers within the file. Nothing is
printed when there is nothing to say. Questions of the import are answered with yes unless
--no says otherwise: nothing is kept. --repair and --unit change what is imported, never the
file; what is left is printed then. docs/audit.md explains the codes and the JSON.

Codes:
)";

constexpr const char* examples = R"(
Examples:
  dipole check moving.dip
  dipole check --json *.dip
  dipole check --repair all *.dip)";

// Every file by itself, so that any number of files can be checked.
class Check {
 public:
  explicit Check(const ImportChoices& choices) : m_choices(choices) {
    m_choices.tellsFindings = false;  // they are the result
  }

  void look(const InputFile& file, const FrameOptions& frame) {
    ImportSession session({file}, m_choices);
    session.add(frame.findings(session.joined()));
    m_hasFailed = m_hasFailed || session.hasFailed();
    m_files.push_back(file.name);
    for (const host::Finding& finding : session.findings()) {
      add(finding, session.collection());
    }
    for (const auto& [name, text] : session.repaired()) {
      m_repaired.push_back({{"file", name}, {"text", text}});
    }
    for (const std::string& cause : session.failures()) {
      m_failed.push_back({{"file", file.name}, {"reason", cause}});
    }
    m_parts.insert(m_parts.end(), session.joined().parts().begin(), session.joined().parts().end());
  }

  // Of several files, or of none.
  void take(const std::vector<host::Finding>& findings) {
    const CDipoleFace none;
    for (const host::Finding& finding : findings) {
      add(finding, none);
    }
  }

  void compareFiles() { take(host::findingsBetween(m_parts)); }

  int exitCode() const { return m_hasFailed || m_wrongLeft > 0 ? exitFailure : exitDone; }
  const std::string& text() const { return m_text; }
  Json json() const {
    return {{"files", m_files},
            {"findings", m_findings},
            {"repaired", m_repaired},
            {"failed", m_failed},
            {"wrong_left", m_wrongLeft}};
  }

 private:
  void add(const host::Finding& finding, const CDipoleFace& set) {
    const bool isAccepted = m_choices.accepts(finding);
    m_wrongLeft += finding.severity == host::Severity::wrong && !isAccepted ? 1 : 0;
    m_text += findingReport(finding, set, isAccepted);
    m_findings.push_back(findingJson(finding, set, isAccepted));
  }

  ImportChoices m_choices;
  std::vector<host::JoinedSet::Part> m_parts;
  std::vector<std::string> m_files;
  Json m_findings = Json::array();
  Json m_repaired = Json::array();
  Json m_failed = Json::array();
  std::string m_text;
  int m_wrongLeft = 0;
  bool m_hasFailed = false;
};

class CheckCommand final : public Command {
 public:
  explicit CheckCommand(CLI::App& program);

  int run() const override;

 private:
  ImportOptions m_import;
  FrameOptions m_frame;
  bool m_json = false;
};

CheckCommand::CheckCommand(CLI::App& program)
    : Command(program, "check", "Tell what of the files arrives otherwise than they say it",
              help + codesHelp() + examples) {
  m_import.addTo(options());
  m_frame.addTo(options(), m_import, false);
  options().add_flag("--json", m_json, "JSON");
}

int CheckCommand::run() const {
  setQuiet(true);
  const std::vector<InputFile> files = m_import.files();
  ImportChoices choices = m_import.choices();
  choices.head = m_frame.headFor(files);
  if (choices.answers == Answers::ask) {
    choices.answers = Answers::lookOnly;
  }
  Check check(choices);
  for (const InputFile& file : files) {
    check.look(file, m_frame);
  }
  check.compareFiles();
  if (m_json) {
    writeResult(check.json());
  } else {
    writeResult(check.text());
  }
  return check.exitCode();
}

}  // namespace

std::unique_ptr<Command> makeCheckCommand(CLI::App& program) {
  return std::make_unique<CheckCommand>(program);
}

}  // namespace tool
