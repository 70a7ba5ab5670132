#include "host/panes/PaneWarnings.h"

#include "host/paint/PictureText.h"

namespace host {

std::vector<CaptionLine> headWarnings(const Head& head, int dipoles) {
  std::vector<CaptionLine> warnings;
  if (head.isPhantom && dipoles > 0) {
    warnings.push_back({"Phantom: not this patient's head", warningInk});
  }
  if (!head.volume->sidesStated()) {
    warnings.push_back({"The MRI file does not say which side is left", warningInk});
  }
  return warnings;
}

}  // namespace host
