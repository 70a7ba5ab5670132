#include "import/DipoleFace8Import01_CTF.h"

#include <algorithm>
#include <initializer_list>
#include <iterator>
#include <utility>
#include <vector>

#include "headmodel/Triple.h"
#include "import/ChosenFiles.h"
#include "import/ImportFile.h"
#include "import/ImportGuard.h"

namespace {

// Room for 4000 files chosen at once, in characters.
constexpr DWORD roomForFiles = 4000 * (MAX_PATH + 1) + 1;

enum { extensionLength = 4 };  // with its point

// Lets the user choose CTF files; empty when the dialog gave none.
std::vector<CString> chooseCtfFiles() {
  CFileDialog dialog(TRUE, nullptr, nullptr, OFN_ALLOWMULTISELECT,
                     _T("CTF Dipole Files(*.DIP)|*.DIP|All Files(*.*)|*.*||"));
  ChosenFiles chosen = letChoose(dialog, roomForFiles);
  if (chosen.isLost) {
    AfxMessageBox(_T("The files could not be taken over, please choose fewer!"));
  }
  return std::move(chosen.paths);
}

void tellNotFound(const CString& path) {
  CString message;
  message.Format(_T("Find file:%s error \n"), path.GetString());
  AfxMessageBox(message);
}

// The folder of a file that was found, with the closing separator. It is taken off the file's path: what a
// search gives as its root ends in a separator or not, and is empty when the search began without a folder.
CString folderOf(const CFileFind& search) {
  const CString path = search.GetFilePath();
  return path.Left(path.GetLength() - search.GetFileName().GetLength());
}

// Every file of a folder, given with its closing separator, whose name ends like the given one, in the order
// of the search. A message says when there is none: the folder's other files must not be missed silently.
std::vector<CString> filesWithTheEndingOf(const CString& fileName, const CString& folder) {
  const CString ending = fileName.Right(extensionLength);
  const CString pattern = folder + _T("*") + ending;
  CFileFind search;
  std::vector<CString> paths;
  BOOL more = search.FindFile(pattern);
  while (more) {
    more = search.FindNextFile();
    // A pattern also matches short names and folders.
    if (!search.IsDirectory() && search.GetFileName().Right(extensionLength).CompareNoCase(ending) == 0) {
      paths.push_back(search.GetFilePath());
    }
  }
  if (paths.empty()) {
    tellNotFound(pattern);
  }
  return paths;
}

}  // namespace

CDipoleFace8Import01_CTF::CDipoleFace8Import01_CTF() = default;
CDipoleFace8Import01_CTF::CDipoleFace8Import01_CTF(const CDipoleFace8Import01_CTF&) = default;
CDipoleFace8Import01_CTF& CDipoleFace8Import01_CTF::operator=(const CDipoleFace8Import01_CTF&) = default;
CDipoleFace8Import01_CTF::~CDipoleFace8Import01_CTF() = default;

int CDipoleFace8Import01_CTF::updateDipoleList() {
  return 1;
}

// By the rules of AnsiLineReader, but byte by byte: no byte behind the line may be taken.
int CDipoleFace8Import01_CTF::readANSI(CArchive& archive, CString& line) {
  char bytes[AnsiLine::capacity];
  char* end = bytes;
  bool isLine = false;
  char next = 0;
  while (!isLine && archive.Read(&next, 1) == 1) {
    const bool isLineEnd = next == '\n' || next == '\r';
    if (!isLineEnd) {
      *end++ = next;
    }
    isLine = isLineEnd ? end != bytes : end == std::end(bytes);
  }
  line = CString(bytes, static_cast<int>(std::find(bytes, end, '\0') - bytes));
  return isLine ? 1 : 0;
}

int CDipoleFace8Import01_CTF::coordinateCtf2zq(float& x, float& y, float& z) {
  const float front = std::exchange(x, y);
  y = std::exchange(z, front);
  return 1;
}

int CDipoleFace8Import01_CTF::coordinateCtf2zq_double(double& x, double& y, double& z) {
  const double front = std::exchange(x, y);
  y = std::exchange(z, front);
  return 1;
}

int CDipoleFace8Import01_CTF::importCTFDipoles() {
  int result = 1;
  guardImport([&] {
    const std::vector<CString> paths = chooseCtfFiles();
    if (paths.empty()) {
      result = 0;
      return;
    }
    importCtfFiles(paths);
  });
  return result;
}

int CDipoleFace8Import01_CTF::importCTFDipolesX(CString& path, bool offerWholeFolder) {
  int result = 1;
  guardImport([&] {
    const std::vector<CString> paths = findImportFiles(path, offerWholeFolder);
    result = paths.empty() ? 0 : 1;
    if (result != 0) {
      importCtfFiles(paths);
    }
  });
  return result;
}

