#include "host/panes/PaneFiducials.h"

#include <array>
#include <cstddef>

namespace host {

namespace {

constexpr std::array<char, 3> letters{'N', 'L', 'R'};

}  // namespace

std::vector<SceneFiducial> headFiducials(const PaneContents& contents) {
  const Head& head = contents.head;
  if (!head.isRegistered() || contents.dipoles.getShowFiducialPt() == 0) {
    return {};
  }
  const HeadFrame& frame = head.frame;
  return {{'N', frame.fromScanner(head.fiducials->nasion)},
          {'L', frame.fromScanner(head.fiducials->leftEar)},
          {'R', frame.fromScanner(head.fiducials->rightEar)}};
}

std::vector<SceneFiducial> placedFiducials(const PaneContents& contents) {
  std::vector<SceneFiducial> points;
  for (std::size_t i = 0; i < letters.size(); ++i) {
    if (const std::optional<Vector3>& mark = contents.marks.at(i); mark && isPlace(*mark)) {
      points.push_back({letters.at(i), *mark});
    }
  }
  return points;
}

}  // namespace host
