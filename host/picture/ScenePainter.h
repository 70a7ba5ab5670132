// Draws a scene into a picture with depth: slices, balls, arrows, head sphere, fiducials.
#pragma once

#include <optional>
#include <vector>

#include "host/dipoles/DipoleScene.h"
#include "host/paint/DepthPicture.h"
#include "host/paint/SceneCamera.h"
#include "host/picture/SlicePlane.h"

namespace host {

struct SceneStyle {
  Rgb background{14, 17, 22};
  double ballRadius = 2.5;  // mm
  bool showArrows = true;   // those that the scene has
  bool showCurrent = true;  // a ring around the current dipole
  bool showSphere = true;   // circles of the head sphere
  double fade = 0.35;       // how much of the background covers the farthest dipoles, 0 to 1
  double fadeReach = 90.0;  // mm before and behind the camera's centre over which they fade
  double lineWidth = 1.5;   // pixels
  // How much of the dipoles' colour shows through a slice before them, 0 to 1. Above 0 dipoles behind slices
  // can be picked too.
  double seeThrough = 0.0;

  friend bool operator==(const SceneStyle&, const SceneStyle&) = default;
};

constexpr double fiducialRadius = 3.5;  // mm, of their circles
// Green nasion, blue left ear, red right ear; by the letter of SceneFiducial.
Rgb fiducialColour(char letter);

// The radius of the balls in this view, mm: that of the style, and larger where it would be less than 1.5
// pixels, so that no dipole falls between the pixels.
double ballRadiusIn(const SceneCamera& camera, const SceneStyle& style);

// The radius of the fiducials' circles, mm: larger where few pixels would leave no room for a dipole inside.
double fiducialRadiusIn(const SceneCamera& camera, const SceneStyle& style);

class ScenePainter {
 public:
  // Clears the picture and draws. The camera must be of the picture's size.
  void paint(DepthPicture& picture, const DipoleScene& scene, const std::vector<SlicePlane>& planes,
             const SceneCamera& camera, const SceneStyle& style);
  // The same picture. The painted dipoles are kept, and painted anew only when anything that they hang on has
  // changed; they need the memory of a second picture. With slices that are not seen through none are kept.
  void paintKeeping(DepthPicture& picture, const DipoleScene& scene, const std::vector<SlicePlane>& planes,
                    const SceneCamera& camera, const SceneStyle& style);

 private:
  // All that the painted dipoles hang on; the picture's size is the camera's.
  struct DipolesKey {
    std::vector<SceneDipole> dipoles;
    SceneCamera camera;
    SceneStyle style;

    friend bool operator==(const DipolesKey&, const DipolesKey&) = default;
  };
  struct Placed {
    const SceneDipole* dipole;
    ScreenPoint at;
  };
  void place(const DipoleScene& scene, const SceneCamera& camera);
  void drawDipoles(DepthPicture& picture, const DipoleScene& scene, const SceneCamera& camera,
                   const SceneStyle& style);
  const DepthPicture& keptDipoles(const DipoleScene& scene, const SceneCamera& camera,
                                  const SceneStyle& style);
  void drawOver(DepthPicture& picture, const DipoleScene& scene, const std::vector<SlicePlane>& planes,
                const SceneCamera& camera, const SceneStyle& style);
  void laySlicesOver(DepthPicture& picture, const std::vector<SlicePlane>& planes, const SceneCamera& camera,
                     const SceneStyle& style);

  // Kept from picture to picture for their memory.
  std::vector<Placed> m_placed;
  std::optional<DepthPicture> m_slices;
  std::optional<DepthPicture> m_dipoles;
  std::optional<DipolesKey> m_dipolesKey;  // of m_dipoles; none: there is nothing whole in it
  std::vector<SceneDipole> m_spare;        // memory for the next key
};

// The slot of the dipole whose ball the pixel shows when nothing but balls and slices is drawn: the nearest
// to the viewer, the lowest slot among equals; -1 when there is none or a slice hides it, unless slices are
// seen through.
int pickDipole(const DipoleScene& scene, const std::vector<SlicePlane>& planes, const SceneCamera& camera,
               const SceneStyle& style, int column, int row);

// Whether a slice stands between the viewer and the nearest point of a dipole's ball.
bool isBehindSlice(const SceneDipole& dipole, const std::vector<SlicePlane>& planes,
                   const SceneCamera& camera, const SceneStyle& style);

}  // namespace host
