// The set file; the text export and the dispatch stand in DipoleExport.cpp.
#include "file/DipoleFace9File.h"

#include <algorithm>
#include <utility>

#include "file/ObsoleteFace.h"
#include "headmodel/ArchiveTransfer.h"

namespace {

constexpr int version20010901 = 20010901;
constexpr int version20011118 = 20011118;
constexpr int version20050629 = 20050629;

// What ends a transfer early. Thrown below the version functions, which know but one result, and caught by
// the two entry points.
enum class Ending {
  refused,      // nothing has changed, and nothing was said
  outOfMemory,  // said; what follows in the archive is left alone, it would be read from the wrong place
  fileFault     // said
};

void refuseMoreThanTheTableHolds(int count) {
  if (count > DipoleTable::capacity) {
    throw Ending::refused;
  }
}

void transferRecord(CDipoleszq& dipole, CArchive& archive) {
  if (dipole.serializeObsolete20050629(archive) == 0) {
    throw Ending::fileFault;
  }
}

}  // namespace

CDipoleFace9File::CDipoleFace9File() = default;
CDipoleFace9File::CDipoleFace9File(const CDipoleFace9File&) = default;
CDipoleFace9File& CDipoleFace9File::operator=(const CDipoleFace9File&) = default;
CDipoleFace9File::~CDipoleFace9File() = default;

int CDipoleFace9File::serializeDipolesFace(CArchive& archive) {
  const CString magic = _T("DIPOLESFACEZQ");
  try {
    if (archive.IsStoring()) {
      archive << magic << version20050629;
      serialize20050629(archive);
      archive.Flush();
      return 1;
    }
    if (!startsWith(archive, magic)) {
      return 0;
    }
    int version = 0;
    archive >> version;
    if (version != version20050629) {
      throw Ending::refused;
    }
    return serialize20050629(archive);
  } catch (const Ending ending) {
    if (ending == Ending::refused) {
      AfxMessageBox(_T("Wrong file format!"));
    }
    return ending == Ending::outOfMemory ? 1 : 0;
  }
}

int CDipoleFace9File::serialize20050629(CArchive& archive) {
  _00serializeDipoles(archive);
  return _01serializeDipoleFace(archive);
}

int CDipoleFace9File::_00serializeDipoles(CArchive& archive) {
  if (archive.IsStoring()) {
    storeFlaggedDipoles(archive);
  } else {
    loadFlaggedDipoles(archive);
  }
  return 1;
}

void CDipoleFace9File::storeFlaggedDipoles(CArchive& archive) {
  archive << m_currentDipole << m_totalDipoles;
  for (int slot = 0; slot < m_totalDipoles; ++slot) {
    CDipoleszq* dipole = m_dipoles[slot];
    archive << (dipole != nullptr ? 1 : 0);
    if (dipole != nullptr) {
      transferRecord(*dipole, archive);
    }
  }
}

void CDipoleFace9File::loadFlaggedDipoles(CArchive& archive) {
  int current = 0;
  int count = 0;
  archive >> current >> count;
  refuseMoreThanTheTableHolds(count);
  cleanDipoles();
  forgetSource();
  while (m_totalDipoles < count) {
    int isPresent = 0;
    archive >> isPresent;
    if (isPresent != 0) {
      loadDipole(archive);
    }
    countLoaded(current);
  }
  m_currentDipole = current;
}

// The members that tell whose dipoles these are, and in which unit, stand behind the dipoles: should a file
// break off before them, those of another patient must not stay.
void CDipoleFace9File::forgetSource() {
  m_fileVersion = m_patient = m_mriFile = _T("non");
  m_megOnly = m_coordinateType = m_momentInNAm = 0;
}

// One by one: a file that breaks off, or holds fewer than its count says, leaves what was read whole, and no
// current dipole beyond it.
void CDipoleFace9File::countLoaded(int current) {
  ++m_totalDipoles;
  m_currentDipole = (std::min)(current, m_totalDipoles - 1);
}

