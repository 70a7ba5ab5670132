// Where in the brain the dipoles of a picture lie, in words.
#pragma once

#include <string>
#include <vector>

#include "host/panes/PaneContents.h"

namespace host {

// "near Precentral_L, 3.2 mm"; empty when nobody knows names of places. UTF-8.
std::string placeTextOf(const PaneContents& contents, const CDipoleszq& dipole);

// A line for several dipoles: "... by aal: #3 Precentral_L; #4 near Insula_L, 3.2 mm.", of more than twelve
// how many each label has; empty when nobody knows names of places, or there is no dipole.
std::string placesNote(const PaneContents& contents, const std::vector<int>& slots);

// Whose names they are, and why they may be some mm off: two sentences at most.
std::string atlasNote(const PlaceNames& places);

}  // namespace host
