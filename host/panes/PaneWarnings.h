// What every pane warns of about the head it shows.
#pragma once

#include <vector>

#include "host/head/Head.h"
#include "host/panes/PaneMarks.h"

namespace host {

// Of the sides that an MRI does not state, and of dipoles that lie in the phantom: `dipoles` is the number
// that the set holds.
std::vector<CaptionLine> headWarnings(const Head& head, int dipoles);

}  // namespace host
