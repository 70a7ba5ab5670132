#include "host/panes/PaneFiducials.h"

#include <array>
#include <cstddef>

#include "host/dipoles/SetFiducials.h"

namespace host {

namespace {

constexpr std::array<char, 3> letters{'N', 'L', 'R'};

}  // namespace

std::vector<SceneFiducial> headFiducials(const PaneContents& contents) {
  const Head& head = contents.head;
  if (!head.isRegistered() || head.arePointsAssumed || contents.dipoles.getShowFiducialPt() == 0) {
    return {};
  }
  const HeadFrame& frame = head.frame;
  return {{'N', frame.fromScanner(head.fiducials->nasion)},
          {'L', frame.fromScanner(head.fiducials->leftEar)},
          {'R', frame.fromScanner(head.fiducials->rightEar)}};
}

std::vector<SceneFiducial> fileFiducials(const PaneContents& contents) {
  const std::vector<SceneFiducial> own = headFiducials(contents);
  if (own.empty()) {
    return {};
  }
  const std::optional<Fiducials> file = pointsOfSetIn(contents.head, contents.dipoles);
  if (!file) {
    return {};
  }
  std::vector<SceneFiducial> points = {{'N', file->nasion}, {'L', file->leftEar}, {'R', file->rightEar}};
  for (std::size_t i = points.size(); i-- > 0;) {
    if (!isPlace(points[i].place) || length(points[i].place - own[i].place) <= fiducialRounding) {
      points.erase(points.begin() + static_cast<std::ptrdiff_t>(i));
    }
  }
  return points;
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
