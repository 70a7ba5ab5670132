#include "tests/support/TestPlaces.h"

// The build tells them to this source alone: the others then compile alike in every checkout.
std::string testFolder() {
  return DIPOLE_SOURCE_FOLDER "/tests/";
}

std::string examplesFolder() {
  return DIPOLE_SOURCE_FOLDER "/examples/";
}

std::string exampleHead() {
  return DIPOLE_ROOT_FOLDER "/usr/share/mricron/templates/ch2.nii.gz";
}
