// The set file; the text export and the dispatch stand in DipoleExport.cpp.
#include "file/DipoleFace9File.h"

#include <algorithm>
#include <utility>

#include "file/ObsoleteFace.h"
#include "record/ArchiveTransfer.h"

namespace {

constexpr int version20010901 = 20010901;
constexpr int version20011118 = 20011118;
constexpr int version20050629 = 20050629;

// The fewest bytes that an entry of a set takes in a file: a presence flag, or a record of 2001-01-01 with an
// empty label.
constexpr int leastFlagged = 4;
constexpr int leastRecord = 157;

// Whether the table and the rest of the file have room for a count of entries.
bool isPossible(CArchive& archive, int count, int leastEntry) {
  archive.Flush();  // a loading archive: its file then stands behind what was read
  const CFile* file = archive.GetFile();
  const ULONGLONG rest = file->GetLength() - (std::min)(file->GetLength(), file->GetPosition());
  return count >= 0 && count <= DipoleTable::capacity &&
         static_cast<ULONGLONG>(count) * static_cast<ULONGLONG>(leastEntry) <= rest;
}

}  // namespace

CDipoleFace9File::CDipoleFace9File() = default;
CDipoleFace9File::CDipoleFace9File(const CDipoleFace9File&) = default;
CDipoleFace9File& CDipoleFace9File::operator=(const CDipoleFace9File&) = default;
CDipoleFace9File::~CDipoleFace9File() = default;

int CDipoleFace9File::serializeDipolesFace(CArchive& archive) {
  const CString magic = _T("DIPOLESFACEZQ");
  if (archive.IsStoring()) {
    archive << magic << version20050629;
    if (serialize20050629(archive) != whole) {
      return 0;
    }
    archive.Flush();
    return 1;
  }
  if (!startsWith(archive, magic)) {
    return 0;
  }
  int version = 0;
  archive >> version;
  const Outcome outcome = version == version20050629 ? serialize20050629(archive) : rejected;
  if (outcome == rejected) {
    AfxMessageBox(_T("Wrong file format!"));
  }
  return outcome == whole || outcome == cutShort ? 1 : 0;
}

CDipoleFace9File::Outcome CDipoleFace9File::serialize20050629(CArchive& archive) {
  const Outcome outcome = _00serializeDipoles(archive);
  return outcome == whole ? _01serializeDipoleFace(archive) : outcome;
}

CDipoleFace9File::Outcome CDipoleFace9File::_00serializeDipoles(CArchive& archive) {
  return archive.IsStoring() ? storeFlaggedDipoles(archive) : loadFlaggedDipoles(archive);
}

CDipoleFace9File::Outcome CDipoleFace9File::storeFlaggedDipoles(CArchive& archive) {
  archive << m_currentDipole << m_totalDipoles;
  for (int slot = 0; slot < m_totalDipoles; ++slot) {
    CDipoleszq* dipole = m_dipoles[slot];
    archive << (dipole != nullptr ? 1 : 0);
    if (dipole != nullptr && dipole->serializeObsolete20050629(archive) == 0) {
      return faulty;
    }
  }
  return whole;
}

CDipoleFace9File::Outcome CDipoleFace9File::loadFlaggedDipoles(CArchive& archive) {
  int current = 0;
  int count = 0;
  archive >> current >> count;
  if (!isPossible(archive, count, leastFlagged)) {
    return rejected;
  }
  cleanDipoles();
  forgetSource();
  while (m_totalDipoles < count) {
    int isPresent = 0;
    archive >> isPresent;
    const Outcome outcome = isPresent != 0 ? loadDipole(archive) : whole;
    if (outcome != whole) {
      return outcome;
    }
    countLoaded(current);
  }
  m_currentDipole = current;
  return whole;
}

// The members that tell whose dipoles these are, and in which unit, stand behind the dipoles: should a file
// break off before them, those of another patient must not stay.
void CDipoleFace9File::forgetSource() {
  m_fileVersion = m_patient = m_mriFile = _T("non");
  m_megOnly = m_coordinateType = m_momentInNAm = 0;
}

// One by one: a file that breaks off leaves what was read whole, and no current dipole beyond it.
void CDipoleFace9File::countLoaded(int current) {
  ++m_totalDipoles;
  m_currentDipole = (std::min)(current, m_totalDipoles - 1);
}