std::vector<CString> CDipoleFace8Import01_CTF::findImportFiles(const CString& path, bool offerWholeFolder) {
  CFileFind search;
  if (!search.FindFile(path)) {
    tellNotFound(path);
    return {};
  }
  search.FindNextFile();
  const CString folder = folderOf(search);
  SetCurrentDirectory(folder);
  m_importFirst = m_totalDipoles;
  if (offerWholeFolder &&
      AfxMessageBox(_T("Would you like to select all files in the same fold?"), MB_YESNO) == IDYES) {
    std::vector<CString> files = filesWithTheEndingOf(search.GetFileName(), folder);
    if (!files.empty()) {
      return files;
    }
  }
  return {search.GetFilePath()};
}

void CDipoleFace8Import01_CTF::importCtfFiles(const std::vector<CString>& paths) {
  m_importFirst = m_totalDipoles;
  for (const CString& path : paths) {
    parseCTFDipoles(path);
  }
  if (!m_skipFiducialSetup) {
    setCtfFiducial();
  }
  finishImport();
}

void CDipoleFace8Import01_CTF::finishImport() {
  m_importEnd = m_totalDipoles;
  for (int slot = m_importFirst; slot < m_importEnd; ++slot) {
    if (m_dipoles[slot] != nullptr) {
      m_dipoles[slot]->backUpLocationRotationRaw();
    }
  }
  CString message;
  message.Format(_T("Total imported dipoles:%d (%d-%d)\n"), m_importEnd - m_importFirst, m_importFirst,
                 m_importEnd);
  AfxMessageBox(message);
  updateDipoleList();
}

// Deliberately one-sided: a far negative location is not questioned.
bool CDipoleFace8Import01_CTF::isLocationRefused(const float (&location)[3]) {
  constexpr float farthest = 300.0F;
  if (!(location[0] > farthest || location[1] > farthest || location[2] > farthest)) {
    return false;
  }
  CString question;
  question.Format(_T("It seems the dipole location is wrong (%.3f x %.3f x %.3f), do you like to import?"),
                  static_cast<double>(location[0]), static_cast<double>(location[1]),
                  static_cast<double>(location[2]));
  return AfxMessageBox(question, MB_YESNO) != IDYES;
}

void CDipoleFace8Import01_CTF::setFromFileAxes(double (&target)[3], const float (&values)[3]) {
  float x = values[0];
  float y = values[1];
  float z = values[2];
  coordinateCtf2zq(x, y, z);
  setTriple(target, {static_cast<double>(x), static_cast<double>(y), static_cast<double>(z)});
}

int CDipoleFace8Import01_CTF::parseCTFDipoles(CString path) {
  CFile file;
  if (!openForImport(file, path)) {
    return 0;
  }
  readLines(file, [this](AnsiLineReader& reader) { readCtfSections(reader); });
  return 1;
}

int CDipoleFace8Import01_CTF::setCtfFiducial() {
  if (m_bCtfSphereSet == 0) {
    AfxMessageBox(_T("Can't set CTF dipole fiducial points without MEG sphere"));
    return 0;
  }
  const double radius = m_sphereCtf.m_radius;
  m_fiducialCtf.resetAllFiducialPt();
  m_fiducialCtf.setAllFiducialPtShap(2);
  if (m_fiducialMri.getTotalFiduciaryPts(true) >= 3) {
    m_fiducialCtf.setAllFiducialSize3D(4.0);
    setHeadFiducialsFromMri();
  } else {
    m_fiducialCtf.setAllFiducialSize3D(radius / 20.0);
    m_fiducialCtf.setNasionf(0.0, 0.0, radius);
    m_fiducialCtf.setLeftEarf(radius, 0.0, 0.0);
    m_fiducialCtf.setRightEarf(-radius, 0.0, 0.0);
  }
  setTriple(m_sphereLocational.m_center, {0.0, 0.0, 0.0});
  m_sphereLocational.m_radius = radius;
  return 1;
}

// The MRI points relative to the midpoint of the ears, mm: a volume of 256 voxels of 0.859375 mm along each
// axis, centred on voxel 128. Each coordinate is rounded to single precision.
void CDipoleFace8Import01_CTF::setHeadFiducialsFromMri() {
  constexpr double voxelSize = 0.859375;  // mm
  double points[3][3];                    // nasion, left ear, right ear
  for (const int point : {CFiducial::nasion, CFiducial::leftEar, CFiducial::rightEar}) {
    m_fiducialMri.m_points[point].getPosition(points[point][0], points[point][1], points[point][2]);
  }
  for (int axis = 0; axis < 3; ++axis) {
    const double earsCentre =
        (points[CFiducial::leftEar][axis] + points[CFiducial::rightEar][axis] - 256.0) * voxelSize * 0.5;
    for (auto& point : points) {
      point[axis] = static_cast<double>(static_cast<float>((point[axis] - 128.0) * voxelSize - earsCentre));
    }
  }
  const auto& [nasion, leftEar, rightEar] = points;
  m_fiducialCtf.setLeftEarf(leftEar[0], leftEar[1], leftEar[2]);
  m_fiducialCtf.setRightEarf(rightEar[0], rightEar[1], rightEar[2]);
  m_fiducialCtf.setNasionf(nasion[0], nasion[1], nasion[2]);
}
