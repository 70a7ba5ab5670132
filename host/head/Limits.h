// The sizes that all pictures and the places in them keep to.
#pragma once

namespace host {

// mm from the head's origin along each axis: no head reaches farther, and nothing farther away is drawn on
// slices or gone to.
inline constexpr double headReach = 300.0;
// mm: a slice or a length beyond it is a mistake.
inline constexpr double longestLength = 1000.0;

// The voxels of a head, mm.
inline constexpr double finestVoxel = 0.1;
inline constexpr double coarsestVoxel = 10.0;

// The size of a pixel on slices, mm.
inline constexpr double finestPixel = 0.1;
inline constexpr double coarsestPixel = 5.0;

// The side of a dipole's square on slices, pixels.
inline constexpr int smallestGlyph = 1;
inline constexpr int largestGlyph = 64;

// The radius of a dipole's ball in 3D, mm.
inline constexpr double smallestBall = 0.1;
inline constexpr double largestBall = 50.0;

}  // namespace host
