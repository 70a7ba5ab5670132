// The fiducial points that a dipole file brings with it.
//
// A CTF dipole file gives nasion and ears as slice numbers of the MRI on which its head model was made: one
// number each for the sagittal, the coronal and the axial slice, counted from 0. Public readers of the CTF
// MRI format tell how these lie in the patient: coronal slices count from the front to the back, axial ones
// from the top down, and sagittal ones from the patient's left to the right, unless the header of the MRI
// says "left on right": then from the right to the left. A dipole file does not say which of the two its
// MRI is. The numbers of its own ears do: the smaller one is that of the ear which was counted first.
//
// The set keeps them as 256 minus the number, in the order sagittal, axial, coronal (m_fiducialMri), and,
// made from these with voxels of 0.859375 mm, the same points in mm of the head frame (m_fiducialCtf).
#pragma once

#include <optional>
#include <string>

#include "host/head/Head.h"
#include "host/head/HeadFrame.h"
#include "host/head/Volume.h"
#include "module/dipole.h"

namespace host {

// By how much a distance between two fiducial points may differ in one and the same head, mm.
inline constexpr double mostDifference = 10.0;

// The set's points in a volume of the same MRI, scanner mm, whichever way its voxel axes lie: each slice
// direction is the voxel axis nearest to it. Throws std::runtime_error with the cause: the set has no
// points; the volume does not state its sides; a point lies outside of the volume; the points are no head,
// or their distances are not those of the set's head-frame points within mostDifference, and so not of this
// MRI.
Fiducials fiducialsOfSet(const CDipoleFace& set, const Volume& volume);

// The points in mm of the head frame; nothing when the set's file gave none of an MRI: those that an import
// then makes up from the sphere are nobody's.
std::optional<Fiducials> measuredPoints(const CDipoleFace& set);

// Where a set's points lie in the head frame of a registered head, mm: by the numbers of the slices when the
// head's MRI holds its points so too, else in their own head frame. Nothing of the phantom, or when they are
// no head's.
std::optional<Fiducials> pointsOfSetIn(const Head& head, const CDipoleFace& set);

// The numbers of the slices as the set's file gives them: sagittal, coronal, axial; nothing when it gives
// none.
std::optional<Fiducials> slicesOfSet(const CDipoleFace& set);

// A warning (UTF-8) when a distance between two points of a dipole file (measuredPoints) differs from that
// of the given ones by more than mostDifference; empty when none does.
std::string headMismatch(const Fiducials& own, const Fiducials& head);

// The same of a head that is registered. An import counts with voxels of 0.859375 mm, whatever the MRI's are:
// when the voxels of the head's own MRI are cubes, distances counted with those are as good.
std::string headMismatch(const Fiducials& own, const Head& head);

// The same of a set; empty when its file gave no points.
std::string headMismatch(const CDipoleFace& set, const Head& head);

}  // namespace host
