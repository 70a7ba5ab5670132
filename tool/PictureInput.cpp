#include "tool/PictureInput.h"

#include <filesystem>
#include <system_error>
#include <utility>

#include "host/head/NeuromagFrame.h"
#include "host/text/PathText.h"
#include "tool/FileNames.h"
#include "tool/Text.h"
#include "tool/UsageError.h"

namespace tool {

void PictureInput::addAtlasTo(CLI::App& command) {
  m_mni.addTo(command);
  m_atlas.addTo(command);
  command.get_option("--mni-space")->needs(command.get_option("--mni"));
}

std::string PictureInput::title() const {
  const std::string first = host::utf8Of(host::fileNameOf(pathTextOf(names().front())));
  const std::string more = names().size() == 1 ? "" : " and " + std::to_string(names().size() - 1) + " more";
  return printable(first) + more;
}

void PictureInput::refuseToOverwrite(const std::string& output, const std::string& what) const {
  std::vector<std::string> inputs = names();
  for (const std::string& file : m_head.files()) {
    inputs.push_back(file);
  }
  std::error_code error;  // one that does not exist is not overwritten
  for (const std::string& input : inputs) {
    if (!input.empty() && std::filesystem::equivalent(pathOf(input), pathOf(output), error)) {
      throw UsageError("the " + what + " " + output + " would overwrite the input " + input);
    }
  }
}

ImportSession PictureInput::import(const std::vector<InputFile>& files) const {
  ImportChoices choices = m_import.choices();
  choices.head = m_head.headFor(files, choices);
  return ImportSession(files, std::move(choices));
}

host::KnownHead PictureInput::known(const host::Head& head) const {
  host::KnownHead known{head.fiducials, m_mni.map(), head.source.space};
  if (head.fiducials && head.arePointsAssumed) {
    known.neuromagToScanner = host::neuromagToScanner(*head.fiducials);
    known.points.reset();
  }
  return known;
}

std::optional<host::PlaceNames> PictureInput::places(const host::Head& head) const {
  return m_atlas.isGiven() ? m_atlas.names(known(head)) : std::nullopt;
}

}  // namespace tool
