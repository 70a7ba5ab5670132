#include "file/ObsoleteFace.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "record/ArchiveTransfer.h"

namespace {

template <typename Value, int count>
void copy(const Value (&from)[count], Value (&to)[count]) {
  std::copy(std::begin(from), std::end(from), to);
}

}  // namespace

ObsoleteFace::ObsoleteFace(const CDipoleFace& face)
    : showCurrentDipoleOnly(face.m_showCurrentDipoleOnly),
      fileVersion(face.m_fileVersion),
      mriFile(face.m_mriFile),
      patient(face.m_patient),
      megOnly(face.m_megOnly),
      coordinateType(face.m_coordinateType),
      showFiducialPt(face.m_showFiducialPt),
      fiducialMri(face.m_fiducialMri),
      fiducialCtf(face.m_fiducialCtf),
      ctfSphereSet(face.m_bCtfSphereSet),
      showOrientationAll(face.m_showDipoleOrientationAll),
      showArray(face.m_showDipoleArray),
      faceValue(face.m_faceValue),
      sphereLocational(face.m_sphereLocational),
      sphereCtf(face.m_sphereCtf),
      currentDipole(face.m_currentDipole),
      totalDipoles(0) {
  for (int slot = 0; slot < face.m_totalDipoles; ++slot) {
    totalDipoles += face.m_dipoles[slot] != nullptr ? 1 : 0;
  }
  copy(face.m_sphereRotation.m_center, rotation);
  copy(face.m_space, space);
  copy(face.m_allDipoleRange, range);
  copy(face.m_dimension, dimension);
}

void ObsoleteFace::moveTo(CDipoleFace& face) noexcept {
  face.m_showCurrentDipoleOnly = showCurrentDipoleOnly;
  copy(rotation, face.m_sphereRotation.m_center);
  face.m_fileVersion = std::move(fileVersion);
  face.m_mriFile = std::move(mriFile);
  face.m_patient = std::move(patient);
  face.m_megOnly = megOnly;
  face.m_coordinateType = coordinateType;
  face.m_showFiducialPt = showFiducialPt;
  face.m_fiducialMri = std::move(fiducialMri);
  face.m_fiducialCtf = std::move(fiducialCtf);
  face.m_bCtfSphereSet = ctfSphereSet;
  face.m_showDipoleOrientationAll = showOrientationAll;
  face.m_showDipoleArray = showArray;
  face.m_faceValue = faceValue;
  copy(space, face.m_space);
  copy(range, face.m_allDipoleRange);
  face.m_sphereLocational = std::move(sphereLocational);
  face.m_sphereCtf = std::move(sphereCtf);
  copy(dimension, face.m_dimension);
}

// The spheres stand behind the dipoles: should a file break off before them, those of another head must not
// stay.
void ObsoleteFace::awaitSpheres(bool isLoading) {
  if (isLoading) {
    sphereLocational = CSpherezq();
    sphereCtf = CSpherezq();
  }
}

template <typename Transfer>
void ObsoleteFace::transferView(Transfer transfer) {
  transfer(ctfSphereSet, showOrientationAll, showArray, faceValue, space, range);
}

// The elements of the dimension in the order 2, 0, 1, on purpose.
template <typename Transfer>
void ObsoleteFace::transferCounts(Transfer transfer) {
  transfer(dimension[2], dimension[0], dimension[1], currentDipole, totalDipoles);
}

void ObsoleteFace::transfer20011118(CArchive& archive) {
  const ArchiveTransfer transfer(archive);
  transfer(showCurrentDipoleOnly, rotation, fileVersion, mriFile, patient, megOnly, coordinateType,
           showFiducialPt);
  fiducialMri.serialize(archive);
  fiducialCtf.serialize(archive);
  transferView(transfer);
  transferCounts(transfer);
  awaitSpheres(!transfer.isStoring());
}

void ObsoleteFace::transfer20010901(CArchive& archive) {
  const ArchiveTransfer transfer(archive);
  transferView(transfer);
  transferCounts(transfer);
  awaitSpheres(!transfer.isStoring());
}

void ObsoleteFace::transfer20010101(CArchive& archive) {
  const ArchiveTransfer transfer(archive);
  transferView(transfer);
  transfer(sphereCtf.m_radius, sphereCtf.m_center);  // the radius first
  transferCounts(transfer);
}
