// The section readers of CDipoleFace8Import01_CTF.
#include <afxwin.h>

#include <algorithm>
#include <cmath>
#include <utility>

#include "headmodel/Triple.h"
#include "import/AnsiLineReader.h"
#include "import/CtfRows.h"
#include "import/DipoleFace8Import01_CTF.h"
#include "import/KeyedValue.h"
#include "import/RowScanner.h"

namespace {

constexpr float millimetresPerCentimetre = 10.0F;
constexpr float millisecondsPerSecond = 1000.0F;

// Hands each line of a section's body to `work`. Returns 1 at the "}", or 0 at the end of the file.
template <typename Work>
int readBody(AnsiLineReader& reader, Work work) {
  AnsiLine line;
  while (reader.next(line)) {
    if (line.isPassedOver()) {
      continue;
    }
    if (line.isEnd()) {
      return 1;
    }
    work(line);
  }
  return 0;
}

}  // namespace

// What the headings of a section of dipoles have told about its columns.
struct CDipoleFace8Import01_CTF::CtfUnits {
  bool isCentimetre = false;
  bool isSecond = false;

  void toMillimetres(const float (&location)[3], float (&millimetres)[3]) const {
    for (int axis = 0; axis < 3; ++axis) {
      millimetres[axis] = isCentimetre ? location[axis] * millimetresPerCentimetre : location[axis];
    }
  }
};

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
  return readBody(reader, [this](const AnsiLine& line) {
    CString text = line.text();
    takeValue(text, _T("VERSION:"), m_fileVersion);
    takeValue(text, _T("PATIENT:"), m_patient);
  });
}

int CDipoleFace8Import01_CTF::readCtfModelInfo(AnsiLineReader& reader) {
  return readBody(reader, [this](const AnsiLine& line) {
    if (line.contains("MODEL_TYPE:") && line.contains("MEG_ONLY")) {
      m_megOnly = 1;
    }
    CString text = line.text();
    takeValue(text, _T("MRI_FILE:"), m_mriFile);
  });
}

int CDipoleFace8Import01_CTF::readCtfMEGsphere(AnsiLineReader& reader) {
  float origin[3] = {};
  float radius = 0.0F;
  const std::pair<const char*, float*> keys[] = {
      {"ORIGIN_X:", &origin[0]}, {"ORIGIN_Y:", &origin[1]}, {"ORIGIN_Z:", &origin[2]}, {"RADIUS:", &radius}};
  int values = 0;
  readBody(reader, [&](const AnsiLine& line) {
    for (const auto& [key, value] : keys) {
      if (line.contains(key)) {
        // Scaled and counted even when no number was found, on purpose.
        RowScanner(line).skipWord().blanks().real(*value);
        *value *= millimetresPerCentimetre;
        ++values;
        break;
      }
    }
  });
  if (values < 4) {
    AfxMessageBox(_T("MEG Sphere reading error: not enough points"));
  }
  double centre[3];
  setFromFileAxes(centre, origin);
  acceptCtfSphere(centre, static_cast<double>(radius));
  return 1;
}

// The first sphere stays for the collection's life; later ones are only compared with it.
void CDipoleFace8Import01_CTF::acceptCtfSphere(const double (&centre)[3], double radius) {
  if (m_bCtfSphereSet == 0) {
    setTriple(m_sphereCtf.m_center, {centre[0], centre[1], centre[2]});
    m_sphereCtf.m_radius = radius;
    m_sphereLocational = m_sphereCtf;
    m_bCtfSphereSet = 1;
    return;
  }
  // The radius may differ by twice what the message says, on purpose.
  bool differs = std::fabs(radius - m_sphereCtf.m_radius) > 6.0;
  for (int axis = 0; axis < 3; ++axis) {
    differs = differs || std::fabs(centre[axis] - m_sphereCtf.m_center[axis]) > 3.0;
  }
  if (differs) {
    AfxMessageBox(_T("The different between new and old sphere model > 3 mm"));
  }
}