// Reads a record into slot m_totalDipoles: over the dipole there, else into a new one.
CDipoleFace9File::Outcome CDipoleFace9File::loadDipole(CArchive& archive) {
  if (CDipoleszq* present = m_dipoles[m_totalDipoles]) {
    return present->serializeObsolete20050629(archive) != 0 ? whole : faulty;
  }
  std::unique_ptr<CDipoleszq> dipole = makeDipole();
  if (!dipole) {
    AfxMessageBox(_T("Not enough memory"));
    return cutShort;
  }
  if (dipole->serializeObsolete20050629(archive) == 0) {
    return faulty;
  }
  m_dipoles.store(m_totalDipoles, std::move(dipole));
  return whole;
}

CDipoleFace9File::Outcome CDipoleFace9File::_01serializeDipoleFace(CArchive& archive) {
  const ArchiveTransfer transfer(archive);
  transfer(m_faceValue, m_showDipoleOrientationAll, m_allDipoleRange, m_bCtfSphereSet);
  transfer(m_fileVersion, m_patient, m_mriFile, m_megOnly, m_coordinateType, m_momentInNAm);
  transfer(m_skipFiducialSetup, m_showCurrentDipoleOnly, m_mergeRadius, m_showFiducialPt, m_showDipoleArray);
  transfer(m_dimension, m_space);
  return whole;
}

int CDipoleFace9File::serializeObsolete20050630(CArchive& archive) {
  if (archive.IsStoring()) {
    archive << version20011118;
    serialize2001_11_18(archive);
    return 1;
  }
  int version = 0;
  archive >> version;
  Outcome outcome = rejected;
  if (version == 0 || version == 1) {
    outcome = Serialize20010101(archive);
  } else if (version == version20010901) {
    outcome = Serialize20010901(archive);
  } else if (version == version20011118) {
    outcome = serialize2001_11_18(archive);
  }
  if (outcome == rejected) {
    AfxMessageBox(_T("Dipole file format error"));
  }
  return 1;  // in every case, on purpose, unlike serializeDipolesFace
}

CDipoleFace9File::Outcome CDipoleFace9File::serialize2001_11_18(CArchive& archive) {
  ObsoleteFace face(*this);
  face.transfer20011118(archive);
  const Outcome outcome = archive.IsStoring() ? storeOldDipoles(archive) : loadOldDipoles(archive, face);
  return outcome == whole ? serializeSpheres(archive) : outcome;
}

CDipoleFace9File::Outcome CDipoleFace9File::Serialize20010901(CArchive& archive) {
  if (archive.IsStoring()) {
    return whole;
  }
  ObsoleteFace face(*this);
  face.transfer20010901(archive);
  const Outcome outcome = loadOldDipoles(archive, face);
  return outcome == whole ? serializeSpheres(archive) : outcome;
}

CDipoleFace9File::Outcome CDipoleFace9File::Serialize20010101(CArchive& archive) {
  if (archive.IsStoring()) {
    return whole;
  }
  ObsoleteFace face(*this);
  face.transfer20010101(archive);
  return loadOldDipoles(archive, face);
}

// These formats know no empty slots: they are left out, and the count that was written knows it.
CDipoleFace9File::Outcome CDipoleFace9File::storeOldDipoles(CArchive& archive) {
  for (int slot = 0; slot < m_totalDipoles; ++slot) {
    if (m_dipoles[slot] != nullptr && m_dipoles[slot]->serializeObsolete20050629(archive) == 0) {
      return faulty;
    }
  }
  return whole;
}

CDipoleFace9File::Outcome CDipoleFace9File::loadOldDipoles(CArchive& archive, ObsoleteFace& face) {
  if (!isPossible(archive, face.totalDipoles, leastRecord)) {
    return rejected;
  }
  face.moveTo(*this);
  m_totalDipoles = 0;
  m_currentDipole = -1;
  while (m_totalDipoles < face.totalDipoles) {
    const Outcome outcome = loadDipole(archive);
    if (outcome != whole) {
      return outcome;
    }
    countLoaded(face.currentDipole);
  }
  m_currentDipole = face.currentDipole;
  return whole;
}

// The two head spheres, and a third one that belongs to no member: written fresh, read and dropped.
CDipoleFace9File::Outcome CDipoleFace9File::serializeSpheres(CArchive& archive) {
  m_sphereLocational.serialize(archive);
  m_sphereCtf.serialize(archive);
  CSpherezq().serialize(archive);
  return whole;
}
