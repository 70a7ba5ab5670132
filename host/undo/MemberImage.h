// Every member of a dipole, and every set-wide member of a collection, as plain bits and texts; and what of a
// dipole is unknown.
//
// Numbers are copied bit by bit, so that also a payload of a NaN and the sign of a zero survive. Units and
// frames are those of record/Dipoles.h and collection/DipoleFace.h. Left out of the set-wide members is what
// belongs to the host's windows and not to the set: callbacks, the manager's title, the parent window.
#pragma once

#include <afxwin.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <tuple>
#include <type_traits>

#include "module/dipole.h"

namespace host {

using DipoleSet = CDipoleFace8Import01_CTF;

namespace members {

inline constexpr auto ofSphere = std::make_tuple(&CSphere::m_center, &CSphere::m_radius, &CSphere::m_auxInt);

inline constexpr auto ofPoint =
    std::make_tuple(&CFiduciaryPt::m_values, &CFiduciaryPt::m_value16, &CFiduciaryPt::m_value17,
                    &CFiduciaryPt::m_values2, &CFiduciaryPt::m_int0, &CFiduciaryPt::m_int1,
                    &CFiduciaryPt::m_int2, &CFiduciaryPt::m_value18, &CFiduciaryPt::m_int3);

inline constexpr auto ofFiducials = std::make_tuple(&CFiducial::m_ints, &CFiducial::m_tail);

// The first two are notes of the windows, see windowBytes.
inline constexpr auto ofDipole = std::make_tuple(
    &CDipoles::m_listItemId, &CDipoles::m_selected, &CDipoles::m_number, &CDipoles::m_show,
    &CDipoles::m_showOrientation, &CDipoles::m_color, &CDipoles::m_colorF, &CDipoles::m_id,
    &CDipoles::m_fitTag, &CDipoles::m_extraFlag, &CDipoles::m_latency, &CDipoles::m_extraValue,
    &CDipoles::m_fitError, &CDipoles::m_display, &CDipoles::m_location, &CDipoles::m_size,
    &CDipoles::m_segments, &CDipoles::m_orientation, &CDipoles::m_moment, &CDipoles::m_scale,
    &CDipoles::m_orientationScale, &CDipoles::m_orientationLength, &CDipoles::m_dimY, &CDipoles::m_dimX,
    &CDipoles::m_dimZ, &CDipoles::m_importTag1, &CDipoles::m_importTag2);

// The current dipole is the first one, see currentDipoleBytes.
inline constexpr auto ofFace = std::make_tuple(
    &CDipoleFace::m_currentDipole, &CDipoleFace::m_totalDipoles, &CDipoleFace::m_faceValue,
    &CDipoleFace::m_showDipoleOrientationAll, &CDipoleFace::m_allDipoleRange, &CDipoleFace::m_bCtfSphereSet,
    &CDipoleFace::m_megOnly, &CDipoleFace::m_coordinateType, &CDipoleFace::m_momentInNAm,
    &CDipoleFace::m_skipFiducialSetup, &CDipoleFace::m_showCurrentDipoleOnly,
    &CDipoleFace::m_showDipoleLatencySelected, &CDipoleFace::m_showDipole2DOverlap,
    &CDipoleFace::m_mergeRadius, &CDipoleFace::m_showFiducialPt, &CDipoleFace::m_showDipoleArray,
    &CDipoleFace::m_dimension, &CDipoleFace::m_space);

inline constexpr auto ofImport = std::make_tuple(&DipoleSet::m_importFirst, &DipoleSet::m_importEnd);

template <typename Owner, typename Member>
constexpr std::size_t sizeOfOne(Member Owner::* /*member*/) {
  return sizeof(Member);
}

template <typename List>
constexpr std::size_t sizeOf(const List& list) {
  return std::apply([](auto... member) { return (sizeOfOne(member) + ...); }, list);
}

template <typename Owner, typename List, typename Visit>
void visitEach(Owner& owner, const List& list, Visit& visit) {
  std::apply([&](auto... member) { (visit(owner.*member), ...); }, list);
}

}  // namespace members

// Hands every member that is a number, or an array of numbers, to `visit`, always in the same order.
template <typename Dipole, typename Visit>
void visitDipoleNumbers(Dipole& dipole, Visit& visit) {
  members::visitEach(dipole, members::ofDipole, visit);
  members::visitEach(dipole.m_rawLocation, members::ofSphere, visit);
  members::visitEach(dipole.m_rawOrientation, members::ofSphere, visit);
}

template <typename Dipole, typename Visit>
void visitDipoleTexts(Dipole& dipole, Visit visit) {
  visit(dipole.m_label);
  visit(dipole.m_rawLocation.m_auxText);
  visit(dipole.m_rawOrientation.m_auxText);
}

template <typename Set, typename Visit>
void visitSetNumbers(Set& set, Visit& visit) {
  members::visitEach(set, members::ofFace, visit);
  members::visitEach(set, members::ofImport, visit);
  for (auto* sphere :
       {&set.m_sphereLocational, &set.m_sphereCtf, &set.m_sphereRotation, &set.m_sphereMriAngles}) {
    members::visitEach(*sphere, members::ofSphere, visit);
  }
  for (auto* fiducials : {&set.m_fiducialMri, &set.m_fiducialCtf}) {
    members::visitEach(*fiducials, members::ofFiducials, visit);
    for (auto& point : fiducials->m_points) {
      members::visitEach(point, members::ofPoint, visit);
    }
  }
}

template <typename Set, typename Visit>
void visitSetTexts(Set& set, Visit visit) {
  visit(set.m_fileVersion);
  visit(set.m_patient);
  visit(set.m_mriFile);
  for (auto* sphere :
       {&set.m_sphereLocational, &set.m_sphereCtf, &set.m_sphereRotation, &set.m_sphereMriAngles}) {
    visit(sphere->m_auxText);
  }
  for (auto* fiducials : {&set.m_fiducialMri, &set.m_fiducialCtf}) {
    for (auto& point : fiducials->m_points) {
      visit(point.m_label);
    }
  }
}

// The numbers of a thing one behind the other without gaps, and its texts.
template <std::size_t numberBytes, std::size_t textCount>
struct MemberImage {
  std::array<std::byte, numberBytes> numbers;
  std::array<CString, textCount> texts;
};

inline constexpr std::size_t memberBytes =
    members::sizeOf(members::ofDipole) + 2 * members::sizeOf(members::ofSphere);
// Behind the members a byte says what of the dipole is unknown, see host/dipoles/UnknownDipoles.h.
using DipoleImage = MemberImage<memberBytes + 1, 3>;

using SetWideImage = MemberImage<members::sizeOf(members::ofFace) + members::sizeOf(members::ofImport) +
                                     4 * members::sizeOf(members::ofSphere) +
                                     2 * (members::sizeOf(members::ofFiducials) +
                                          CFiducial::totalPoints * members::sizeOf(members::ofPoint)),
                                 3 + 4 + 2 * CFiducial::totalPoints>;

// One number in the image of a dipole; an element of an array is a column of its own.
struct DipoleColumn {
  std::size_t offset = 0;
  std::size_t width = 0;  // bytes: 1, 4 or 8
};

namespace members {

struct DipoleColumns {
  std::array<DipoleColumn, 64> all{};  // more would not be accepted by the compiler
  std::size_t count = 0;
  std::size_t end = 0;

