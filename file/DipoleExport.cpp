// The text export of CDipoleFace9File, and its choice of an importer.
#include <charconv>

#include "collection/WithinMemory.h"
#include "file/DipoleFace9File.h"
#include "import/ChosenFiles.h"

namespace {

constexpr DWORD pathCapacity = 32768;  // characters with the closing 0: the longest path of the system
constexpr LPCTSTR couldNotBeOpened = _T("File could not be opened ");

// A number with two decimals and a point, whatever the process' locale: spreadsheets read these files.
CString twoDecimals(double value) {
  char digits[400];  // the largest double has 309 digits in front of the point
  const std::to_chars_result end =
      std::to_chars(digits, digits + sizeof digits, value, std::chars_format::fixed, 2);
  return CString(digits, static_cast<int>(end.ptr - digits));
}

CString exportLine(const CDipoleszq& dipole) {
  CString id;
  id.Format(_T("%d"), dipole.m_id);
  CString line = id + _T("  ") + twoDecimals(dipole.m_latency) + _T("  ");
  for (const double coordinate : dipole.m_location) {
    line += _T(" ") + twoDecimals(coordinate);
  }
  line += _T("  ");
  for (const double component : dipole.m_orientation) {
    line += _T(" ") + twoDecimals(component);
  }
  line += _T("   ") + twoDecimals(dipole.m_fitError) + _T("  ") + twoDecimals(dipole.m_moment);
  line += _T("  ");
  line += dipole.m_label.GetString();  // up to a zero, which would end the line for the archive
  line += _T(" \n");
  return line;
}

// The chosen name, empty when the dialog was cancelled or, after a message, when it gave none.
CString chooseExportFile() {
  CFileDialog dialog(FALSE, nullptr, nullptr, OFN_OVERWRITEPROMPT,
                     _T("Text file(*.txt)|*.txt|All Files(*.*)|*.*||"));
  const ChosenFiles chosen = letChoose(dialog, pathCapacity);
  if (chosen.isLost) {
    AfxMessageBox(couldNotBeOpened);
  }
  if (chosen.paths.empty()) {
    return CString();
  }
  CString path = chosen.paths.front();
  if (path.Find(_T(".txt")) < 0) {  // anywhere, and with this case: on purpose
    path += _T(".txt");
  }
  return path;
}

void writeTable(const CDipoleFace& face, CArchive& archive) {
  archive.WriteString(_T("The following data were exported from Veyrant for Microsoft Excel\n"));
  archive.WriteString(
      _T("ID\t Latency\t Xp  Yp  Zp\t\tXo  Yo  Zo\t\tFitError  Moment  Lable \n"));  // spelled on purpose
  for (int slot = 0; slot < face.m_totalDipoles; ++slot) {
    if (face.m_dipoles[slot] != nullptr) {
      archive.WriteString(exportLine(*face.m_dipoles[slot]));
    }
  }
}

bool exportToChosenFile(CDipoleFace9File& face) {
  const CString path = chooseExportFile();
  if (path.IsEmpty()) {
    return false;
  }
  try {
    face.exportExelFileX(path);
    return true;
  } catch (CFileException* exception) {
    exception->Delete();
    AfxMessageBox(couldNotBeOpened);
  }
  return false;
}

}  // namespace

int CDipoleFace9File::exportExelFile() {
  bool exported = false;
  if (!isWithinMemory([&] { exported = exportToChosenFile(*this); })) {
    AfxMessageBox(_T("Not enough memory"));
  }
  return exported ? 1 : 0;
}

int CDipoleFace9File::exportExelFileX(const CString& path) {
  CFile file(path, CFile::modeCreate | CFile::modeWrite);
  CArchive archive(&file, CArchive::store, 4096);
  try {
    writeTable(*this, archive);
    archive.Close();
  } catch (...) {
    archive.Abort();
    throw;
  }
  file.Close();
  return 1;
}

int CDipoleFace9File::importDipoleX(CString& path, bool offerWholeFolder) {
  const int ending = path.GetLength() - 4;
  if (ending < 0) {
    return 0;
  }
  const auto endsWith = [&](LPCTSTR words) { return path.Find(words, ending) >= 0; };
  if (endsWith(_T(".dip")) || endsWith(_T(".DIP"))) {
    return importCTFDipolesX(path, offerWholeFolder);
  }
  if (endsWith(_T(".txt")) || endsWith(_T(".TXT"))) {
    return import4DMSIDipolesX(path, offerWholeFolder);
  }
  return 0;
}
