#include "import/DipoleFace8Import02_4DMSI.h"

#include <initializer_list>
#include <utility>

#include "headmodel/Triple.h"
#include "import/ImportFile.h"
#include "import/ImportGuard.h"
#include "import/KeyedValue.h"
#include "import/MsiRow.h"

namespace {

constexpr double fixedSphereRadius = 70.0;  // mm

bool isBlank(const AnsiLine& line) {
  return line.isNamed("") || line.isNamed(" ");
}

// Lines of a legend of glyph shapes.
bool isLegend(const AnsiLine& line) {
  for (const char* word : {"Code", "Circle", "Square", "Triangle", "Dot", "Shape"}) {
    if (line.contains(word)) {
      return true;
    }
  }
  return false;
}

}  // namespace

CDipoleFace8Import02_4DMSI::CDipoleFace8Import02_4DMSI() = default;
CDipoleFace8Import02_4DMSI::CDipoleFace8Import02_4DMSI(const CDipoleFace8Import02_4DMSI&) = default;
CDipoleFace8Import02_4DMSI& CDipoleFace8Import02_4DMSI::operator=(const CDipoleFace8Import02_4DMSI&) =
    default;
CDipoleFace8Import02_4DMSI::~CDipoleFace8Import02_4DMSI() = default;

int CDipoleFace8Import02_4DMSI::import4DMSIDipolesX(CString& path, bool offerWholeFolder) {
  int result = 1;
  guardImport([&] {
    const std::vector<CString> paths = findImportFiles(path, offerWholeFolder);
    if (paths.empty()) {
      result = 0;
      return;
    }
    for (const CString& file : paths) {
      parse4DDipoles(file);
    }
    setTriple(m_sphereLocational.m_center, {0.0, 0.0, 0.0});
    m_sphereLocational.m_radius = fixedSphereRadius;
    m_sphereCtf.m_radius = fixedSphereRadius;
    finishImport();
  });
  return result;
}

int CDipoleFace8Import02_4DMSI::parse4DDipoles(CString path) {
  CFile file;
  // Goes on without the file on purpose: reading it raises the exception that ends the whole import.
  openForImport(file, path);
  readLines(file, [this](AnsiLineReader& reader) { read4DMSIZones(reader); });
  return 1;
}

void CDipoleFace8Import02_4DMSI::read4DMSIZones(AnsiLineReader& reader) {
  AnsiLine line;
  while (reader.next(line)) {
    if (isBlank(line) || isLegend(line)) {
      continue;
    }
    if (line.contains("Disk Media:")) {
      if (read4DMSIFileInfo(reader) == 0) {
        return;
      }
    } else if (line.contains("Latency")) {
      read4DMSIDipoles(reader);
      return;
    }
  }
}

int CDipoleFace8Import02_4DMSI::read4DMSIFileInfo(AnsiLineReader& reader) {
  AnsiLine line;
  while (reader.next(line)) {
    if (line.contains("Date of File:")) {
      return 1;
    }
    CString text = line.text();
    const bool namesPatient = takeValue(text, _T("MRI/CT Patient:"), m_patient);
    const bool namesFile = takeValue(text, _T("Dipole File:"), m_fileVersion);
    if (!namesPatient && !namesFile) {
      return 1;
    }
  }
  return 0;
}

int CDipoleFace8Import02_4DMSI::read4DMSIDipoles(AnsiLineReader& reader) {
  m_coordinateType = 3;
  m_momentInNAm = 1;
  MsiDipoleRow row;
  AnsiLine line;
  while (reader.next(line)) {
    if (!isBlank(line) && row.scan(line) && !appendMsiDipole(row)) {
      return m_totalDipoles;
    }
  }
  return 0;
}

// Appends the dipole of a row, unless the user refuses it. False, after a message, ends the table.
bool CDipoleFace8Import02_4DMSI::appendMsiDipole(const MsiDipoleRow& row) {
  if (m_totalDipoles >= DipoleTable::capacity) {
    AfxMessageBox(_T("No dipole space"));
    return false;
  }
  // The question is about the values as written, in cm, on purpose.
  if (isLocationRefused(row.location)) {
    return true;
  }
  std::unique_ptr<CDipoleszq> dipole = makeDipole();
  if (!dipole) {
    AfxThrowMemoryException();  // ends the whole import silently, unlike a CTF import
  }
  float location[3];
  float orientation[3];
  for (int axis = 0; axis < 3; ++axis) {
    location[axis] = row.location[axis] * 10.0F;  // cm to mm
    orientation[axis] = row.orientation[axis] / 10.0F;
  }
  setFromFileAxes(dipole->m_location, location);
  setFromFileAxes(dipole->m_orientation, orientation);
  dipole->m_latency = static_cast<double>(row.latency);
  dipole->m_moment = static_cast<double>(row.moment);
  dipole->m_importTag1 = row.importTag1;
  dipole->m_fitError = static_cast<double>(100.0F - row.goodness * 100.0F);
  dipole->m_importTag2 = row.importTag2;
  dipole->m_label = row.label;
  dipole->m_number = m_totalDipoles + 1;
  appendDipole(std::move(dipole));
  return true;
}