  template <typename Owner, typename Member>
  constexpr void add(Member Owner::* /*member*/) {
    constexpr std::size_t width = sizeof(std::remove_all_extents_t<Member>);
    for (std::size_t element = 0; element < sizeof(Member) / width; ++element) {
      all[count++] = {end, width};
      end += width;
    }
  }

  template <typename List>
  constexpr void addEach(const List& list) {
    std::apply([this](auto... member) { (this->add(member), ...); }, list);
  }
};

constexpr DipoleColumns columnsOfDipole() {
  DipoleColumns columns;
  columns.addEach(ofDipole);
  columns.addEach(ofSphere);
  columns.addEach(ofSphere);
  columns.all[columns.count++] = {columns.end, 1};  // what is unknown
  return columns;
}

}  // namespace members

inline constexpr members::DipoleColumns dipoleColumns = members::columnsOfDipole();

// What windows note in a dipole for themselves, at the front of its image: the row of the manager's list and
// the selection in it.
inline constexpr std::size_t windowBytes = sizeof(CDipoles::m_listItemId) + sizeof(CDipoles::m_selected);
// Likewise, at the front of the image of the set-wide members: which dipole is the current one.
inline constexpr std::size_t currentDipoleBytes = sizeof(CDipoleFace::m_currentDipole);

struct BitReader {
  std::byte* target;

  template <typename Value>
  void operator()(const Value& value) {
    std::memcpy(target, &value, sizeof value);
    target += sizeof value;
  }
};

struct BitWriter {
  const std::byte* source;

  template <typename Value>
  void operator()(Value& value) {
    std::memcpy(&value, source, sizeof value);
    source += sizeof value;
  }
};

// By code units, a 0 among them counts too.
inline bool isSameText(const CString& a, const CString& b) {
  return a.GetLength() == b.GetLength() &&
         std::memcmp(a.GetString(), b.GetString(), static_cast<std::size_t>(a.GetLength()) * sizeof(TCHAR)) ==
             0;
}

template <std::size_t count>
bool areSameTexts(const std::array<CString, count>& a, const std::array<CString, count>& b) {
  for (std::size_t i = 0; i < count; ++i) {
    if (!isSameText(a[i], b[i])) {
      return false;
    }
  }
  return true;
}

inline std::uint8_t unknownOf(const DipoleImage& image) {
  return std::to_integer<std::uint8_t>(image.numbers[memberBytes]);
}

inline void readDipole(const CDipoleszq& dipole, std::uint8_t unknown, DipoleImage& image) {
  image.numbers[memberBytes] = std::byte{unknown};
  BitReader reader{image.numbers.data()};
  visitDipoleNumbers(dipole, reader);
  visitDipoleTexts(dipole, [text = image.texts.begin()](const CString& member) mutable { *text++ = member; });
}

}  // namespace host
