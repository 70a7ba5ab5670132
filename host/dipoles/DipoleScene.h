// What a 3D picture shows of a dipole set, as plain values. All places are mm in the head frame (x left, y
// up, z front).
//
// Places are the stored locations: the module's query for display coordinates is inert by design, and the
// whole-set translation and rotation, which only that query would apply, stay beside the set here as on the
// slices.
#pragma once

#include <functional>
#include <optional>
#include <vector>

#include "host/dipoles/DipolePlace.h"
#include "host/head/Vector3.h"
#include "host/paint/Image.h"
#include "module/dipole.h"

namespace host {

struct SceneDipole {
  int slot = 0;
  Vector3 place;
  Rgb colour;
  Vector3 arrow;  // from the place to the tip; zero: no arrow

  friend bool operator==(const SceneDipole&, const SceneDipole&) = default;
};

struct SceneFiducial {
  char letter = 'N';  // N nasion, L left ear, R right ear
  Vector3 place;
};

struct SceneSphere {
  Vector3 centre;
  double radius = 0.0;
};

struct DipoleScene {
  std::vector<SceneDipole> dipoles;  // those that are drawn, in the order of their slots
  int currentSlot = -1;              // -1: there is none, or it is not drawn
  std::vector<SceneFiducial> fiducials;
  std::optional<SceneSphere> sphere;
  int total = 0;        // dipoles in the set
  int shown = 0;        // those that the set counts as shown
  int switchedOff = 0;  // hidden by their own switch or that of the whole set, or not the current one
  int nowhere = 0;      // shown, but without a place: a coordinate is not a number, or beyond 100 m
};

// Whether the module shows the dipole of a slot in 3D: nothing while the whole set is switched off; the
// current dipole alone, even when its own switch is off, while m_showCurrentDipoleOnly; else those with
// m_show.
bool isSwitchedOn(const CDipoleFace3On3DView& dipoles, int slot, const CDipoleszq& dipole);
// Whether a place is one: every coordinate a number, and within 100 m.
bool isPlace(const Vector3& point);
// Its orientation made as long as 1; nothing when that has no length, or is no number.
std::optional<Vector3> directionOf(const CDipoles& dipole);
// From the dipole's place to the tip of its arrow; zero: it has none.
Vector3 arrowOf(const CDipoles& dipole);
// m_colorF.
Rgb ownColour(const CDipoles& dipole);

// By the module's own rules, isSwitchedOn and ownColour, so that `shown` agrees with getTotalDipolesShowed
// wherever slots are filled. Arrows follow m_showOrientation and are m_orientationLength mm long (at most
// 1000); an orientation without a length or a number gives none. The sphere is the one that the fit used,
// m_sphereCtf; without it a sphere of m_sphereLocational's radius around the origin, because the centre of
// that one is the set's translation. Fiducials stand while m_showFiducialPt.
DipoleScene sceneOf(const CDipoleFace3On3DView& dipoles);

// The same by a host's choice of dipoles and colours.
struct SceneChoice {
  std::function<bool(int slot, const CDipoleszq& dipole)> isShown;
  std::function<Rgb(const CDipoleszq& dipole)> colourOf;
  std::function<Vector3(const CDipoleszq& dipole)> arrowOf;  // from the place to the tip; zero: none
};
DipoleScene sceneOf(const CDipoleFace3On3DView& dipoles, const SceneChoice& choice);

// The dipole of a slot, null when it is not drawn.
const SceneDipole* findDipole(const DipoleScene& scene, int slot);

}  // namespace host
