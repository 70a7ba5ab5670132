// What is known of atlases by the names of their files: which space they are in, and which ones must not be
// used.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "host/head/Affine.h"
#include "host/head/LabelGrid.h"

namespace host {

struct KnownAtlas {
  std::string title;       // with its paper: "AAL (Tzourio-Mazoyer et al. 2002)"; empty: not known
  std::string space;       // "Colin27", "MNI152"; empty: not known
  bool isOfAreas = false;  // labels are the numbers of Brodmann's areas
};

// `name`: that of the file without its folder and its endings; letters may be large or small.
KnownAtlas knownAtlas(const std::string& name);

// Why an atlas of this name is not read; empty: it is.
std::string refusalOfName(const std::string& name);
// The same by what is in it, whatever it is called.
std::string refusalOfContent(const std::vector<Label>& labels, const Affine& toMm);

}  // namespace host
