#include "host/head/Phantom.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>
#include <utility>
#include <vector>

namespace host {

namespace {

constexpr double voxelSize = 2.0;  // mm
// The middle one along x lies at x = 0.
constexpr std::array<int, 3> dimensions = {93, 121, 100};
constexpr Vector3 firstVoxel = {-92.0, -126.0, -94.0};  // scanner mm

// The skin at these points, scanner mm.
constexpr Fiducials points = {{0.0, 78.0, -25.0}, {-74.0, -14.0, -42.0}, {74.0, -14.0, -42.0}};

class Ellipsoid {
 public:
  constexpr Ellipsoid(const Vector3& centre, const Vector3& radii)
      : m_centre(centre),
        m_radii(radii),
        m_squares{inverseSquare(radii.x), inverseSquare(radii.y), inverseSquare(radii.z)} {}

  // How far a point lies outside, mm; negative inside. Good near the surface, elsewhere at least so far.
  double depth(const Vector3& point) const {
    const Vector3 d = point - m_centre;
    const Vector3 slope{d.x * m_squares.x, d.y * m_squares.y, d.z * m_squares.z};
    return (dot(d, slope) - 1.0) / (2.0 * length(slope) + 1e-9);
  }

  constexpr Ellipsoid smaller(double mm) const { return {m_centre, m_radii - Vector3{mm, mm, mm}}; }

 private:
  static constexpr double inverseSquare(double radius) { return 1.0 / (radius * radius); }

  Vector3 m_centre;
  Vector3 m_radii;
  Vector3 m_squares;
};

// One side of the head, that of positive x; the other one is its mirror image.
constexpr Ellipsoid cranium({0, -15, 10}, {76, 95, 82});
constexpr Ellipsoid skullBone = cranium.smaller(5.0);
constexpr Ellipsoid fluidSpace = cranium.smaller(11.0);
constexpr Ellipsoid brain = cranium.smaller(13.0);
constexpr Ellipsoid face({0, 14, -46}, {66, 68, 64});
constexpr Ellipsoid neck({0, -30, -90}, {52, 58, 80});
constexpr Ellipsoid nose({0, 80, -52}, {11, 17, 21});
constexpr Ellipsoid ear({72, -22, -40}, {8, 13, 24});
constexpr Ellipsoid eye({31, 60, -28}, {12, 12, 12});
constexpr Ellipsoid ventricle({9, -18, 18}, {6, 32, 9});
constexpr Ellipsoid temporalHorn({30, -22, -10}, {4, 20, 4});
constexpr Ellipsoid core({0, -18, 6}, {30, 40, 26});
constexpr Ellipsoid cerebellum({0, -62, -44}, {48, 30, 24});
constexpr Ellipsoid brainstem({0, -26, -52}, {12, 13, 40});
constexpr Ellipsoid airway({0, 58, -66}, {13, 20, 14});
constexpr Vector3 capsulePlace = {-80, 12, 18};  // on the left alone
constexpr Ellipsoid capsule(capsulePlace, {5, 5, 8});

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
  double value = 165.0;
  if (brainDepth > -12.0) {
    value = blend(165.0, 108.0, brainDepth + cortex(p));
  }
  value = blend(40.0, value, (std::max)(p.x - 1.0, -core.depth(p)));  // between the halves
  value = blend(150.0, value, brainstem.depth(p));
  const double stripes = 118.0 + 22.0 * std::sin(p.z * 1.1 + p.y * 0.25);
  value = blend(stripes, value, cerebellum.depth(p));
  value = blend(35.0, value, ventricle.depth(p));
  return blend(35.0, value, temporalHorn.depth(p));
}

double headAt(const Vector3& p, double skinDepth) {
  const double skull = skullBone.depth(p);
  const double base = -52.0 - p.z;  // the brain ends there, but for its stem
  const double fluid = (std::max)(fluidSpace.depth(p), base);
  const double brainDepth = (std::max)(brain.depth(p), base + 2.5);
  double value = blend(125.0, 205.0, skinDepth + 5.0);  // muscle below the fat of the skin
  value = blend(28.0, value, (std::max)(skull, base - 6.0));
  value = blend(42.0, value, fluid);
  if (brainDepth < voxelSize) {
    value = blend(brainAt(p, brainDepth), value, brainDepth);
  }
  value = blend(55.0, value, eye.depth(p));
  value = blend(220.0, value, std::abs(eye.depth(p)) - 1.0);
  return blend(15.0, value, airway.depth(p));
}

double valueAt(const Vector3& p) {
  const double skin =
      (std::min)({cranium.depth(p), face.depth(p), neck.depth(p), nose.depth(p), ear.depth(p)});
  constexpr double air = 4.0;
  return skin < voxelSize ? blend(headAt(p, skin), air, skin) : air;
}

// One row of voxels along x: the right half is the mirror image of the left one.
void addRow(double y, double z, std::vector<float>& voxels) {
  constexpr int middle = dimensions[0] / 2;
  std::array<double, middle + 1> half{};
  for (int i = 0; i <= middle; ++i) {
    half.at(static_cast<std::size_t>(i)) = valueAt({i * voxelSize, y, z});
  }
  for (int i = -middle; i <= middle; ++i) {
    const double value = half.at(static_cast<std::size_t>(std::abs(i)));
    const bool isNearCapsule = i < 0 && length(Vector3{i * voxelSize, y, z} - capsulePlace) < 12.0;
    voxels.push_back(static_cast<float>(
        isNearCapsule ? blend(255.0, value, capsule.depth({i * voxelSize, y, z})) : value));
  }
}

}  // namespace

Phantom makePhantom() {
  const Affine toScanner({voxelSize, 0, 0}, {0, voxelSize, 0}, {0, 0, voxelSize}, firstVoxel);
  std::vector<float> voxels;
  voxels.reserve(static_cast<std::size_t>(dimensions[0]) * dimensions[1] * dimensions[2]);
  for (int k = 0; k < dimensions[2]; ++k) {
    for (int j = 0; j < dimensions[1]; ++j) {
      addRow(firstVoxel.y + j * voxelSize, firstVoxel.z + k * voxelSize, voxels);
    }
  }
  return {{dimensions, std::move(voxels), toScanner}, points, capsulePlace};
}

}  // namespace host
