#include "file/ObsoleteFace.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "headmodel/ArchiveTransfer.h"

namespace {

template <typename Value, int count>
void copy(const Value (&from)[count], Value (&to)[count]) {
  std::copy(std::begin(from), std::end(from), to);
}

// How many of the slots in front of one hold a dipole.
int dipolesBefore(const CDipoleFace& face, int end) {
  int count = 0;
  for (int slot = 0; slot < end; ++slot) {
    count += face.m_dipoles[slot] != nullptr ? 1 : 0;
  }
  return count;
}

// The place of the current dipole among those that are written; an index that names no slot as it is.
int currentAmongWritten(const CDipoleFace& face) {
  const int current = face.m_currentDipole;
  if (current < 0 || current >= face.m_totalDipoles) {
    return current;
  }
  return face.m_dipoles[current] != nullptr ? dipolesBefore(face, current) : -1;
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
      currentDipole(currentAmongWritten(face)),
      totalDipoles(dipolesBefore(face, face.m_totalDipoles)) {
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
