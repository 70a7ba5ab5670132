// An atlas: which part of the brain a place in an MNI space lies in.
//
// Atlases are of average heads, or of one that is nobody's: what they say of a patient's place is a hint.
#pragma once

#include <filesystem>
#include <optional>
#include <string>

#include "host/head/KnownAtlases.h"
#include "host/head/LabelGrid.h"
#include "host/head/LabelNames.h"
#include "host/head/Vector3.h"

namespace host {

struct NamedPlace {
  std::string name;       // of the label, UTF-8; what a file says, so it may hold any character
  double distance = 0.0;  // mm to the middle of the label's nearest voxel; 0: in the label

  bool isInside() const { return distance == 0.0; }
  // "Precentral_L", or "near Precentral_L, 3.2 mm".
  std::string text() const;
};

class Atlas {
 public:
  static constexpr double reach = 20.0;  // mm: no label is told that is farther away

  Atlas(std::string name, LabelGrid grid, LabelNames names);

  // Of a place in the atlas' space (x right, y front, z up, mm). Nothing when no label is within reach, or
  // the place is no number.
  std::optional<NamedPlace> at(const Vector3& mni) const;

  const std::string& name() const { return m_name; }          // UTF-8: "aal"
  const std::string& space() const { return m_known.space; }  // "Colin27"; empty: not known
  bool isKnown() const { return !m_known.title.empty(); }     // a published one
  const LabelGrid& grid() const { return m_grid; }
  // Of a label that the grid may have.
  std::string nameOf(Label label) const;
  // Whose it is and what it is in: "AAL (Tzourio-Mazoyer et al., NeuroImage 2002), Colin27".
  std::string about() const;

 private:
  std::string m_name;
  KnownAtlas m_known;
  LabelGrid m_grid;
  LabelNames m_names;
};

}  // namespace host
