#include <array>
#include <ctime>
#include <filesystem>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

#include "host/dipoles/UnknownDipoles.h"
#include "host/exchange/SetFile.h"
#include "host/head/HeadFile.h"
#include "host/page/PageData.h"
#include "host/page/PageFile.h"
#include "host/page/PageHead.h"
#include "host/text/EndingHeldBack.h"
#include "host/text/Numbers.h"
#include "host/text/OpenFile.h"
#include "host/text/PathText.h"
#include "host/text/Program.h"
#include "host/text/TemporaryFolder.h"
#include "tool/Commands.h"
#include "tool/Console.h"
#include "tool/FileNames.h"
#include "tool/ImportSession.h"
#include "tool/Output.h"
#include "tool/OutputOptions.h"
#include "tool/PictureInput.h"
#include "tool/ShownOptions.h"
#include "tool/UsageError.h"

namespace tool {
namespace {

constexpr const char* help =
    R"(The page is one file with the head, the dipoles, their list and a report. Any browser opens it,
on any system, without a network. All dipoles are in it; --max-error, --moment, --latency,
--tolerance and --color-by are what it begins with.

The MRI and its fiducial points are told as in "dipole draw". Without an MRI the sphere of the
fit stands in for the head.

The head is cropped to what is not background, and stored in 256 steps of grey; --full leaves it
as it is. --anonymous leaves out the names of patient, files and dipoles, what findings quote,
what the head's file says of itself, and the time; a face in the MRI identifies too.

--open shows the page. Without -o it stands in a folder of its own, which nobody else may read,
until Return is pressed; then it is removed. A browser that is kept from temporary files
needs -o.

Examples:
  dipole page spikes.dip --mri ch2.nii.gz --fiducials ch2.fiducials \
      --atlas aal --mni identity --mni-space colin27 -o spikes.html
  dipole page auditory.dip --mri ch2.nii.gz --fiducials ch2.fiducials \
      --anonymous --full --max-error 10 --color-by latency -o auditory.html)";

std::string utcNow() {
  const std::time_t now = std::time(nullptr);
  std::array<char, 32> text{};
  const std::tm* const parts = std::gmtime(&now);
  if (parts == nullptr || std::strftime(text.data(), text.size(), "%Y-%m-%dT%H:%M:%SZ", parts) == 0) {
    return {};
  }
  return text.data();
}

const char* titleOf(host::DipoleFormat format) {
  switch (format) {
    case host::DipoleFormat::ctf:
      return "CTF";
    case host::DipoleFormat::neuromag:
      return "Neuromag text";
    case host::DipoleFormat::bdip:
      return "Neuromag binary";
    case host::DipoleFormat::msi:
      return "4D/MSI";
    case host::DipoleFormat::set:
      return "dipole set";
    case host::DipoleFormat::csv:
    case host::DipoleFormat::tsv:
      return "table";
    case host::DipoleFormat::json:
      break;
  }
  return "JSON table";
}

// The parts of a set are those files that brought dipoles, in order.
std::vector<host::PageFileText> filesOf(const std::vector<InputFile>& files, const ImportSession& session) {
  std::vector<host::PageFileText> texts;
  auto part = session.joined().parts().begin();
  const auto end = session.joined().parts().end();
  for (const InputFile& file : files) {
    const bool hasDipoles = part != end && part->name == file.name;
    texts.push_back({host::utf8Of(host::fileNameOf(pathTextOf(file.name))), titleOf(file.format),
                     hasDipoles ? part->endSlot - part->firstSlot : 0});
    part += hasDipoles ? 1 : 0;
  }
  return texts;
}

// "a.dip: what" of a file in some folder, without the folder.
std::string withoutFolder(std::string text, const std::vector<std::string>& files) {
  for (const std::string& file : files) {
    if (text.starts_with(file + ": ")) {
      return host::utf8Of(host::fileNameOf(pathTextOf(file))) + text.substr(file.size());
    }
  }
  return text;
}

class PageCommand final : public Command {
 public:
  explicit PageCommand(CLI::App& program);

  int run() const override;

 private:
  void checkOutput() const;
  std::string made(ImportSession& session, const std::vector<InputFile>& files,
                   const std::string& page) const;
  host::KnownHead known(const host::Head& head) const;
  std::vector<std::string> warnings(const ImportSession& session) const;
  void tellOf(const host::Head& head, const host::PageHead& shown) const;
  void write(const std::string& page) const;

