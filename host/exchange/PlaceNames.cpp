#include "host/exchange/PlaceNames.h"

#include <algorithm>
#include <map>
#include <stdexcept>
#include <utility>

#include "host/text/Numbers.h"

namespace host {

namespace {

Affine wayToMni(const KnownHead& head) {
  const bool isPlaced = head.isPlaced();
  if (!isPlaced || !head.mni) {
    throw std::runtime_error(std::string("an atlas needs ") +
                             (isPlaced ? "" : "the fiducial points of the head (--mri, --fiducials)") +
                             (isPlaced || head.mni ? "" : " and ") +
                             (head.mni ? "" : "the way from the scanner to MNI (--mni)"));
  }
  return frameNamed(FrameName::mni, head).fromHost;
}

std::string spaceText(const std::string& space) {
  return space.empty() ? "an MNI space that nobody named" : space;
}

}  // namespace

LabelCounts countLabels(const std::vector<std::optional<NamedPlace>>& places) {
  std::map<std::string, LabelCount> byName;
  LabelCounts counts;
  for (const std::optional<NamedPlace>& place : places) {
    if (!place) {
      ++counts.without;
      continue;
    }
    LabelCount& count = byName[place->name];
    count.name = place->name;
    ++count.dipoles;
    count.nearby += place->isInside() ? 0 : 1;
  }
  for (auto& [name, count] : byName) {
    counts.labels.push_back(std::move(count));
  }
  std::stable_sort(counts.labels.begin(), counts.labels.end(),
                   [](const LabelCount& a, const LabelCount& b) { return a.dipoles > b.dipoles; });
  return counts;
}

PlaceNames::PlaceNames(std::shared_ptr<const Atlas> atlas, const KnownHead& head)
    : m_atlas(std::move(atlas)), m_toMni(wayToMni(head)), m_space(head.mni->space) {}

std::optional<NamedPlace> PlaceNames::at(const Vector3& place) const {
  return m_atlas->at(m_toMni(place));
}

std::string PlaceNames::textAt(const Vector3& place) const {
  if (!isFinite(place)) {
    return {};
  }
  const std::optional<NamedPlace> named = at(place);
  return named ? named->text() : "no label within " + fixed(Atlas::reach, 0) + " mm";
}

std::vector<std::optional<NamedPlace>> PlaceNames::of(const CDipoleFace& set) const {
  std::vector<std::optional<NamedPlace>> names(static_cast<std::size_t>(set.m_totalDipoles));
  for (int slot = 0; slot < set.m_totalDipoles; ++slot) {
    if (const CDipoleszq* const dipole = set.m_dipoles[slot]) {
      names[static_cast<std::size_t>(slot)] =
          at({dipole->m_location[0], dipole->m_location[1], dipole->m_location[2]});
    }
  }
  return names;
}

std::string PlaceNames::doubt() const {
  if (!m_space.empty() && m_space == m_atlas->space()) {
    return {};
  }
  return "places are in " + spaceText(m_space) + ", the atlas " + m_atlas->name() + " is in " +
         spaceText(m_atlas->space()) + ": its labels may be some mm off";
}

}  // namespace host
