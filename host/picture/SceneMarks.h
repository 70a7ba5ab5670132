// What stands over a 3D picture and is never hidden: side letters, axes, scale bar, the names of the
// fiducials, the ring around the current dipole.
#pragma once

#include <string>
#include <vector>

#include "host/picture/ScenePainter.h"

namespace host {

// The patient's sides towards which a direction of the head frame points, the closest first: "L" to the left,
// "LP" to the left and back. R and L right and left, A and P front and back, S and I up and down. Sides more
// than 75 degrees away are left out.
[[nodiscard]] std::string sidesOf(const Vector3& direction);

// Where the viewer stands, such as "from the patient's left" or "yaw 30.0, pitch 20.0 degrees".
[[nodiscard]] std::string viewText(const ViewAngles& angles);

// The longest of 1, 2, 5, 10, 20, 50, 100, ... mm that takes no more than that many pixels.
[[nodiscard]] double scaleBarMm(double pixelsPerMm, double mostPixels);

// Draws all marks over a picture of the camera's size. The ring is bright where the current dipole's ball can
// be seen, else grey.
void drawMarks(Image& image, const DipoleScene& scene, const std::vector<SlicePlane>& planes,
               const SceneCamera& camera, const SceneStyle& style);

}  // namespace host
