// A plain look into a 4D/MSI dipole table, so that the program can say when rows of it did not arrive.
#pragma once

#include <string>

namespace tool {

struct MsiScan {
  // Everything stays empty when this is not a regular file or cannot be read.
  explicit MsiScan(const std::string& path);

  bool isReadable = false;
  bool hasTable = false;  // a line with "Latency" stands where the importer looks for it
  int rows = 0;  // lines behind it that begin with a number, whether the importer can read them or not
};

}  // namespace tool
