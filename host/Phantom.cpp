#include "host/Phantom.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>
#include <vector>

namespace host {

namespace {

constexpr double voxelSize = 1.5;  // mm
constexpr std::array<int, 3> dimensions = {125, 160, 133};
constexpr Vector3 firstVoxel = {-93.0, -126.0, -90.0};  // scanner mm

// The skin at these points, scanner mm.
constexpr Fiducials points = {{0.0, 83.0, -25.0}, {-73.0, -14.0, -42.0}, {73.0, -14.0, -42.0}};

struct Ellipsoid {
  Vector3 centre;
  Vector3 radii;

  // About how far a point lies outside, mm; negative inside.
  [[nodiscard]] double depth(const Vector3& point) const {
    const Vector3 d = point - centre;
    const Vector3 scaled{d.x / radii.x, d.y / radii.y, d.z / radii.z};
    const double radius = length(scaled);
    const Vector3 twice{scaled.x / radii.x, scaled.y / radii.y, scaled.z / radii.z};
    const double slope = length(twice);
    return slope > 0.0 ? radius * (radius - 1.0) / slope : -(std::min)({radii.x, radii.y, radii.z});
  }

  [[nodiscard]] Ellipsoid smaller(double mm) const { return {centre, radii - Vector3{mm, mm, mm}}; }
};

// What both sides have lies at +x; the point's x is taken without its sign.
constexpr Ellipsoid cranium = {{0, -15, 10}, {76, 95, 82}};
constexpr Ellipsoid face = {{0, 20, -50}, {60, 62, 60}};
constexpr Ellipsoid neck = {{0, -30, -90}, {50, 56, 80}};
constexpr Ellipsoid nose = {{0, 86, -46}, {10, 16, 19}};
constexpr Ellipsoid ear = {{72, -22, -40}, {8, 13, 24}};
constexpr Ellipsoid eye = {{31, 62, -28}, {12, 12, 12}};
constexpr Ellipsoid ventricle = {{9, -18, 18}, {6, 32, 9}};
constexpr Ellipsoid temporalHorn = {{30, -22, -10}, {4, 20, 4}};
constexpr Ellipsoid cerebellum = {{0, -62, -44}, {48, 30, 24}};
constexpr Ellipsoid brainstem = {{0, -26, -52}, {12, 13, 40}};
constexpr Ellipsoid capsule = {{-80, 12, 18}, {5, 5, 8}};

// From `inside` to `outside` within about one voxel around an edge, as a scanner blurs it.
double blend(double inside, double outside, double depth) {
  const double share = std::clamp(0.5 + depth / (1.5 * voxelSize), 0.0, 1.0);
  return inside + (outside - inside) * share;
}

// The folded border between the grey and the white matter, mm below the brain's surface.
double cortex(const Vector3& p) {
  const double folds = std::sin(p.x * 0.33 + std::sin(p.y * 0.21)) * std::sin(p.y * 0.36) +
                       std::sin(p.z * 0.34 + std::sin(p.x * 0.23));
  return 5.5 + 2.5 * folds;
}

double brainAt(const Vector3& p, double brainDepth) {
  double value = blend(165.0, 108.0, brainDepth + cortex(p));
  value = blend(40.0, value, (std::max)(p.x - 1.4, -20.0 - p.z));  // between the halves
  value = blend(150.0, value, brainstem.depth(p));
  const double stripes = 118.0 + 22.0 * std::sin(p.z * 1.1 + p.y * 0.25);
  value = blend(stripes, value, cerebellum.depth(p));
  value = blend(35.0, value, ventricle.depth(p));
  return blend(35.0, value, temporalHorn.depth(p));
}

double headAt(const Vector3& p, double skinDepth) {
  const double skull = cranium.smaller(5.0).depth(p);
  const double base = -52.0 - p.z;  // the brain ends there, but for its stem
  const double fluid = (std::max)(cranium.smaller(11.0).depth(p), base);
  const double brainDepth = (std::max)(cranium.smaller(13.5).depth(p), base + 2.5);
  double value = blend(125.0, 205.0, skinDepth + 5.0);  // muscle below the fat of the skin
  value = blend(28.0, value, (std::max)(skull, base - 6.0));
  value = blend(42.0, value, fluid);
  if (brainDepth < voxelSize)
    value = blend(brainAt(p, brainDepth), value, brainDepth);
  value = blend(55.0, value, eye.depth(p));
  value = blend(220.0, value, std::abs(eye.depth(p)) - 1.0);
  return blend(15.0, value, Ellipsoid{{0, 66, -58}, {13, 24, 16}}.depth(p));  // the airway behind the nose
}

double valueAt(const Vector3& place) {
  const Vector3 p{std::abs(place.x), place.y, place.z};
  const double skin =
      (std::min)({cranium.depth(p), face.depth(p), neck.depth(p), nose.depth(p), ear.depth(p)});
  const double air = 4.0;
  double value = air;
  if (skin < voxelSize)
    value = blend(headAt(p, skin), air, skin);
  return place.x < 0 ? blend(255.0, value, capsule.depth(place)) : value;
}

}  // namespace

Phantom makePhantom() {
  const Affine toScanner({voxelSize, 0, 0}, {0, voxelSize, 0}, {0, 0, voxelSize}, firstVoxel);
  std::vector<float> voxels;
  voxels.reserve(static_cast<std::size_t>(dimensions[0]) * dimensions[1] * dimensions[2]);
  for (int k = 0; k < dimensions[2]; ++k)
    for (int j = 0; j < dimensions[1]; ++j)
      for (int i = 0; i < dimensions[0]; ++i)
        voxels.push_back(static_cast<float>(
            valueAt(toScanner({static_cast<double>(i), static_cast<double>(j), static_cast<double>(k)}))));
  return {{dimensions, std::move(voxels), toScanner}, points, capsule.centre};
}

}  // namespace host
