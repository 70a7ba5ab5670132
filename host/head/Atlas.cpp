#include "host/head/Atlas.h"

#include <utility>

#include "host/text/Numbers.h"

namespace host {

std::string NamedPlace::text() const {
  return isInside() ? name : "near " + name + ", " + fixed(distance, 1) + " mm";
}

Atlas::Atlas(std::string name, LabelGrid grid, LabelNames names)
    : m_name(std::move(name)),
      m_known(knownAtlas(m_name)),
      m_grid(std::move(grid)),
      m_names(std::move(names)) {}

std::optional<NamedPlace> Atlas::at(const Vector3& mni) const {
  const std::optional<NearLabel> nearest = m_grid.nearest(mni, reach);
  return nearest ? std::optional(NamedPlace{nameOf(nearest->label), nearest->distance}) : std::nullopt;
}

std::string Atlas::about() const {
  return (m_known.title.empty() ? m_name : m_known.title) + ", " +
         (m_known.space.empty() ? "nobody said in which MNI space" : m_known.space);
}

std::string Atlas::nameOf(Label label) const {
  const auto found = m_names.find(label);
  if (found != m_names.end()) {
    return found->second;
  }
  return (m_known.isOfAreas && m_names.empty() ? "area " : "label ") + std::to_string(label);
}

}  // namespace host
