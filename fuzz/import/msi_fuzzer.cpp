// Imports the input as a 4D/MSI table into a collection that holds other dipoles. Everything that came in
// must be what a plain model of the format says, bit by bit, and the collection must be fit to be saved.
//
// The first byte decides what happens around it: bits 0 to 3 answer the questions in turn, bit 4 starts with
// a nearly full collection, bit 5 with the head sphere of an earlier CTF file.
#include <afxwin.h>

#include <bit>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "file/DipoleFace9File.h"
#include "fuzz/Check.h"
#include "fuzz/FuzzFile.h"
#include "fuzz/FuzzUser.h"
#include "fuzz/import/FuzzCollection.h"
#include "fuzz/import/MsiModel.h"
#include "platform/Utf.h"

namespace {

enum : std::uint8_t { answerBits = 0x0F, nearlyFull = 0x10, sphereSet = 0x20 };

enum { fewEarlier = 3, roomLeft = 6 };

constexpr std::string_view knownMessages[] = {"No dipole space", "Total imported dipoles:"};

constexpr std::string_view knownQuestions[] = {"It seems the dipole location is wrong ("};

// Of values that are no numbers only the sign counts.
bool isSame(double found, float expected) {
  if (std::isnan(found) || std::isnan(expected)) {
    return std::isnan(found) && std::isnan(expected) && std::signbit(found) == std::signbit(expected);
  }
  return std::bit_cast<std::uint64_t>(found) == std::bit_cast<std::uint64_t>(static_cast<double>(expected));
}

// Columns 2 to 4, x to the nose, y to the left ear, z up, as host axes: x left, y up, z front.
void checkVector(const double (&found)[3], const float* columns, float factor, float divisor) {
  for (int axis = 0; axis < 3; ++axis) {
    check(isSame(found[axis], columns[(axis + 1) % 3] * factor / divisor), "a vector is the row's, turned");
  }
}

void checkDipole(const CDipoleszq& found, const MsiModelDipole& expected) {
  const float* columns = expected.columns;
  check(isSame(found.m_latency, columns[0]), "the latency is column 1");
  checkVector(found.m_location, columns + 1, 10.0F, 1.0F);
  checkVector(found.m_orientation, columns + 4, 1.0F, 10.0F);
  check(isSame(found.m_moment, columns[7]), "the moment is column 8");
  check(isSame(static_cast<double>(found.m_importTag1), columns[8]), "the first tag is column 9");
  check(isSame(found.m_fitError, 100.0F - columns[10] * 100.0F), "the fit error is what column 11 leaves");
  check(isSame(static_cast<double>(found.m_importTag2), columns[11]), "the second tag is column 12");
  check(found.m_label == CString(expected.label.c_str()), "the label is column 18");
}

bool isFixedSphere(const CSpherezq& sphere) {
  return sphere.m_radius == 70.0 && sphere.m_center[0] == 0.0 && sphere.m_center[1] == 0.0 &&
         sphere.m_center[2] == 0.0;
}

class MsiCollection : public FuzzCollection<CDipoleFace9File> {
 public:
  using FuzzCollection::FuzzCollection;

  int importByPath(const CString& path) {
    CString name = path;
    return import4DMSIDipolesX(name, false);
  }

  void checkEverything(const FuzzUser& user, const MsiModel& model, bool hadSphere) const {
    checkImport(user);
    check(m_importEnd - m_importFirst == static_cast<int>(model.dipoles.size()), "every row is a dipole");
    for (int slot = m_importFirst; slot < m_importEnd; ++slot) {
      checkDipole(*m_dipoles[slot], model.dipoles[static_cast<std::size_t>(slot - m_importFirst)]);
    }
    check(m_currentDipole == m_totalDipoles - 1, "the last dipole is the current one");
    check(user.questions == model.questions, "the questions are those of the rows far away");
    check(user.messages.size() == (model.isCut ? 2U : 1U), "what has no room is told");
    check(m_coordinateType == (model.hasTable ? 3 : 0) && m_momentInNAm == (model.hasTable ? 1 : 0),
          "a table tells its kind");
    check(m_patient == CString(model.patient.c_str()), "the patient is behind the key");
    check(m_fileVersion == CString(model.fileVersion.c_str()), "the file is behind the key");
    check(isFixedSphere(m_sphereLocational) && m_sphereCtf.m_radius == 70.0, "the head sphere is fixed");
    check(m_bCtfSphereSet == (hadSphere ? 1 : 0), "the mark of a CTF sphere stays");
  }

  void checkUsable() {
    CMemFile file(16384);
    CArchive archive(&file, CArchive::store, 8192);
    check(serializeDipolesFace(archive) == 1, "the collection can be saved");
    archive.Close();
    check(getCurrentDipole() != nullptr, "there is a current dipole");
    getMaxDipoleRange();
  }
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const FuzzFile file("input.txt");
  static const CString path = fromUtf8(file.path());
  static FuzzUser user(knownMessages, knownQuestions);
  static const auto smallCollection = std::make_unique<MsiCollection>(fewEarlier);
  static const auto fullCollection = std::make_unique<MsiCollection>(DipoleTable::capacity - roomLeft);
  if (size == 0) {
    return 0;
  }
  const std::uint8_t mode = data[0];
  const bool isFull = (mode & nearlyFull) != 0;
  const bool hasSphere = (mode & sphereSet) != 0;
  MsiCollection& collection = isFull ? *fullCollection : *smallCollection;
  if (hasSphere) {
    collection.m_bCtfSphereSet = 1;
    collection.m_sphereCtf.m_radius = 80.0;
    collection.m_sphereLocational.m_center[1] = 5.0;
  }
  const int room = isFull ? roomLeft : DipoleTable::capacity - fewEarlier;
  const MsiModel model(data + 1, size - 1, room, mode & answerBits);
  file.write(data + 1, size - 1);
  user.start(mode & answerBits);
  check(collection.importByPath(path) == 1, "an import of a file that is there gives 1");
  collection.checkEverything(user, model, hasSphere);
  if (!isFull) {
    collection.checkUsable();
  }
  // The shortest row has 33 bytes: numbers with signs need no blanks.
  collection.restart(static_cast<int>(size / 33 + 1));
  return 0;
}
