#include "host/head/MriSpace.h"

namespace host {

std::string textOf(MriSpace space) {
  switch (space) {
    case MriSpace::middle:
      return "around the middle of the volume";
    case MriSpace::scanner:
      return "the scanner's";
    case MriSpace::aligned:
      return "those of another image that it was aligned to";
    case MriSpace::talairach:
      return "those of Talairach's space";
    case MriSpace::mni:
      return "those of MNI's space";
  }
  return "of a space that is not known";
}

}  // namespace host
