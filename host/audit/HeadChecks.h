// Checks that need a head, or several files. None changes anything.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <vector>

#include "host/audit/Finding.h"
#include "host/head/Head.h"
#include "host/head/HeadPlacement.h"
#include "host/head/Volume.h"
#include "module/dipole.h"

namespace host {

// How far outside of the head sphere a dipole may lie before it is doubtful, mm.
inline constexpr double mostOutsideSphere = 20.0;

// The dipoles of slots first .. end-1 that lie farther outside than mostOutsideSphere of the head sphere
// that a CTF file gave; nothing when the set has no such sphere (that of a 4D/MSI import is made up).
std::optional<Finding> findOutsideSphere(const CDipoleFace& set, int first, int end, const std::string& file);

// The dipoles that lie outside of an MRI, or whose place is no number.
std::optional<Finding> findOutsideMri(const CDipoleFace& set, int first, int end, const Volume& volume,
                                      const HeadFrame& frame, const std::string& file);

struct FilePatient {
  std::string file;
  std::string patient;  // empty: the file names nobody, which contradicts nobody
};
std::optional<Finding> findSeveralPatients(std::span<const FilePatient> files);

// Whether the fiducial points of a dipole file (host/dipoles/SetFiducials.h, measuredPoints) are those of
// the head of an MRI, which is registered, or of another dipole file: each distance between two of them may
// differ by mostDifference (host/dipoles/SetFiducials.h, headMismatch).
std::optional<Finding> findOtherHead(const Fiducials& own, const std::string& file, const Head& head);
std::optional<Finding> findOtherHead(const Fiducials& own, const std::string& file, const Fiducials& other,
                                     const std::string& otherFile);

// The same by the numbers of the slices, which a CTF MRI holds too: the largest distance between where a
// point is in both. Up to sameHeadDistance it is a note, up to mostDifference doubtful.
inline constexpr double sameHeadDistance = 2.0;  // mm
std::optional<Finding> findOtherHead(const Fiducials& ownNumbers, const std::string& file,
                                     const SliceNumbers& head);

// Whether a file whose dipoles were carried from the Neuromag head frame by these points, or without any, has
// them elsewhere than by those of this head: doubtful up to sameHeadDistance, then wrong.
std::optional<Finding> findCarriedByOthers(const std::optional<Fiducials>& carriedBy, const std::string& file,
                                           const Fiducials& head);

// How far the fiducial points of a head lie from where a transform has them, likewise; and when no points are
// known, what that means.
Finding findingOf(const HeadPlacement& placement, const std::string& file);

// What the file of a head says of itself that a user should know.
std::vector<Finding> findingsOf(const Head& head, const std::string& file);

}  // namespace host
