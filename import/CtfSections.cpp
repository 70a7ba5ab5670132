// The section readers of CDipoleFace8Import01_CTF.
#include <afxwin.h>

#include <algorithm>
#include <cmath>
#include <utility>

#include "import/AnsiLineReader.h"
#include "import/CtfRows.h"
#include "import/DipoleFace8Import01_CTF.h"
#include "import/KeyedValue.h"
#include "import/RowScanner.h"

namespace {

constexpr float millimetresPerCentimetre = 10.0F;
constexpr float millisecondsPerSecond = 1000.0F;

void scale(float (&values)[3], float factor) {
  for (float& value : values) {
    value *= factor;
  }
}

void assign(double (&target)[3], const float (&values)[3]) {
  for (int i = 0; i < 3; ++i) {
    target[i] = static_cast<double>(values[i]);
  }
}

}  // namespace

void CDipoleFace8Import01_CTF::readCtfSections(AnsiLineReader& reader) {
  const int firstSlot = m_totalDipoles;
  AnsiLine line;
  bool goesOn = true;
  while (goesOn && reader.next(line)) {
    if (line.isNamed("File_Info")) {
      goesOn = readCtfFileInfo(reader) != 0;
    } else if (line.isNamed("Model")) {
      goesOn = readCtfModelInfo(reader) != 0;
    } else if (line.isNamed("MEG_Sphere")) {
      readCtfMEGsphere(reader);
    } else if (line.isNamed("Dipoles")) {
      goesOn = readCtfDipoles(reader) != 0;
    } else if (line.isNamed("Fit_Results")) {
      if (AfxMessageBox(_T("This is moving dipoles, would you like to import?"), MB_YESNO) == IDYES) {
        // The moving dipoles take the places, and the objects, of the file's static ones.
        m_totalDipoles = firstSlot;
        goesOn = readCtfMovingDipoles(reader) != 0;
      }
    } else if (line.isNamed("Dipole_Flags")) {
      readCtfDipoleFlag(reader, static_cast<unsigned long>(firstSlot));
    } else if (line.isNamed("Dipole_FitInfo")) {
      readCtfDipoleFitInfo(reader, firstSlot);
    } else if (line.isNamed("Fid_Points")) {
      readCtfMriFiducialPt(reader);
    }
  }
}

int CDipoleFace8Import01_CTF::readCtfFileInfo(AnsiLineReader& reader) {
  AnsiLine line;
  while (reader.next(line)) {
    if (line.isPassedOver()) {
      continue;
    }
    if (line.isEnd()) {
      return 1;
    }
    CString text = line.text();
    takeValue(text, _T("VERSION:"), m_fileVersion);
    takeValue(text, _T("PATIENT:"), m_patient);
  }
  return 0;
}

int CDipoleFace8Import01_CTF::readCtfModelInfo(AnsiLineReader& reader) {
  AnsiLine line;
  while (reader.next(line)) {
    if (line.isPassedOver()) {
      continue;
    }
    if (line.isEnd()) {
      return 1;
    }
    if (line.contains("MODEL_TYPE:") && line.contains("MEG_ONLY")) {
      m_megOnly = 1;
    }
    CString text = line.text();
    takeValue(text, _T("MRI_FILE:"), m_mriFile);
  }
  return 0;
}

int CDipoleFace8Import01_CTF::readCtfMEGsphere(AnsiLineReader& reader) {
  float origin[3] = {};
  float radius = 0.0F;
  const std::pair<const char*, float*> keys[] = {
      {"ORIGIN_X:", &origin[0]}, {"ORIGIN_Y:", &origin[1]}, {"ORIGIN_Z:", &origin[2]}, {"RADIUS:", &radius}};
  int values = 0;
  AnsiLine line;
  while (reader.next(line)) {
    if (line.isPassedOver()) {
      continue;
    }
    if (line.isEnd()) {
      break;
    }
    for (const auto& [key, value] : keys) {
      if (line.contains(key)) {
        // Scaled and counted even when no number was found, on purpose.
        RowScanner(line).skipWord().blanks().real(*value);
        *value *= millimetresPerCentimetre;
        ++values;
        break;
      }
    }
  }
  if (values < 4) {
    AfxMessageBox(_T("MEG Sphere reading error: not enough points"));
  }
  coordinateCtf2zq(origin[0], origin[1], origin[2]);
  acceptCtfSphere(origin, radius);
  return 1;
}

