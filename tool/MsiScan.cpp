#include "tool/MsiScan.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "host/text/Blanks.h"
#include "tool/RawLines.h"

namespace tool {
namespace {

// Lines with one of these words are a legend of symbols to the importer, whatever else they hold.
constexpr std::array legendWords = {"Code", "Circle", "Square", "Triangle", "Dot", "Shape"};

bool isLegend(std::string_view line) {
  return std::any_of(legendWords.begin(), legendWords.end(),
                     [line](const char* word) { return contains(line, word); });
}

bool beginsWithNumber(std::string_view text) {
  text.remove_prefix((std::min)(text.find_first_not_of("+-."), text.size()));
  return !text.empty() && text.front() >= '0' && text.front() <= '9';
}

}  // namespace

MsiScan::MsiScan(const std::string& path) {
  bool isFileInfo = false;
  const auto take = [&](const std::string& line) {
    if (hasTable) {
      rows += beginsWithNumber(host::withoutBlanks(line)) ? 1 : 0;
    } else if (isFileInfo) {
      isFileInfo = contains(line, "MRI/CT Patient:") || contains(line, "Dipole File:");
    } else if (!isLegend(line)) {
      isFileInfo = contains(line, "Disk Media:");
      hasTable = !isFileInfo && contains(line, "Latency");
    }
  };
  const auto rest = takeLines(path, take);
  isReadable = rest.has_value();
  if (hasTable) {
    take(*rest);  // the importer drops a last line without an end; a row there is a loss
  }
}

}  // namespace tool
