// Imports the input as a CTF file into a collection that holds other dipoles.
//
// The first byte decides what happens around it: bits 0 to 3 answer the questions in turn, bit 4 starts with
// a nearly full collection, bit 6 has a head sphere already, bit 7 skips the fiducials. The one value EF has
// the file dialog choose the file twice; all others import it once, by its path, which takes a hundredth of
// the time: the dialog needs megabytes of room for names.
#include <afxwin.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>

#include "fuzz/Check.h"
#include "fuzz/FuzzFile.h"
#include "fuzz/FuzzUser.h"
#include "fuzz/import/CtfWords.h"
#include "fuzz/import/FuzzCollection.h"
#include "import/DipoleFace8Import01_CTF.h"
#include "platform/Utf.h"

namespace {

class CtfCollection : public FuzzCollection<CDipoleFace8Import01_CTF> {
 public:
  using FuzzCollection::FuzzCollection;

  int importByPath(const CString& path) {
    CString name = path;
    return importCTFDipolesX(name, false);
  }

  void checkEverything(const FuzzUser& user) const {
    checkImport(user);
    // Moving dipoles set the count back; when no row follows, the current index stays where it was.
    check(m_currentDipole >= -1 && (m_currentDipole < m_totalDipoles || user.hasAccepted("This is moving")),
          "the current dipole is one of the set");
    check(getCurrentDipole() == nullptr || m_currentDipole < m_totalDipoles,
          "there is no dipole behind the set");
  }
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
  static const CString path = fromUtf8(file.path());
  static FuzzUser user(ctfMessages, ctfQuestions);
  static const auto smallCollection = std::make_unique<CtfCollection>(3);
  static const auto fullCollection = std::make_unique<CtfCollection>(DipoleTable::capacity - 6);
  if (size == 0) {
    return 0;
  }
  const std::uint8_t mode = data[0];
  CtfCollection& collection = (mode & nearlyFull) != 0 ? *fullCollection : *smallCollection;
  const bool byDialog = mode == dialog;
  // The shortest row of any section has 12 bytes.
  const int most = static_cast<int>(size / 12 + 1) * 2;

  if ((mode & sphereSet) != 0) {
    collection.m_bCtfSphereSet = 1;
    collection.m_sphereCtf.m_radius = 80.0;
  }
  collection.m_skipFiducialSetup = (mode & skipFiducials) != 0;
  file.write(data + 1, size - 1);
  user.start(mode & answerBits);
  user.paths.assign(byDialog ? 2 : 0, path);
  const int result = byDialog ? collection.importCTFDipoles() : collection.importByPath(path);
  check(result == 1, "an import of a file that is there gives 1");
  collection.checkEverything(user);
  collection.restart(most);
  return 0;
}
