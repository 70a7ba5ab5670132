// A plain look into a CTF dipole file, so that the program can say when dipoles of it did not arrive. It
// enters and leaves sections where the importer does, but counts every line that looks like a dipole, whether
// the importer can read it or not.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace tool {

// How the importer's question about a section of moving dipoles was answered.
struct MovingAnswer {
  bool isYes = false;
  int declinedBefore = 0;  // static rows that answers left out since the question before this one
};

struct DipoleSection {
  bool isMoving = false;  // "Fit_Results", else "Dipoles"
  int rows = 0;           // lines that begin with a number and a colon
  MovingAnswer answer;    // of a moving one; the rows of a declined one are not counted
};

struct CtfScan {
  // Takes the answers to the questions about moving dipoles, in order; questions without an answer count as
  // declined. Everything stays empty when this is not a regular file or
  // cannot be read.
  CtfScan(const std::string& path, const std::vector<MovingAnswer>& answers);

  bool isReadable = false;
  std::vector<DipoleSection> sections;  // those that the importer sees, in the order of the file
  std::vector<std::string> swallowed;   // names of sections that stand in one whose end is missing
  bool endsInside = false;              // the end of the last section is missing
};

// How many dipoles a file gives: a moving section that was accepted replaces what the file gave before, and
// with it the rows that answers left out there. `declinedAfter` is how many they left out after the last
// question about moving dipoles.
int expectedDipoles(const CtfScan& file, int declinedAfter);

}  // namespace tool
