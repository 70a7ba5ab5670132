#include "tool/ImportOptions.h"

#include <algorithm>
#include <map>
#include <optional>
#include <set>
#include <sstream>
#include <stdexcept>

#include "host/exchange/DipContent.h"
#include "host/text/PathText.h"
#include "tool/ArgumentCheck.h"
#include "tool/Choice.h"
#include "tool/FileNames.h"
#include "tool/UsageError.h"

namespace tool {

namespace {

const std::map<std::string, host::DipoleFormat>& formats() {
  static const std::map<std::string, host::DipoleFormat> all = {{"csv", host::DipoleFormat::csv},
                                                                {"tsv", host::DipoleFormat::tsv},
                                                                {"json", host::DipoleFormat::json},
                                                                {"ctf", host::DipoleFormat::ctf},
                                                                {"4d", host::DipoleFormat::msi},
                                                                {"dipset", host::DipoleFormat::set},
                                                                {"neuromag", host::DipoleFormat::neuromag},
                                                                {"bdip", host::DipoleFormat::bdip}};
  return all;
}

constexpr const char* allCodes = "all";

// "unit,labels". Throws std::invalid_argument with the codes that there are.
std::set<host::FindingCode> parseCodes(const std::string& text) {
  std::set<host::FindingCode> codes;
  std::istringstream parts(text + ",");
  for (std::string part; std::getline(parts, part, ',');) {
    const std::optional<host::FindingCode> code = host::findingCodeNamed(part);
    if (!code) {
      std::string problem = '"' + part + "\" is no code of a finding; there are";
      const char* before = ": ";
      for (const host::FindingMeaning& meaning : host::findingMeanings()) {
        problem.append(before).append(meaning.name);
        before = ", ";
      }
      throw std::invalid_argument(problem);
    }
    codes.insert(*code);
  }
  return codes;
}

std::set<host::FindingCode> parseRepairs(const std::string& text) {
  return text == allCodes ? host::allFindingCodes() : parseCodes(text);
}

// A stream was copied to a file without its name.
host::DipoleFormat formatOf(const InputFile& file) {
  const auto byEnding = host::dipoleFormatOf(pathTextOf(file.name)).value_or(host::DipoleFormat::ctf);
  const bool isNeuromag = byEnding == host::DipoleFormat::ctf &&
                          host::isNeuromag(host::dipContentOfFile(host::textOf(file.path())));
  return isNeuromag ? host::DipoleFormat::neuromag : byEnding;
}

}  // namespace

void ImportOptions::addTo(CLI::App& command) {
  command
      .add_option("FILE", m_names,
                  "CTF or Neuromag/MNE dipole files (.dip, .bdip), 4D/MSI dipole tables (.txt), dipole sets "
                  "(.dipset), "
                  "tables that this program wrote (.csv, .tsv, .json); - is standard input")
      ->required()
      ->type_name("");
  addChoice(command, "--from", m_from, "Format of the files, whatever their names", formats());
  const auto add = [&](const char* name, std::string& value, const char* type, const char* text) {
    return command.add_option(name, value, text)->type_name(type);
  };
  add("--repair", m_repair, "CODE,...|all",
      "Apply the remedies of these findings to what is imported; see \"dipole check --help\"")
      ->check(argumentCheck(parseRepairs));
  add("--accept", m_accept, "CODE,...", "Go on although these findings are wrong")
      ->check(argumentCheck(parseCodes));
  add("--unit", m_unit, "cm|mm", "The unit of positions where the files leave it open")
      ->check(CLI::IsMember({"cm", "mm"}).description(""));
  command.add_flag_callback(
      "-q,--quiet", [] { setQuiet(true); }, "Tell warnings and failures only");
  CLI::Option* yes = command.add_flag("--yes", m_yes, "Answer every question with yes");
  command.add_flag("--no", m_no, "Answer every question with no (the default without a terminal)")
      ->excludes(yes);
}

ImportChoices ImportOptions::choices() const {
  ImportChoices choices;
  choices.answers = m_yes ? Answers::yes : m_no ? Answers::no : Answers::ask;
  if (!m_repair.empty()) {
    choices.repairs.codes = parseRepairs(m_repair);
  }
  if (!m_accept.empty()) {
    choices.accepted = parseCodes(m_accept);
  }
  if (!m_unit.empty()) {
    choices.repairs.unit = m_unit == "cm" ? host::LengthUnit::centimetre : host::LengthUnit::millimetre;
  }
  return choices;
}

std::vector<InputFile> ImportOptions::files() const {
  const auto streams = std::count(m_names.begin(), m_names.end(), "-");
  if (streams > 0 && m_from.empty()) {
    throw UsageError("standard input (-) has no name that tells its format: --from does");
  }
  if (streams > 1) {
    throw UsageError("standard input (-) can be read only once");
  }
  std::vector<InputFile> files;
  for (const std::string& name : m_names) {
    files.push_back({name, host::DipoleFormat::ctf, nullptr});
    copyStream(files.back());
    files.back().format = m_from.empty() ? formatOf(files.back()) : formats().at(m_from);
  }
  return files;
}

std::vector<InputFile> ImportOptions::knownFiles() const {
  for (const std::string& name : m_names) {
    if (m_from.empty() && !host::dipoleFormatOf(pathTextOf(name))) {
      throw std::runtime_error(name + ": the name tells no format; it ends in .dip (CTF, Neuromag), .bdip, " +
                               ".txt (4D/MSI), .dipset, .csv, .tsv or .json, or --from says what it is");
    }
  }
  return files();
}

}  // namespace tool