// The first sphere stays for the collection's life; later ones are only compared with it.
void CDipoleFace8Import01_CTF::acceptCtfSphere(const float (&origin)[3], float radius) {
  if (m_bCtfSphereSet == 0) {
    assign(m_sphereCtf.m_center, origin);
    m_sphereCtf.m_radius = static_cast<double>(radius);
    m_sphereLocational = m_sphereCtf;
    m_bCtfSphereSet = 1;
    return;
  }
  // The radius may differ by twice what the message says, on purpose.
  bool differs = std::fabs(static_cast<double>(radius) - m_sphereCtf.m_radius) > 6.0;
  for (int axis = 0; axis < 3; ++axis) {
    differs |= std::fabs(static_cast<double>(origin[axis]) - m_sphereCtf.m_center[axis]) > 3.0;
  }
  if (differs) {
    AfxMessageBox(_T("The different between new and old sphere model > 3 mm"));
  }
}

int CDipoleFace8Import01_CTF::readCtfDipoles(AnsiLineReader& reader) {
  bool isCentimetre = false;
  CtfDipoleRow row;
  AnsiLine line;
  while (reader.next(line)) {
    if (line.isUnitHeader()) {
      isCentimetre = true;
      m_coordinateType = 3;
      m_momentInNAm = line.contains("(nAm)") ? 1 : m_momentInNAm;
      continue;
    }
    if (line.isPassedOver()) {
      continue;
    }
    if (line.isEnd() || (row.scan(line) && !appendCtfDipole(row, isCentimetre))) {
      if (!isCentimetre) {
        AfxMessageBox(_T("Can't find dipole location unit is cm or mm!"));
      }
      return m_totalDipoles;
    }
  }
  return 0;
}

// Appends the dipole of a row, unless the user refuses it. False, after a message, ends the section.
bool CDipoleFace8Import01_CTF::appendCtfDipole(const CtfDipoleRow& row, bool isCentimetre) {
  if (m_totalDipoles >= DipoleTable::capacity) {
    AfxMessageBox(_T("No dipole space"));
    return false;
  }
  float location[3] = {row.location[0], row.location[1], row.location[2]};
  float orientation[3] = {row.orientation[0], row.orientation[1], row.orientation[2]};
  if (isCentimetre) {
    scale(location, millimetresPerCentimetre);
  }
  if (isLocationRefused(location)) {
    return true;
  }
  std::unique_ptr<CDipoleszq> dipole = makeDipole();
  if (!dipole) {
    AfxMessageBox(_T("Not enough memory"));
    return false;
  }
  coordinateCtf2zq(location[0], location[1], location[2]);
  coordinateCtf2zq(orientation[0], orientation[1], orientation[2]);
  assign(dipole->m_location, location);
  assign(dipole->m_orientation, orientation);
  dipole->m_moment = static_cast<double>(row.moment);
  dipole->m_label = row.label;
  dipole->m_number = m_totalDipoles + 1;
  appendDipole(std::move(dipole));
  return true;
}

int CDipoleFace8Import01_CTF::readCtfMovingDipoles(AnsiLineReader& reader) {
  bool isCentimetre = false;
  bool isSecond = false;
  CtfMovingDipoleRow row;
  AnsiLine line;
  while (reader.next(line)) {
    if (line.isUnitHeader()) {
      isCentimetre = true;
      m_coordinateType = 3;
      m_momentInNAm = line.contains("(nAm)") ? 1 : m_momentInNAm;
      isSecond = isSecond || line.contains("(s)");
      continue;
    }
    if (line.isPassedOver()) {
      continue;
    }
    if (line.isEnd() || (row.scan(line) && !appendCtfMovingDipole(row, isCentimetre, isSecond))) {
      if (!isCentimetre) {
        AfxMessageBox(_T("Can't find dipole location unit is cm or mm!"));
      }
      if (!isSecond) {
        AfxMessageBox(_T("Can't find latency unit is second or millisecond!"));
      }
      return m_totalDipoles;
    }
  }
  return 0;
}

