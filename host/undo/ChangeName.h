// A name for what happened to a set, as far as two states of it tell: for changes that nobody named.
#pragma once

#include <afx.h>

#include "host/undo/SetImage.h"

namespace host {

// As a menu names it: "Import", "Add", "Average", "Delete", "Clear", "Replace" when dipoles have come or
// gone; "Sort" when they only stand elsewhere; "Name", "Color", "Show/Hide", "Edit" by the members that
// differ; "Set" when only members of the whole set do. Throws what an allocation throws.
CString nameOfChange(const SetImage& before, const SetImage& after);

}  // namespace host
