// Where in the brain the places of a head lie, by an atlas. Only a head whose way to an MNI space is known
// has such names: nothing is guessed.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "host/exchange/SetFrame.h"
#include "host/head/Atlas.h"
#include "module/dipole.h"

namespace host {

// How many dipoles a label is told of, and of how many of them it only is the nearest.
struct LabelCount {
  std::string name;
  int dipoles = 0;
  int nearby = 0;
};
struct LabelCounts {
  std::vector<LabelCount> labels;  // most dipoles first, then by name
  int without = 0;                 // no label is near
};
LabelCounts countLabels(const std::vector<std::optional<NamedPlace>>& places);

class PlaceNames {
 public:
  // The atlas is not null. Throws std::runtime_error, which says what is missing, when the fiducial points of
  // the head or its way to MNI are not known.
  PlaceNames(std::shared_ptr<const Atlas> atlas, const KnownHead& head);

  // Of a place in the host's head frame (x left, y up, z front; mm); nothing when no label is within
  // Atlas::reach, or the place is no number.
  std::optional<NamedPlace> at(const Vector3& place) const;
  // "Precentral_L", "near Precentral_L, 3.2 mm" or "no label within 20 mm"; empty when the place is no
  // number. UTF-8, of any characters that the atlas' names have.
  std::string textAt(const Vector3& place) const;
  // By slot; nothing for empty ones.
  std::vector<std::optional<NamedPlace>> of(const CDipoleFace& set) const;

  const Atlas& atlas() const { return *m_atlas; }
  // The MNI space that places are carried to; empty: nobody said which.
  const std::string& space() const { return m_space; }
  // Why a name may be some mm off: the atlas is in another MNI space than the places, or nobody said which
  // one is meant. A sentence without its full stop, UTF-8; empty when both are the same.
  std::string doubt() const;

 private:
  std::shared_ptr<const Atlas> m_atlas;
  Affine m_toMni;
  std::string m_space;
};

}  // namespace host
