#include "host/audit/HeadChecks.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "host/dipoles/SetFiducials.h"

namespace host {

namespace {

Vector3 placeOf(const CDipoleszq& dipole) {
  return {dipole.m_location[0], dipole.m_location[1], dipole.m_location[2]};
}

template <typename IsOutside>
std::vector<int> slotsOutside(const CDipoleFace& set, int first, int end, IsOutside isOutside) {
  std::vector<int> slots;
  for (int slot = first; slot < end; ++slot) {
    const CDipoleszq* const dipole = set.m_dipoles[slot];
    if (dipole != nullptr && isOutside(placeOf(*dipole))) {
      slots.push_back(slot);
    }
  }
  return slots;
}

std::optional<Finding> outside(std::vector<int> slots, const std::string& file, const std::string& where) {
  if (slots.empty()) {
    return std::nullopt;
  }
  const std::string who =
      slots.size() == 1 ? "1 dipole lies " : std::to_string(slots.size()) + " dipoles lie ";
  Finding finding{FindingCode::outsideHead, Severity::doubtful, file, 0, {}, std::move(slots), {}, {}};
  finding.sentence = who + where +
                     ". Nothing can be active there: unit, head model or registration may be those of "
                     "something else.";
  return finding;
}

std::optional<Finding> otherHead(const std::string& mismatch, std::string file) {
  if (mismatch.empty()) {
    return std::nullopt;
  }
  return Finding{FindingCode::otherHead, Severity::wrong, std::move(file), 0, {}, {}, mismatch, {}};
}

}  // namespace

std::optional<Finding> findOutsideSphere(const CDipoleFace& set, int first, int end,
                                         const std::string& file) {
  if (set.m_bCtfSphereSet == 0) {
    return std::nullopt;
  }
  const double* const c = set.m_sphereCtf.m_center;
  const Vector3 centre = {c[0], c[1], c[2]};
  const double farthest = set.m_sphereCtf.m_radius + mostOutsideSphere;
  std::vector<int> slots =
      slotsOutside(set, first, end, [&](const Vector3& place) { return length(place - centre) > farthest; });
  return outside(std::move(slots), file, "more than 20 mm outside of the head sphere");
}

std::optional<Finding> findOutsideMri(const CDipoleFace& set, int first, int end, const Volume& volume,
                                      const HeadFrame& frame, const std::string& file) {
  const Affine toIndex = volume.fromScanner().after(frame.toScanner());
  std::vector<int> slots = slotsOutside(set, first, end, [&](const Vector3& place) {
    const Vector3 index = toIndex(place);
    bool isInside = true;
    for (int axis = 0; axis < 3; ++axis) {
      const double last = volume.dimensions()[static_cast<std::size_t>(axis)] - 1.0;
      isInside = isInside && index[axis] >= -0.5 && index[axis] <= last + 0.5;  // voxels reach half a step
    }
    return !isInside;
  });
  return outside(std::move(slots), file, "outside of the MRI");
}

std::optional<Finding> findSeveralPatients(std::span<const FilePatient> files) {
  std::vector<const FilePatient*> named;
  for (const FilePatient& file : files) {
    const bool isNew = std::none_of(named.begin(), named.end(),
                                    [&](const FilePatient* known) { return known->patient == file.patient; });
    if (!file.patient.empty() && isNew) {
      named.push_back(&file);
    }
  }
  if (named.size() < 2) {
    return std::nullopt;
  }
  Finding finding{FindingCode::severalPatients, Severity::doubtful, {}, 0, {}, {}, {}, {}};
  finding.sentence = "The files name different patients: ";
  for (const FilePatient* file : named) {
    finding.sentence += (file == named.front() ? "" : ", ") + file->patient + " (" + file->file + ")";
  }
  finding.sentence += ". A set can keep one name only.";
  return finding;
}

std::optional<Finding> findOtherHead(const CDipoleFace& set, const Fiducials& head, const std::string& file) {
  std::string mismatch = headMismatch(set, head);
  if (!mismatch.empty()) {
    mismatch = "For this MRI " + mismatch;
  }
  return otherHead(mismatch, file);
}

std::optional<Finding> findOtherHead(const CDipoleFace& set, const std::string& file,
                                     const CDipoleFace& other, const std::string& otherFile) {
  if (other.m_fiducialMri.getTotalFiduciaryPts(true) < 3) {
    return std::nullopt;
  }
  Vector3 points[3];
  for (const int point : {CFiducial::nasion, CFiducial::leftEar, CFiducial::rightEar}) {
    if (other.m_fiducialCtf.m_points[point].getPosition(points[point].x, points[point].y, points[point].z) ==
        0) {
      return std::nullopt;
    }
  }
  std::string mismatch = headMismatch(set, {points[0], points[1], points[2]});
  if (!mismatch.empty()) {
    mismatch = "Beside " + otherFile + " " + mismatch;
  }
  return otherHead(mismatch, file);
}

}  // namespace host