// Reads a record into slot m_totalDipoles: over the dipole there, else into a new one.
void CDipoleFace9File::loadDipole(CArchive& archive) {
  if (CDipoleszq* present = m_dipoles[m_totalDipoles]) {
    transferRecord(*present, archive);
    return;
  }
  std::unique_ptr<CDipoleszq> dipole = makeDipole();
  if (!dipole) {
    AfxMessageBox(_T("Not enough memory"));
    throw Ending::outOfMemory;
  }
  transferRecord(*dipole, archive);
  m_dipoles.store(m_totalDipoles, std::move(dipole));
}

int CDipoleFace9File::_01serializeDipoleFace(CArchive& archive) {
  const ArchiveTransfer transfer(archive);
  transfer(m_faceValue, m_showDipoleOrientationAll, m_allDipoleRange, m_bCtfSphereSet);
  transfer(m_fileVersion, m_patient, m_mriFile, m_megOnly, m_coordinateType, m_momentInNAm);
  transfer(m_skipFiducialSetup, m_showCurrentDipoleOnly, m_mergeRadius, m_showFiducialPt, m_showDipoleArray);
  transfer(m_dimension, m_space);
  return 1;
}

int CDipoleFace9File::serializeObsolete20050630(CArchive& archive) {
  try {
    if (archive.IsStoring()) {
      archive << version20011118;
      return serialize2001_11_18(archive);
    }
    int version = 0;
    archive >> version;
    switch (version) {
      case 0:
      case 1:
        return Serialize20010101(archive);
      case version20010901:
        return Serialize20010901(archive);
      case version20011118:
        return serialize2001_11_18(archive);
      default:
        throw Ending::refused;
    }
  } catch (const Ending ending) {
    if (ending == Ending::refused) {
      AfxMessageBox(_T("Dipole file format error"));
    }
  }
  return 1;  // in every case, on purpose, unlike serializeDipolesFace
}

int CDipoleFace9File::serialize2001_11_18(CArchive& archive) {
  ObsoleteFace face(*this);
  face.transfer20011118(archive);
  if (archive.IsStoring()) {
    storeOldDipoles(archive);
  } else {
    loadOldDipoles(archive, face);
  }
  serializeSpheres(archive);
  return 1;
}

int CDipoleFace9File::Serialize20010901(CArchive& archive) {
  if (!archive.IsStoring()) {
    ObsoleteFace face(*this);
    face.transfer20010901(archive);
    loadOldDipoles(archive, face);
    serializeSpheres(archive);
  }
  return 1;
}

int CDipoleFace9File::Serialize20010101(CArchive& archive) {
  if (!archive.IsStoring()) {
    ObsoleteFace face(*this);
    face.transfer20010101(archive);
    loadOldDipoles(archive, face);
  }
  return 1;
}

// These formats know no empty slots: they are left out, and the count that was written knows it.
void CDipoleFace9File::storeOldDipoles(CArchive& archive) {
  for (int slot = 0; slot < m_totalDipoles; ++slot) {
    if (m_dipoles[slot] != nullptr) {
      transferRecord(*m_dipoles[slot], archive);
    }
  }
}

void CDipoleFace9File::loadOldDipoles(CArchive& archive, ObsoleteFace& face) {
  refuseMoreThanTheTableHolds(face.totalDipoles);
  face.moveTo(*this);
  m_totalDipoles = 0;
  m_currentDipole = -1;
  while (m_totalDipoles < face.totalDipoles) {
    loadDipole(archive);
    countLoaded(face.currentDipole);
  }
  m_currentDipole = face.currentDipole;
}

// The two head spheres, and a third one that belongs to no member: written fresh, read and dropped.
void CDipoleFace9File::serializeSpheres(CArchive& archive) {
  m_sphereLocational.serialize(archive);
  m_sphereCtf.serialize(archive);
  CSpherezq().serialize(archive);
}
