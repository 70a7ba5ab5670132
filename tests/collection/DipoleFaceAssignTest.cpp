// Whole collections copied and assigned: every member, those of a derived layer too, and nothing at all when
// memory is used up on the way.
#include <gtest/gtest.h>
#include <new>

#include "import/DipoleFace8Import01_CTF.h"
#include "tests/collection/FaceFixture.h"
#include "tests/support/FailingNew.h"
#include "tests/support/FreeLog.h"
#include "tests/support/Thrown.h"

namespace {

using Layer = CDipoleFace8Import01_CTF;

// The values of a collection, to be compared as a whole.
struct Values {
  std::vector<double> numbers;
  Texts texts;
  std::vector<const void*> dipoles;
  bool operator==(const Values&) const = default;
};

void addSphere(Values& values, const CSphere& sphere) {
  values.numbers.insert(values.numbers.end(), std::begin(sphere.m_center), std::end(sphere.m_center));
  values.numbers.push_back(sphere.m_radius);
  values.texts.push_back(toUtf8(sphere.m_auxText));
}

void addFiducials(Values& values, const CFiducial& set) {
  for (const CFiduciaryPt& point : set.m_points) {
    values.numbers.insert(values.numbers.end(), std::begin(point.m_values), std::end(point.m_values));
    values.numbers.push_back(point.isSet() ? 1.0 : 0.0);
    values.texts.push_back(toUtf8(point.m_label));
  }
}

Values valuesOf(const Layer& face) {
  Values values;
  for (const double number : {double(face.m_currentDipole),
                              double(face.m_totalDipoles),
                              face.m_faceValue,
                              double(face.m_showDipoleOrientationAll),
                              face.m_allDipoleRange[0],
                              face.m_allDipoleRange[1],
                              face.m_allDipoleRange[2],
                              double(face.m_bCtfSphereSet),
                              double(face.m_megOnly),
                              double(face.m_coordinateType),
                              double(face.m_momentInNAm),
                              double(face.m_skipFiducialSetup),
                              double(face.m_showCurrentDipoleOnly),
                              double(face.m_showDipoleLatencySelected),
                              double(face.m_showDipole2DOverlap),
                              double(face.m_mergeRadius),
                              double(face.m_showFiducialPt),
                              double(face.m_showDipoleArray),
                              double(face.m_dimension[0]),
                              double(face.m_dimension[1]),
                              double(face.m_dimension[2]),
                              face.m_space[0],
                              face.m_space[1],
                              face.m_space[2],
                              double(face.m_importFirst),
                              double(face.m_importEnd)}) {
    values.numbers.push_back(number);
  }
  for (const CString& text : {face.m_fileVersion, face.m_patient, face.m_mriFile, face.m_managerTitle}) {
    values.texts.push_back(toUtf8(text));
  }
  for (const CSphere& sphere :
       {face.m_sphereLocational, face.m_sphereCtf, face.m_sphereRotation, face.m_sphereMriAngles}) {
    addSphere(values, sphere);
  }
  addFiducials(values, face.m_fiducialMri);
  addFiducials(values, face.m_fiducialCtf);
  for (int slot = 0; slot < DipoleTable::capacity; ++slot) {
    if (face.m_dipoles[slot] != nullptr) {
      values.numbers.push_back(slot);
      values.dipoles.push_back(face.m_dipoles[slot]);
    }
  }
  values.dipoles.push_back(face.m_pParentWnd);
  values.numbers.push_back(face.m_cbfDipoleXYZ != nullptr ? 1.0 : 0.0);
  values.numbers.push_back(face.m_cbfUpdateViewers != nullptr ? 1.0 : 0.0);
  return values;
}

void name(CFiducial& set, const CString& label, double coordinate) {
  for (CFiduciaryPt& point : set.m_points) {
    point.setPosition(coordinate, coordinate, coordinate);
    point.m_label = label;
  }
}

// A collection of which no member has its initial value; the texts are too long to need no memory.
std::unique_ptr<Layer> filled(int dipoles, int base, const CString& text) {
  auto face = std::make_unique<Layer>();
  for (int i = 0; i < dipoles; ++i) {
    face->addDipole();
  }
  face->deleteDipole(0, 0);
  leaveBehindCount(*face, 1);
  double real = base + 0.5;
  for (double* member :
       {&face->m_faceValue, &face->m_allDipoleRange[0], &face->m_allDipoleRange[1],
        &face->m_allDipoleRange[2], &face->m_space[0], &face->m_space[1], &face->m_space[2]}) {
    *member = real += 1.0;
  }
  for (CSpherezq* sphere :
       {&face->m_sphereLocational, &face->m_sphereCtf, &face->m_sphereRotation, &face->m_sphereMriAngles}) {
    sphere->m_center[0] = real += 1.0;
    sphere->m_center[2] = real += 1.0;
    sphere->m_radius = real += 1.0;
    sphere->m_auxText = text;
  }
  int whole = base;
  for (int* member :
       {&face->m_showDipoleOrientationAll, &face->m_bCtfSphereSet, &face->m_megOnly, &face->m_coordinateType,
        &face->m_momentInNAm, &face->m_showCurrentDipoleOnly, &face->m_showDipoleLatencySelected,
        &face->m_showDipole2DOverlap, &face->m_showFiducialPt, &face->m_showDipoleArray,
        &face->m_dimension[0], &face->m_dimension[1], &face->m_dimension[2], &face->m_importFirst,
        &face->m_importEnd}) {
    *member = ++whole;
  }
  face->m_currentDipole = 1;
  face->m_mergeRadius = static_cast<float>(base);
  face->m_skipFiducialSetup = true;
  face->m_fileVersion = face->m_patient = face->m_mriFile = face->m_managerTitle = text;
  name(face->m_fiducialMri, text, real);
  name(face->m_fiducialCtf, text, -real);
  face->m_cbfDipoleXYZ = [](double, double, double, double) { return 1; };
  face->m_cbfUpdateViewers = [](bool) { return 1; };
  return face;
}

std::unique_ptr<Layer> source() {
  return filled(5, 100, _T("the text that is to be assigned here"));
}

std::unique_ptr<Layer> target() {
  return filled(3, 200, _T("the text that was there before, long"));
}

// Assigns with each allocation failing in turn, until none does.
void expectAllOrNothing(const Layer& from, Layer& to, int fewestStops) {
  const Values before = valuesOf(to);
  const Values wanted = valuesOf(from);
  int stops = 0;
  for (bool failed = true; failed;) {
    ++stops;
    bool thrown = false;
    {
      const FailingNew failing(stops);
      thrown = runsOutOfMemory([&] { to = from; });
      failed = failing.failed();
    }
    ASSERT_EQ(thrown, failed) << stops;
    ASSERT_TRUE(valuesOf(to) == (thrown ? before : wanted)) << stops;
    ASSERT_TRUE(valuesOf(from) == wanted) << stops;
  }
  EXPECT_GT(stops, fewestStops);
}

}  // namespace

