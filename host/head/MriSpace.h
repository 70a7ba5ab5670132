// What the millimetres of an MRI are, as far as its file says.
#pragma once

#include <string>

namespace host {

// Values are the codes of NIfTI, which may also be others that nobody knows the meaning of.
enum class MriSpace : int {
  middle = 0,  // those around the middle of the volume: the file has none of its own
  scanner = 1,
  aligned = 2,  // those of another image, which this one was aligned to
  talairach = 3,
  mni = 4
};

// "the scanner's", "those of MNI's space".
std::string textOf(MriSpace space);

}  // namespace host
