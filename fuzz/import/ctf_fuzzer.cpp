// Imports the input as a CTF file into a collection that holds other dipoles.
//
// The first byte decides what happens around it: bits 0 to 3 answer the questions in turn, bit 4 starts with
// a nearly full collection, bit 6 has a head sphere already, bit 7 skips the fiducials. The one value EF has
// the file dialog choose the file twice; all others import it once, by its path, which takes a hundredth of
// the time: the dialog needs megabytes of room for names.
#include <afxwin.h>

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "fuzz/Check.h"
#include "fuzz/FuzzFile.h"
#include "import/DipoleFace8Import01_CTF.h"
#include "platform/Operator.h"
#include "platform/Utf.h"

namespace {

constexpr std::string_view knownMessages[] = {
    "Can't find dipole location unit is cm or mm!",
    "Can't find latency unit is second or millisecond!",
    "Can't set CTF dipole fiducial points without MEG sphere",
    "It seems the CTF dipole file is not correct!",
    "MEG Sphere reading error: not enough points",
    "MRI fiducial point reading error: three integers expected",
    "No dipole space",
    "The different between new and old sphere model > 3 mm",
    "Total imported dipoles:",
};

// Also for values that are no numbers.
bool sameBits(const double (&left)[3], const double (&right)[3]) {
  return std::equal(std::begin(left), std::end(left), std::begin(right), [](double a, double b) {
    return std::bit_cast<std::uint64_t>(a) == std::bit_cast<std::uint64_t>(b);
  });
}

class FuzzOperator : public Operator {
 public:
  FuzzOperator() { installOperator(this); }

  void start(unsigned answers, const std::string& path) {
    m_answers = answers;
    m_questions = 0;
    m_paths.assign(2, fromUtf8(path));
    lastMessage.clear();
    acceptedMovingDipoles = false;
  }

  int answerMessage(LPCTSTR text, UINT type) override {
    lastMessage = toUtf8(text);
    if ((type & MB_TYPEMASK) == MB_YESNO) {
      const bool yes = (m_answers >> (m_questions++ % 4U) & 1U) != 0;
      acceptedMovingDipoles = acceptedMovingDipoles || (yes && lastMessage.starts_with("This is moving"));
      return yes ? IDYES : IDNO;
    }
    const bool isKnown = std::any_of(std::begin(knownMessages), std::end(knownMessages),
                                     [&](std::string_view known) { return lastMessage.starts_with(known); });
    check(isKnown, "every message is one of the importer's");
    return IDOK;
  }
  bool chooseFiles(const FileQuestion& /*question*/, std::vector<CString>& paths) override {
    paths = m_paths;
    return true;
  }
  bool chooseColor(COLORREF /*initial*/, COLORREF& /*chosen*/) override { return false; }

  std::string lastMessage;
  bool acceptedMovingDipoles = false;

 private:
  unsigned m_answers = 0;
  unsigned m_questions = 0;
  std::vector<CString> m_paths;
};

// A collection that starts every input with the same dipoles and nothing else.
class FuzzCollection : public CDipoleFace8Import01_CTF {
 public:
  explicit FuzzCollection(int earlier) : m_earlier(earlier) {
    for (int i = 0; i < earlier; ++i) {
      addDipoleF(static_cast<float>(i), -1.0F, 0.5F);
    }
  }

  // `most` dipoles may have come in since the last time.
  void restart(int most) {
    const int end = (std::min)(m_earlier + most, static_cast<int>(DipoleTable::capacity));
    for (int slot = m_earlier; slot < end; ++slot) {
      m_dipoles.clear(slot);
    }
    m_totalDipoles = m_earlier;
    m_currentDipole = m_earlier - 1;
    m_importFirst = m_importEnd = 0;
    m_bCtfSphereSet = m_megOnly = m_coordinateType = m_momentInNAm = 0;
    m_skipFiducialSetup = false;
    m_fileVersion = m_patient = m_mriFile = _T("non");
    m_sphereCtf = m_sphereLocational = CSpherezq();
    m_fiducialMri = m_fiducialCtf = CFiducialzq();
  }