TEST(LayerCopy, HasEveryMemberAndTheSameDipoles) {
  const auto face = source();
  CWnd* const window = reinterpret_cast<CWnd*>(face.get());  // only ever compared
  face->m_pParentWnd = window;
  const auto copy = std::make_unique<Layer>(*face);
  EXPECT_EQ(valuesOf(*copy), valuesOf(*face));
  EXPECT_EQ(copy->m_pParentWnd, window);
  EXPECT_EQ(copy->m_importEnd, 115);
}

TEST(LayerCopy, IsOfTheLayerItselfAndImports) {
  const auto copy = std::make_unique<Layer>(*source());
  CDipoleFace* base = copy.get();
  EXPECT_NE(dynamic_cast<Layer*>(base), nullptr);
  copy->cleanDipoles();
  copy->m_sphereCtf.m_radius = 80.0;
  copy->m_fiducialMri.resetAllFiducialPt();
  EXPECT_EQ(copy->setCtfFiducial(), 1);
  EXPECT_EQ(copy->m_sphereLocational.m_radius, 80.0);
}

TEST(LayerAssignment, ReplacesEveryMemberAndReleasesWhatWasHeld) {
  const auto face = source();
  const auto other = target();
  const void* held = other->m_dipoles[1];
  const void* left = other->m_dipoles[2];
  EXPECT_NE(valuesOf(*other), valuesOf(*face));
  const FreeLog log;
  const Layer* assigned = &(*other = *face);
  // Before anything else can get, and free, the same addresses.
  const int timesHeldFreed = log.timesFreed(held);
  const int timesLeftFreed = log.timesFreed(left);
  EXPECT_EQ(timesHeldFreed, 1);
  EXPECT_EQ(timesLeftFreed, 1);
  EXPECT_EQ(assigned, other.get());
  EXPECT_EQ(valuesOf(*other), valuesOf(*face));
}

TEST(LayerAssignment, ThatRunsOutOfMemoryForItsDipolesLeavesBothWholeWhereverItStops) {
  const long long before = liveAllocations();
  {
    const auto face = source();
    const auto other = target();
    expectAllOrNothing(*face, *other, 3);  // the table, its counts, the entries of the dipoles
  }
  EXPECT_EQ(liveAllocations(), before);
}

TEST(LayerAssignment, ThatRunsOutOfMemoryForItsTextsLeavesBothWholeWhereverItStops) {
  const long long before = liveAllocations();
  {
    const auto face =
        filled(5, 100, _T("a text that is longer than the one before, and so in need of memory"));
    const auto other = target();
    expectAllOrNothing(*face, *other, 20);  // and each of the 20 texts and labels
  }
  EXPECT_EQ(liveAllocations(), before);
}

TEST(FaceAssignment, ThatRunsOutOfMemoryLeavesItsTargetsDipolesToItAlone) {
  const auto face = faceOf(3);
  auto other = faceOf(4);
  std::vector<const void*> dipoles;
  dipoles.reserve(4);
  for (int slot = 0; slot < 4; ++slot) {
    dipoles.push_back(other->m_dipoles[slot]);
  }
  FreeLog log;
  for (int nth = 1; nth <= 3; ++nth) {
    const FailingNew failing(nth);
    EXPECT_TRUE(runsOutOfMemory([&] { *other = *face; })) << nth;
    EXPECT_EQ(idsOf(*other), (Ids{0, 1, 2, 3})) << nth;
    EXPECT_EQ(other->m_currentDipole, 3);
  }
  log.clear();
  other.reset();
  for (const void* dipole : dipoles) {
    EXPECT_EQ(log.timesFreed(dipole), 1);
  }
  EXPECT_EQ(idsOf(*face), (Ids{0, 1, 2}));
}