// Stores the dipole of a row in slot m_totalDipoles. False, after a message, ends the section.
bool CDipoleFace8Import01_CTF::appendCtfMovingDipole(const CtfMovingDipoleRow& row, bool isCentimetre,
                                                     bool isSecond) {
  bool wasEmpty = false;
  if (!fillCtfSlot(m_totalDipoles, wasEmpty)) {
    return false;
  }
  // An object that was there is reused as it is: what the row does not name stays.
  CDipoleszq& dipole = *m_dipoles[m_totalDipoles];
  float location[3] = {row.location[0], row.location[1], row.location[2]};
  float orientation[3] = {row.orientation[0], row.orientation[1], row.orientation[2]};
  if (isCentimetre) {
    scale(location, millimetresPerCentimetre);
  }
  coordinateCtf2zq(location[0], location[1], location[2]);
  coordinateCtf2zq(orientation[0], orientation[1], orientation[2]);
  assign(dipole.m_location, location);
  assign(dipole.m_orientation, orientation);
  dipole.m_number = m_totalDipoles + 1;
  dipole.m_moment = static_cast<double>(row.moment);
  dipole.m_label = row.label;
  dipole.m_latency = static_cast<double>(isSecond ? row.latency * millisecondsPerSecond : row.latency);
  dipole.m_fitTag = row.fitTag;
  dipole.m_id = row.id;
  dipole.m_fitError = static_cast<double>(row.fitError);
  m_currentDipole = m_totalDipoles;
  ++m_totalDipoles;  // when all is stored, which may run out of memory
  return true;
}

// Makes sure that a slot holds a dipole. False after "No dipole space" or "Not enough memory".
bool CDipoleFace8Import01_CTF::fillCtfSlot(int slot, bool& wasEmpty) {
  if (slot >= DipoleTable::capacity) {
    AfxMessageBox(_T("No dipole space"));
    return false;
  }
  if (m_dipoles[slot] != nullptr) {
    return true;
  }
  std::unique_ptr<CDipoleszq> dipole = makeDipole();
  if (!dipole) {
    AfxMessageBox(_T("Not enough memory"));
    return false;
  }
  m_dipoles.store(slot, std::move(dipole));
  wasEmpty = true;
  return true;
}

// Rows that add to dipoles read before: row k belongs to slot firstSlot + k.
template <typename Row>
int CDipoleFace8Import01_CTF::applyCtfRows(AnsiLineReader& reader, int firstSlot) {
  int slot = firstSlot;
  bool wasEmpty = false;
  Row row;
  AnsiLine line;
  while (reader.next(line)) {
    if (line.isPassedOver() || (!line.isEnd() && !row.scan(line))) {
      continue;
    }
    if (!line.isEnd() && fillCtfSlot(slot, wasEmpty)) {
      row.applyTo(*m_dipoles[slot]);
      ++slot;
      continue;
    }
    if (slot != m_totalDipoles || wasEmpty) {
      AfxMessageBox(_T("It seems the CTF dipole file is not correct!"));
    }
    return slot;
  }
  return 0;
}

int CDipoleFace8Import01_CTF::readCtfDipoleFlag(AnsiLineReader& reader, unsigned long firstSlot) {
  return applyCtfRows<CtfFlagRow>(reader, static_cast<int>(firstSlot));
}

int CDipoleFace8Import01_CTF::readCtfDipoleFitInfo(AnsiLineReader& reader, int firstSlot) {
  return applyCtfRows<CtfFitInfoRow>(reader, firstSlot);
}

int CDipoleFace8Import01_CTF::readCtfMriFiducialPt(AnsiLineReader& reader) {
  m_fiducialMri.resetAllFiducialPt();
  AnsiLine line;
  while (reader.next(line)) {
    if (line.isPassedOver()) {
      continue;
    }
    if (line.isEnd()) {
      return 1;
    }
    if (line.contains(":")) {
      readMriFiducial(line);
    }
  }
  return 0;
}

// One point in voxels of a 256-voxel MRI, counted from the other end and with the axes a, c, b.
void CDipoleFace8Import01_CTF::readMriFiducial(const AnsiLine& line) {
  const bool isNasion = line.contains("NASION:");
  const bool isLeftEar = !isNasion && line.contains("LEFT_EAR");
  const bool isRightEar = !isNasion && !isLeftEar && line.contains("RIGHT_EAR");
  if (!isNasion && !isLeftEar && !isRightEar) {
    return;
  }
  int voxel[3] = {};
  const char* numbers = std::find(line.begin(), line.end(), ':') + 1;
  if (RowScanner(line, numbers).integer(voxel[0]).integer(voxel[1]).integer(voxel[2]).fields() < 3) {
    AfxMessageBox(_T("MRI fiducial point reading error: three integers expected"));
    return;
  }
  const double x = 256.0 - voxel[0];
  const double y = 256.0 - voxel[2];
  const double z = 256.0 - voxel[1];
  if (isNasion) {
    m_fiducialMri.setNasionf(x, y, z);
  } else if (isLeftEar) {
    m_fiducialMri.setLeftEarf(x, y, z);
  } else {
    m_fiducialMri.setRightEarf(x, y, z);
  }
}
