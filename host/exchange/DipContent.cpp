#include "host/exchange/DipContent.h"

#include <algorithm>
#include <array>
#include <fstream>
#include <string>

#include "host/exchange/NeuromagText.h"
#include "host/text/PathText.h"

namespace host {

namespace {

bool isSectionOfCtf(std::string_view line) {
  constexpr std::array<std::string_view, 4> lines = {"{", "Dipoles", "File_Info", "Fit_Results"};
  return std::find(lines.begin(), lines.end(), line) != lines.end();
}

}  // namespace

DipContent dipContentOf(std::string_view start) {
  bool hasSystem = false;
  bool hasHeading = false;
  bool hasRow = false;
  bool hasBrace = false;
  TextRows rows(start.substr(0, dipContentBytes));
  for (std::string_view line; rows.next(line);) {
    if (isSectionOfCtf(line)) {
      return DipContent::ctf;
    }
    hasBrace = hasBrace || line.find_first_of("{}") != std::string_view::npos;
    hasSystem = hasSystem || isNeuromagSystem(line);
    hasHeading = hasHeading || isNeuromagHeading(line);
    hasRow = hasRow || isNeuromagRow(line);
  }
  if (hasHeading || hasSystem) {
    return DipContent::neuromag;
  }
  return hasRow && !hasBrace ? DipContent::rows : DipContent::other;
}

DipContent dipContentOfFile(const CString& path) {
  std::ifstream file(pathOf(path), std::ios::binary);
  std::string start(dipContentBytes, '\0');
  file.read(start.data(), static_cast<std::streamsize>(start.size()));
  start.resize(static_cast<std::size_t>(file.gcount()));
  return dipContentOf(start);
}

}  // namespace host
