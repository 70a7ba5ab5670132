#include "tool/FileInfo.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "host/dipoles/DipolePlace.h"
#include "host/dipoles/HeaderText.h"
#include "host/dipoles/ValueColors.h"
#include "tool/Text.h"

namespace tool {
namespace {

std::optional<FiducialTriple> pointsOf(const CFiducialzq& set) {
  FiducialTriple result{};
  for (std::size_t i = 0; i < result.size(); ++i) {
    Point& point = result.at(i);
    if (set.m_points[i].getPosition(point[0], point[1], point[2]) == 0) {
      return std::nullopt;
    }
  }
  return result;
}

std::optional<Sphere> sphereOf(const CDipoleFace9File& collection) {
  const CSpherezq& sphere = collection.m_sphereCtf;
  // A set file of the current version keeps that there was a sphere, but not the sphere.
  if (collection.m_bCtfSphereSet == 0 || sphere.m_radius == 0.0) {
    return std::nullopt;
  }
  return Sphere{{sphere.m_center[0], sphere.m_center[1], sphere.m_center[2]}, sphere.m_radius};
}

void widen(std::optional<Range>& range, double value) {
  if (std::isnan(value)) {
    return;
  }
  if (!range) {
    range = Range{value, value};
  }
  range->smallest = (std::min)(range->smallest, value);
  range->largest = (std::max)(range->largest, value);
}

// Places of the host's own frame as they are, also those that are no numbers.
host::Vector3 inFrameOf(const host::SetFrame& frame, const host::Vector3& place) {
  return frame.prefix.empty() ? place : frame.fromHost(place);
}

host::LabelCounts countsOf(const CDipoleFace9File& collection, const host::SetPlaces& places) {
  std::vector<std::optional<host::NamedPlace>> there;
  for (int slot = 0; slot < collection.m_totalDipoles; ++slot) {
    if (collection.getDipole(slot) != nullptr) {
      there.push_back(places.of(slot));
    }
  }
  return host::countLabels(there);
}

}  // namespace

FileInfo::FileInfo(std::string name, const ImportSession& session, const host::SetFrame& in,
                   const std::optional<host::SetPlaces>& where)
    : file(std::move(name)), messages(session.messages()), places(where) {
  const CDipoleFace9File& collection = session.collection();
  isOtherFrame = !in.prefix.empty();
  frame = in.description;
  axes = in.axes;
  version = session.version();
  patient = session.patient();
  mriFile = host::headerText(collection.m_mriFile, "MRI_FILE:");
  isMegOnly = collection.m_megOnly != 0;
  sphere = sphereOf(collection);
  mriFiducials = pointsOf(collection.m_fiducialMri);
  headFiducials = pointsOf(collection.m_fiducialCtf);
  isMomentInNAm = session.isMomentInNAm();
  for (int i = 0; i < collection.m_totalDipoles; ++i) {
    const CDipoleszq* dipole = collection.getDipole(i);
    if (dipole == nullptr) {
      continue;
    }
    ++dipoles;
    shownOnSlices += dipole->m_display == 1 ? 1 : 0;
    const host::Vector3 place = inFrameOf(in, host::placeOf(*dipole));
    for (std::size_t axis = 0; axis < position.size(); ++axis) {
      widen(position.at(axis), place[static_cast<int>(axis)]);
    }
    const auto widenKnown = [&](std::optional<Range>& range, host::DipoleValue value) {
      if (!session.unknown().isUnknown(i, value)) {
        widen(range, host::valueOf(*dipole, value));
      }
    };
    widenKnown(latency, host::DipoleValue::latency);
    widenKnown(moment, host::DipoleValue::moment);
    widenKnown(fitError, host::DipoleValue::fitError);
  }
  if (places) {
    labels = countsOf(collection, *places);
  }
}

}  // namespace tool