  PictureInput m_input;
  ShownOptions m_shown;
  std::string m_output;
  bool m_force = false;
  bool m_isOpened = false;
  bool m_isAnonymous = false;
  bool m_isFull = false;
};

PageCommand::PageCommand(CLI::App& program)
    : Command(program, "page",
              "Write the head with the dipoles, their list and a report as a page for browsers", help) {
  m_input.addFilesTo(options());
  m_input.addHeadTo(options());
  options()
      .add_option("-o,--output", m_output, "The page to write, .html; - is standard output")
      ->type_name("OUT");
  options().add_flag("--force", m_force, "Replace OUT when it is there already");
  options().add_flag("--open", m_isOpened, "Show the page; without -o only until Return is pressed");
  options().add_flag("--anonymous", m_isAnonymous, "Leave out every name, and the time");
  options().add_flag("--full", m_isFull, "Keep the head as it is: not cropped, with all its grey values");
  m_shown.addTo(options());
  m_input.addAtlasTo(options());
}

// Before anything is read.
void PageCommand::checkOutput() const {
  if (m_output.empty()) {
    if (!m_isOpened) {
      throw UsageError("a page needs -o OUT, the file to write, or --open, to be looked at and removed");
    }
    if (!isTerminal(Stream::input) || !isTerminal(Stream::error)) {
      throw UsageError("--open without -o waits for Return at a terminal, and there is none: give -o OUT");
    }
    return;
  }
  if (m_output == "-") {
    if (m_isOpened) {
      throw UsageError("--open needs a file: standard output is none");
    }
    if (isResultOnTerminal()) {
      throw UsageError("-o - writes a page to standard output, and that is a terminal");
    }
    return;
  }
  m_input.refuseToOverwrite(m_output, "page");
  if (!host::hasEnding(pathTextOf(m_output), ".html") && !host::hasEnding(pathTextOf(m_output), ".htm")) {
    throw UsageError(m_output + ": a page is written as HTML; the name has to end in .html");
  }
  refuseToReplace(m_output, m_force);
}

host::KnownHead PageCommand::known(const host::Head& head) const {
  host::KnownHead known = m_input.known(head);
  if (known.mni && !head.isRegistered()) {
    throw UsageError("--mni needs --mri HEAD: no dipole file names an MRI that is beside it");
  }
  return known;
}

// What names files is told in general in an anonymous page.
std::vector<std::string> PageCommand::warnings(const ImportSession& session) const {
  std::vector<std::string> texts;
  if (session.joined().hasMixedUnits()) {
    texts.emplace_back("Not all files say that their moments are nAm: they may differ in unit");
  }
  if (session.hasFailed()) {
    texts.emplace_back("Not all dipoles of all files arrived");
  }
  if (m_isAnonymous) {
    if (!session.joined().warnings().empty()) {
      texts.emplace_back("The files differ in their head spheres, or some of their dipoles found no room");
    }
    return texts;
  }
  for (const std::string& warning : session.joined().warnings()) {
    texts.push_back(withoutFolder(warning, m_input.names()));
  }
  return texts;
}

void PageCommand::tellOf(const host::Head& head, const host::PageHead& shown) const {
  if (!shown.about.empty()) {
    tellNote(shown.about);
  }
  if (!m_isAnonymous) {
    return;
  }
  tell(
      "left out of the page: the names of patient and files, the labels of dipoles, what findings quote, "
      "what "
      "the head's file says of itself, the time");
  if (!head.isAbsent) {
    tell("warning: a face in the MRI identifies its patient too, and the page shows it");
  }
}

std::string PageCommand::made(ImportSession& session, const std::vector<InputFile>& files,
                              const std::string& page) const {
  const host::Head head = [&] {
    std::optional<host::Head> read = m_input.head().read(session);
    return read ? std::move(*read) : host::noHead();
  }();
  const std::optional<host::PlaceNames> names = m_input.places(head);
  host::UnknownDipoles unknown;
  unknown.mark(session.collection(), session.unknown());
  host::ViewSettings settings = m_shown.settings();
  settings.unknown = &unknown;
  host::PageSource source{session.collection(), head, known(head), settings, session.unknown()};
  source.places = names ? &*names : nullptr;
  source.areArrowsShown = m_shown.areArrowsShown();
  source.program = "dipole " DIPOLE_VERSION;
  source.made = utcNow();
  source.title = m_input.title();
  source.patient = session.patient();
  source.files = filesOf(files, session);
  source.registeredBy = m_input.head().registeredBy();
  source.findings = session.findings();
  source.repaired = session.repaired();
  source.warnings = warnings(session);
  source.isAnonymous = m_isAnonymous;
  source.isFull = m_isFull;
  host::PageHead shown = host::pageHead(source);
  tellOf(head, shown);
  host::Json data = host::pageData(source, shown);
  return host::filledPage(page, {std::move(data), std::move(shown.nifti),
                                 names ? host::atlasNifti(names->atlas()) : std::string()});
}

void PageCommand::write(const std::string& page) const {
  if (m_output == "-") {
    writeResult(page);
    return;
  }
  if (!m_output.empty()) {
    host::writeText(page, pathTextOf(m_output));
    if (m_isOpened) {
      host::openOnDesktop(pathOf(m_output));
    }
    return;
  }
  const host::EndingHeldBack held;  // until the folder is gone
  const host::TemporaryFolder folder;
  const std::filesystem::path file = folder.path() / "dipoles.html";
  host::writeText(page, host::textOf(file));
  host::openOnDesktop(file);
  tell("the page is open; press Return to remove it");
  waitForReturn();
}

int PageCommand::run() const {
  checkOutput();
  const std::string page = host::readPageTemplate(host::ownFolder());
  const std::vector<InputFile> files = m_input.files();
  ImportSession session = m_input.import(files);
  CDipoleFace9File& set = session.collection();
  if (set.m_totalDipoles == 0) {
    tell("nothing to show: no dipole was imported");
    return exitFailure;
  }
  set.setShowDipoleLatencySelected(0);  // a window of latencies that was chosen in a viewer counts no more
  write(made(session, files, page));
  return session.exitCode();
}

}  // namespace

std::unique_ptr<Command> makePageCommand(CLI::App& program) {
  return std::make_unique<PageCommand>(program);
}

}  // namespace tool
