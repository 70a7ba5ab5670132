#include "host/panes/AtlasTexts.h"

#include <cstddef>
#include <optional>

#include "host/dipoles/DipoleScene.h"

namespace host {

std::string placeTextOf(const PaneContents& contents, const CDipoleszq& dipole) {
  return contents.places == nullptr ? std::string() : contents.places->textAt(placeOf(dipole));
}

namespace {

std::string eachOf(const PaneContents& contents, const std::vector<int>& slots) {
  std::string text;
  for (const int slot : slots) {
    const CDipoleszq& dipole = *contents.dipoles.m_dipoles[slot];
    text +=
        (text.empty() ? "#" : "; #") + std::to_string(dipole.m_number) + " " + placeTextOf(contents, dipole);
  }
  return text;
}

std::string countsOf(const PaneContents& contents, const std::vector<int>& slots) {
  std::vector<std::optional<NamedPlace>> places;
  places.reserve(slots.size());
  for (const int slot : slots) {
    places.push_back(contents.places->at(placeOf(*contents.dipoles.m_dipoles[slot])));
  }
  const LabelCounts counts = countLabels(places);
  std::string text;
  for (const LabelCount& label : counts.labels) {
    text += (text.empty() ? "" : "; ") + std::to_string(label.dipoles) + " " + label.name;
    text += label.nearby == 0 ? "" : " (" + std::to_string(label.nearby) + " only near it)";
  }
  return counts.without == 0
             ? text
             : text + (text.empty() ? "" : "; ") + std::to_string(counts.without) + " without a label";
}

}  // namespace

std::string placesNote(const PaneContents& contents, const std::vector<int>& slots) {
  constexpr std::size_t most = 12;
  if (contents.places == nullptr || slots.empty()) {
    return {};
  }
  const std::string start = "Places of all dipoles shown, by " + contents.places->atlas().name() + ": ";
  return start + (slots.size() <= most ? eachOf(contents, slots) : countsOf(contents, slots)) + ".";
}

std::string atlasNote(const PlaceNames& places) {
  const std::string doubt = places.doubt();
  return "Places by the atlas " + places.atlas().about() + ": a hint, not a finding." +
         (doubt.empty() ? "" : " Mind: " + doubt + ".");
}

}  // namespace host
