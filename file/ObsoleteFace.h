// The set-wide members that the headerless set files of 2001 carry in front of the dipoles.
//
// They are read apart from the collection: a file of too many dipoles must not change it.
#pragma once

#include "collection/DipoleFace.h"

struct ObsoleteFace {
  explicit ObsoleteFace(const CDipoleFace& face);

  // Write or read the fields of a version, up to and including the count of dipoles.
  void transfer20011118(CArchive& archive);
  void transfer20010901(CArchive& archive);
  void transfer20010101(CArchive& archive);

  // Gives the collection every member but the current dipole and the count. Texts are moved, not copied: it
  // must not run out of memory with half of them given.
  void moveTo(CDipoleFace& face) noexcept;

  int showCurrentDipoleOnly;
  double rotation[3];  // degrees
  CString fileVersion;
  CString mriFile;
  CString patient;
  int megOnly;
  int coordinateType;
  int showFiducialPt;
  CFiducialzq fiducialMri;
  CFiducialzq fiducialCtf;
  int ctfSphereSet;
  int showOrientationAll;
  int showArray;
  double faceValue;
  double space[3];  // mm
  double range[3];  // mm
  CSpherezq sphereLocational;
  CSpherezq sphereCtf;
  int dimension[3];   // in the collection's order
  int currentDipole;  // among the dipoles that slots hold: the formats know no empty slots
  int totalDipoles;   // likewise

 private:
  void awaitSpheres(bool isLoading);
  template <typename Transfer>
  void transferView(Transfer transfer);
  template <typename Transfer>
  void transferCounts(Transfer transfer);
};
