// What stands over a 3D picture and is never hidden: side letters, axes, scale bar, the names of the
// fiducials, the ring around the current dipole.
#pragma once

#include <string>
#include <vector>

#include "host/picture/ScenePainter.h"

namespace host {

// Where the viewer stands, such as "from the patient's left" or "yaw 30.0, pitch 20.0 degrees".
std::string viewText(const ViewAngles& angles);

// Draws all marks over a picture of the camera's size. The ring is bright where the current dipole's ball can
// be seen, else grey. `scale`: see host/paint/PictureText.h.
void drawMarks(Image& image, const DipoleScene& scene, const std::vector<SlicePlane>& planes,
               const SceneCamera& camera, const SceneStyle& style, double scale = 1.0);

}  // namespace host