// Hands each row of a section of dipoles to `append` until that gives false. False: the end of the file.
template <typename Row, typename Append>
bool CDipoleFace8Import01_CTF::readCtfRows(AnsiLineReader& reader, CtfUnits& units, Append append) {
  Row row;
  AnsiLine line;
  while (reader.next(line)) {
    if (line.isUnitHeader()) {
      units.isCentimetre = true;
      units.isSecond = units.isSecond || line.contains("(s)");
      m_coordinateType = 3;
      m_momentInNAm = line.contains("(nAm)") ? 1 : m_momentInNAm;
    } else if (!line.isPassedOver() && (line.isEnd() || (row.scan(line) && !append(row)))) {
      return true;
    }
  }
  return false;
}

int CDipoleFace8Import01_CTF::readCtfDipoles(AnsiLineReader& reader) {
  CtfUnits units;
  const auto append = [&](const CtfDipoleRow& row) { return appendCtfDipole(row, units); };
  if (!readCtfRows<CtfDipoleRow>(reader, units, append)) {
    return 0;
  }
  if (!units.isCentimetre) {
    AfxMessageBox(_T("Can't find dipole location unit is cm or mm!"));
  }
  return m_totalDipoles;
}

// Appends the dipole of a row, unless the user refuses it. False, after a message, ends the section.
bool CDipoleFace8Import01_CTF::appendCtfDipole(const CtfDipoleRow& row, const CtfUnits& units) {
  if (m_totalDipoles >= DipoleTable::capacity) {
    AfxMessageBox(_T("No dipole space"));
    return false;
  }
  float location[3];
  units.toMillimetres(row.location, location);
  if (isLocationRefused(location)) {
    return true;
  }
  std::unique_ptr<CDipoleszq> dipole = makeDipole();
  if (!dipole) {
    AfxMessageBox(_T("Not enough memory"));
    return false;
  }
  setFromFileAxes(dipole->m_location, location);
  setFromFileAxes(dipole->m_orientation, row.orientation);
  dipole->m_moment = static_cast<double>(row.moment);
  dipole->m_label = row.label;
  dipole->m_number = m_totalDipoles + 1;
  appendDipole(std::move(dipole));
  return true;
}

int CDipoleFace8Import01_CTF::readCtfMovingDipoles(AnsiLineReader& reader) {
  CtfUnits units;
  const auto append = [&](const CtfMovingDipoleRow& row) { return appendCtfMovingDipole(row, units); };
  if (!readCtfRows<CtfMovingDipoleRow>(reader, units, append)) {
    return 0;
  }
  if (!units.isCentimetre) {
    AfxMessageBox(_T("Can't find dipole location unit is cm or mm!"));
  }
  if (!units.isSecond) {
    AfxMessageBox(_T("Can't find latency unit is second or millisecond!"));
  }
  return m_totalDipoles;
}

// Stores the dipole of a row in slot m_totalDipoles. False, after a message, ends the section.
bool CDipoleFace8Import01_CTF::appendCtfMovingDipole(const CtfMovingDipoleRow& row, const CtfUnits& units) {
  bool wasEmpty = false;
  if (!fillCtfSlot(m_totalDipoles, wasEmpty)) {
    return false;
  }
  // An object that was there is reused as it is: what the row does not name stays.
  CDipoleszq& dipole = *m_dipoles[m_totalDipoles];
  float location[3];
  units.toMillimetres(row.location, location);
  setFromFileAxes(dipole.m_location, location);
  setFromFileAxes(dipole.m_orientation, row.orientation);
  dipole.m_number = m_totalDipoles + 1;
  dipole.m_moment = static_cast<double>(row.moment);
  dipole.m_label = row.label;
  dipole.m_latency = static_cast<double>(units.isSecond ? row.latency * millisecondsPerSecond : row.latency);
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
  return readBody(reader, [this](const AnsiLine& line) {
    if (line.contains(":")) {
      readMriFiducial(line);
    }
  });
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
