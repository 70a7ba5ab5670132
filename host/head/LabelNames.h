// The names of an atlas' labels, as a text has them: a line for each.
#pragma once

#include <filesystem>
#include <map>
#include <string>
#include <string_view>

#include "host/head/LabelGrid.h"

namespace host {

using LabelNames = std::map<Label, std::string>;  // UTF-8, as the text has them

// Lines of "value<TAB>name", or of "value name" with blanks between; when in each line whole numbers follow
// one word, they are codes or colors of the atlas and no part of the name. Blank lines, what begins with #
// and the value 0 are left out; lines may end in CR LF. Throws std::runtime_error that names the line and the
// cause: a value that is none, or there twice; a missing name; what is no UTF-8; control characters.
LabelNames labelNamesOf(std::string_view text);

// Of a file. Throws std::runtime_error that names it; texts beyond 1 MiB are refused.
LabelNames readLabelNames(const std::filesystem::path& path);

}  // namespace host
