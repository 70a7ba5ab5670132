// A plain look into a dipole file, by other means than the importer's, so that the program can say when
// dipoles of a file did not arrive or when files do not belong together.
#pragma once

#include <string>
#include <vector>

namespace tool {

struct DipoleSection {
  bool isMoving = false;  // "Fit_Results", else "Dipoles"
  int rows = 0;           // lines that begin with a number and a colon
};

struct FileScan {
  // Everything stays empty when this is not a regular file or cannot be read.
  explicit FileScan(const std::string& path);

  bool isReadable = false;
  std::vector<DipoleSection> sections;  // in the order of the file
  std::string patient;                  // bytes as they stand in the file, without blanks around
};

// How many dipoles a file gives when its questions about moving dipoles are answered so, in order from
// `next`, which is moved on: an accepted section replaces what the file gave before, a declined one is
// skipped. Questions without an answer count as declined.
int expectedDipoles(const FileScan& file, const std::vector<bool>& answers, std::size_t& next);

}  // namespace tool