  int importByPath(const std::string& path) {
    CString name = fromUtf8(path);
    return importCTFDipolesX(name, false);
  }

  void checkEverything(const FuzzOperator& user) const {
    check(m_totalDipoles >= m_earlier && m_totalDipoles <= DipoleTable::capacity, "the count fits the table");
    check(m_importFirst == m_earlier, "the import began behind the earlier dipoles");
    check(m_importEnd == m_totalDipoles, "the import ended at the count");
    // Moving dipoles set the count back; when no row follows, the current index stays where it was.
    check(m_currentDipole >= -1 && (m_currentDipole < m_totalDipoles || user.acceptedMovingDipoles),
          "the current dipole is one of the set");
    check(getCurrentDipole() == nullptr || m_currentDipole < m_totalDipoles,
          "there is no dipole behind the set");
    for (const int slot : {0, m_earlier / 2, m_earlier - 1}) {
      const CDipoleszq* dipole = m_dipoles[slot];
      check(dipole != nullptr && dipole->m_location[0] == slot && dipole->m_location[1] == -1.0 &&
                dipole->m_label == _T("Non") && dipole->m_rawLocation.m_radius == 0.0,
            "an earlier dipole is as it was");
    }
    for (int slot = m_importFirst; slot < m_importEnd; ++slot) {
      checkImported(slot);
    }
    const std::string total = "Total imported dipoles:" + std::to_string(m_importEnd - m_importFirst) + " (" +
                              std::to_string(m_importFirst) + "-" + std::to_string(m_importEnd) + ")\n";
    check(user.lastMessage == total, "the total is the last message");
  }

 private:
  void checkImported(int slot) const {
    const CDipoleszq* dipole = m_dipoles[slot];
    check(dipole != nullptr, "no slot of the set is empty");
    check(dipole->m_number == slot + 1, "a dipole is numbered by its place");
    check(
        dipole->m_rawLocation.m_radius == 1.0 && sameBits(dipole->m_rawLocation.m_center, dipole->m_location),
        "the raw location is backed up");
    check(dipole->m_rawOrientation.m_radius == 1.0 &&
              sameBits(dipole->m_rawOrientation.m_center, dipole->m_orientation),
          "the raw orientation is backed up");
    check(!dipole->m_label.IsEmpty(), "every dipole has a label");
  }

  int m_earlier;
};

enum : std::uint8_t {
  answerBits = 0x0F,
  nearlyFull = 0x10,
  sphereSet = 0x40,
  skipFiducials = 0x80,
  dialog = 0xEF
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const FuzzFile file("input.dip");
  static const std::string path = file.path();
  static FuzzOperator user;
  static const auto smallCollection = std::make_unique<FuzzCollection>(3);
  static const auto fullCollection = std::make_unique<FuzzCollection>(DipoleTable::capacity - 6);
  if (size == 0) {
    return 0;
  }
  const std::uint8_t mode = data[0];
  FuzzCollection& collection = (mode & nearlyFull) != 0 ? *fullCollection : *smallCollection;
  const bool byDialog = mode == dialog;
  // The shortest row of any section has 12 bytes.
  const int most = static_cast<int>(size / 12 + 1) * 2;

  if ((mode & sphereSet) != 0) {
    collection.m_bCtfSphereSet = 1;
    collection.m_sphereCtf.m_radius = 80.0;
  }
  collection.m_skipFiducialSetup = (mode & skipFiducials) != 0;
  file.write(data + 1, size - 1);
  user.start(mode & answerBits, path);
  const int result = byDialog ? collection.importCTFDipoles() : collection.importByPath(path);
  check(result == 1, "an import of a file that is there gives 1");
  collection.checkEverything(user);
  collection.restart(most);
  return 0;
}
