#include "host/audit/HeadChecks.h"

#include <algorithm>
#include <cmath>
#include <utility>
#include <vector>

#include "host/dipoles/DipolePlace.h"
#include "host/dipoles/SetFiducials.h"
#include "host/head/NeuromagFrame.h"
#include "host/text/Numbers.h"

namespace host {

namespace {

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

bool isNumber(const Vector3& place) {
  return std::isfinite(place[0]) && std::isfinite(place[1]) && std::isfinite(place[2]);
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

// A finding with the dipoles whose place is no number: of these nobody can say where they lie.
std::optional<Finding> withoutPlace(std::optional<Finding> finding, const std::vector<int>& slots,
                                    const std::string& file) {
  if (slots.empty()) {
    return finding;
  }
  const std::string who = slots.size() == 1 ? "1 dipole has" : std::to_string(slots.size()) + " dipoles have";
  const std::string sentence = who + " no valid location: what stands there is no number.";
  if (!finding) {
    return Finding{FindingCode::outsideHead, Severity::doubtful, file, 0, {}, slots, sentence, {}};
  }
  finding->sentence += " " + sentence;
  finding->slots.insert(finding->slots.end(), slots.begin(), slots.end());
  std::sort(finding->slots.begin(), finding->slots.end());
  return finding;
}

std::optional<Finding> otherHead(const std::string& mismatch, const std::string& file,
                                 const std::string& beside) {
  if (mismatch.empty()) {
    return std::nullopt;
  }
  return Finding{FindingCode::otherHead, Severity::wrong, file, 0, {}, {}, beside + " " + mismatch, {}};
}

std::string atMost(double mm) {
  return mm < 0.05 ? "less than 0.1 mm" : "up to " + fixed(mm, 1) + " mm";
}

struct DistanceTexts {
  std::string distance;
  std::string doubt;
  std::string used;
};

// Two sets of fiducial points that lie so far from each other, mm, at most.
Finding distant(double largest, const std::string& file, const DistanceTexts& texts) {
  Finding finding{FindingCode::otherHead, Severity::note, file, 0, {}, {}, texts.distance, {}};
  if (largest <= sameHeadDistance) {
    finding.sentence += texts.used;
  } else if (largest <= mostDifference) {
    finding.severity = Severity::doubtful;
    finding.sentence += texts.doubt + texts.used;
  } else {  // also what is not a number
    finding.severity = Severity::wrong;
    finding.sentence += " Is this the same head?";
  }
  return finding;
}

}  // namespace

std::optional<Finding> findOutsideSphere(const CDipoleFace& set, int first, int end,
                                         const std::string& file) {
  if (set.m_bCtfSphereSet == 0 || set.m_sphereCtf.m_radius == 0.0) {  // a set file keeps that there was one
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
    if (!isNumber(place)) {
      return false;
    }
    const Vector3 index = toIndex(place);
    bool isInside = true;
    for (int axis = 0; axis < 3; ++axis) {
      const double last = volume.dimensions()[static_cast<std::size_t>(axis)] - 1.0;
      isInside = isInside && index[axis] >= -0.5 && index[axis] <= last + 0.5;  // voxels reach half a step
    }
    return !isInside;
  });
  return withoutPlace(outside(std::move(slots), file, "outside of the MRI"),
                      slotsOutside(set, first, end, [](const Vector3& place) { return !isNumber(place); }),
                      file);
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

std::optional<Finding> findOtherHead(const Fiducials& own, const std::string& file, const Head& head) {
  return otherHead(headMismatch(own, head), file, "For this MRI");
}

std::optional<Finding> findOtherHead(const Fiducials& own, const std::string& file, const Fiducials& other,
                                     const std::string& otherFile) {
  return otherHead(headMismatch(own, other), file, "Beside " + otherFile);
}

std::optional<Finding> findOtherHead(const Fiducials& ownNumbers, const std::string& file,
                                     const SliceNumbers& head) {
  const auto distance = [&](const Vector3& own, const Vector3& other) {
    const Vector3 apart = own - other;
    return length({apart.x * head.spacing.x, apart.y * head.spacing.y, apart.z * head.spacing.z});
  };
  double largest = 0.0;
  for (const double one :
       {distance(ownNumbers.nasion, head.numbers.nasion), distance(ownNumbers.leftEar, head.numbers.leftEar),
        distance(ownNumbers.rightEar, head.numbers.rightEar)}) {
    largest = one <= largest ? largest : one;  // what is not a number is farther than any
  }
  return distant(
      largest, file,
      {"The fiducial points in the dipole file lie " + atMost(largest) + " from those in this MRI.",
       " They may have been set anew since the fit.", " Those in the MRI are used."});
}

Finding findingOf(const HeadPlacement& placement, const std::string& file) {
  if (!placement.arePointsKnown()) {
    return {FindingCode::symmetricEars,
            Severity::note,
            file,
            0,
            {},
            {},
            "The transform lays Neuromag's dipoles into the MRI: there their places are exact. The ears are "
            "not known and taken as symmetric, which concerns the other head frames alone.",
            {}};
  }
  const double largest = placement.apart.value();
  return distant(largest, file,
                 {"The fiducial points lie " + atMost(largest) + " from where the transform has them.",
                  " One of them was made on another occasion.", " The transform is used."});
}

std::optional<Finding> findCarriedByOthers(const std::optional<Fiducials>& carriedBy, const std::string& file,
                                           const Fiducials& head) {
  constexpr double rounding = 0.05;  // mm
  constexpr double reach = 100.0;    // mm, from the head's origin: where dipoles may lie
  const Affine back = carriedBy ? headToNeuromag(*carriedBy) : headToSymmetricNeuromag();
  const Affine anew = neuromagToHead(head).after(back);
  double largest = length(anew(Vector3{}));
  for (int axis = 0; axis < 3; ++axis) {
    for (const double side : {-reach, reach}) {
      Vector3 place;
      place[axis] = side;
      largest = (std::max)(largest, length(anew(place) - place));
    }
  }
  if (largest <= rounding) {
    return std::nullopt;
  }
  Finding finding{FindingCode::symmetricEars, Severity::doubtful, file, 0, {}, {}, {}, {}};
  finding.severity = largest <= sameHeadDistance ? Severity::doubtful : Severity::wrong;
  finding.sentence =
      "The positions were carried from the Neuromag head frame " +
      std::string(carriedBy ? "by the fiducial points of another head" : "with ears taken as symmetric") +
      ". By those of this MRI they lie up to " + fixed(largest, 1) +
      " mm elsewhere: import the file again with this MRI open.";
  return finding;
}

std::vector<Finding> findingsOf(const Head& head, const std::string& file) {
  std::vector<Finding> findings;
  for (const HeadRemark& remark : head.source.remarks) {
    const Severity severity = remark.doubt == Doubt::note       ? Severity::note
                              : remark.doubt == Doubt::doubtful ? Severity::doubtful
                                                                : Severity::wrong;
    findings.push_back({FindingCode::mriPoints, severity, file, 0, {}, {}, remark.text + ".", {}});
  }
  return findings;
}

}  // namespace host
