// The session keeps one head and one set together: what each operation changes, and that it changes nothing
// when it fails.
#include <filesystem>
#include <gtest/gtest.h>
#include <limits>
#include <memory>

#include "host/session/Session.h"
#include "host/text/PathText.h"
#include "tests/host/session/SmallMri.h"
#include "tests/host/text/Failing.h"
#include "tests/host/undo/WholeSet.h"
#include "tests/support/TempFolder.h"

namespace {

using host::Session;
using host::Vector3;
using Paths = std::vector<CString>;

const host::Fiducials head = {{0, 95, -20}, {-75, -10, -40}, {75, -10, -40}};

void expectPlace(const Vector3& place, const Vector3& expected) {
  EXPECT_NEAR(place.x, expected.x, 1e-9);
  EXPECT_NEAR(place.y, expected.y, 1e-9);
  EXPECT_NEAR(place.z, expected.z, 1e-9);
}

// A session over a set of its own.
struct Viewer {
  explicit Viewer(int dipoles) : set(filledSet(dipoles)), session(*set) {}

  Set set;
  Session session;
};

}  // namespace

TEST(Session, BeginsWithTheRegisteredPhantomAndTheSetAsItIs) {
  const Set set = filledSet(3);
  const WholeSet before = wholeSet(*set);
  Session session(*set);
  EXPECT_EQ(session.head().name, "Phantom");
  EXPECT_TRUE(session.head().isRegistered());
  EXPECT_FALSE(session.isUnsaved());
  EXPECT_TRUE(session.setPath().IsEmpty());
  EXPECT_EQ(session.history().undoSteps(), 0U);
  EXPECT_TRUE(isSame(wholeSet(session.dipoles()), before));
  EXPECT_EQ(session.window().low, session.head().volume->window().low);
  expectPlace(session.crosshair(), {15, 45, 0});
}

TEST(SessionMri, OpensWithItsPointsAndItsOwnGreyWindow) {
  const TempFolder folder;
  folder.write("head.fiducials", points);
  Viewer viewer(1);
  viewer.session.setWindow({1, 2});
  viewer.session.setCrosshair({1, 2, 3});
  viewer.session.placeFiducial(host::FiducialName::nasion);
  viewer.session.openMri(folder.write("head.nii", mri()), [](const std::string&) { return true; });
  EXPECT_EQ(viewer.session.head().name, "head.nii");
  EXPECT_TRUE(viewer.session.head().isRegistered());
  EXPECT_EQ(viewer.session.notice(), "The fiducial points that were set are forgotten");
  EXPECT_EQ(viewer.session.window().high, viewer.session.head().volume->window().high);
  EXPECT_EQ(viewer.session.placedFiducials(), (std::array<bool, 3>{}));
  expectPlace(viewer.session.crosshair(), {1, 2, 3});  // both are registered: the same place of the head
}

TEST(SessionMri, HeadsThatWereOpenedAreTheRecentOnes) {
  const TempFolder folder;
  Viewer viewer(1);
  const CString gone = folder.path("gone.nii");
  const CString bad = folder.write("bad.nii", "no head");
  viewer.session.recentHeads().add(gone);
  viewer.session.recentHeads().add(bad);
  EXPECT_THROW(viewer.session.openMri(gone), std::runtime_error);
  EXPECT_THROW(viewer.session.openMri(bad), std::runtime_error);
  EXPECT_EQ(viewer.session.recentHeads().paths(), std::vector<CString>{bad});
  const CString mriFile = folder.write("head.nii", mri());
  viewer.session.openMri(mriFile);
  EXPECT_EQ(viewer.session.recentHeads().paths(), (std::vector<CString>{mriFile, bad}));
}

TEST(SessionMri, AnotherOneWithoutPointsIsNotRegistered) {
  const TempFolder folder;
  Viewer viewer(1);
  viewer.session.setCrosshair({1, 2, 3});
  viewer.session.openMri(folder.write("head.nii", mri()));
  EXPECT_FALSE(viewer.session.head().isRegistered());
  expectPlace(viewer.session.crosshair(), {0, 0, 0});
}

TEST(SessionMri, FailureChangesNothing) {
  const TempFolder folder;
  Viewer viewer(1);
  const host::Volume* volume = viewer.session.head().volume.get();
  viewer.session.setWindow({1, 2});
  viewer.session.setCrosshair({1, 2, 3});
  viewer.session.placeFiducial(host::FiducialName::nasion);
  EXPECT_NE(failureOf([&] { viewer.session.openMri(folder.write("head.nii", "none")); }), "");
  EXPECT_NE(failureOf([&] { viewer.session.openMri(folder.path("gone.nii")); }), "");
  EXPECT_EQ(viewer.session.head().volume.get(), volume);
  EXPECT_TRUE(viewer.session.head().isRegistered());
  EXPECT_EQ(viewer.session.window().high, 2.0);
  EXPECT_EQ(viewer.session.placedFiducials(), (std::array<bool, 3>{true, false, false}));
  expectPlace(viewer.session.crosshair(), {1, 2, 3});
}

TEST(SessionMri, NoticeTellsOfBadPointsUntilTheNextHead) {
  const TempFolder folder;
  folder.write("head.fiducials", "nonsense");
  Viewer viewer(1);
  viewer.session.openMri(folder.write("head.nii", mri()));
  EXPECT_NE(viewer.session.notice().find("begins with neither nasion"), std::string::npos);
  viewer.session.usePhantom();
  EXPECT_EQ(viewer.session.notice(), "");
  EXPECT_EQ(viewer.session.head().name, "Phantom");
  EXPECT_TRUE(viewer.session.head().isRegistered());
}

TEST(SessionMri, ForgettingPlacedPointsIsTold) {
  constexpr const char* forgotten = "The fiducial points that were set are forgotten";
  const TempFolder folder;
  const CString path = folder.write("head.nii", mri());
  Viewer viewer(0);
  Session& session = viewer.session;
  session.openMri(path);
  EXPECT_EQ(session.notice(), "");
  session.placeFiducial(host::FiducialName::rightEar);
  session.openMri(path);
  EXPECT_EQ(session.notice(), forgotten);
  session.openMri(path);
  EXPECT_EQ(session.notice(), "");
  session.placeFiducial(host::FiducialName::nasion);
  session.usePhantom();
  EXPECT_EQ(session.notice(), forgotten);
  folder.write("head.fiducials", "nonsense");
  session.placeFiducial(host::FiducialName::nasion);
  session.openMri(path);
  EXPECT_NE(session.notice().find("begins with neither nasion"), std::string::npos);
  EXPECT_TRUE(session.notice().ends_with(std::string("\n") + forgotten)) << session.notice();
}

TEST(SessionWindow, IgnoresWhatIsNoWindow) {
  Viewer viewer(0);
  constexpr double nan = std::numeric_limits<double>::quiet_NaN();
  constexpr double infinity = std::numeric_limits<double>::infinity();
  viewer.session.setWindow({10, 20});
  for (const host::GreyWindow& bad :
       {host::GreyWindow{20, 20}, {30, 10}, {nan, 20}, {10, nan}, {-infinity, 20}, {10, infinity}}) {
    viewer.session.setWindow(bad);
    EXPECT_EQ(viewer.session.window().low, 10.0);
    EXPECT_EQ(viewer.session.window().high, 20.0);
  }
  viewer.session.resetWindow();
  EXPECT_EQ(viewer.session.window().high, viewer.session.head().volume->window().high);
}

TEST(SessionRegistration, KeepsTheCrosshairWhereItIsInTheMri) {
  const TempFolder folder;
  Viewer viewer(0);
  Session& session = viewer.session;
  session.openMri(folder.write("head.nii", mri()));
  session.setCrosshair({30, 20, 10});
  const Vector3 place = session.head().frame.toScanner(session.crosshair());
  session.registerHead(head);
  EXPECT_TRUE(session.head().isRegistered());
  expectPlace(session.head().frame.toScanner(session.crosshair()), place);
  session.unregister();
  EXPECT_FALSE(session.head().isRegistered());
  expectPlace(session.head().frame.toScanner(session.crosshair()), place);
  expectPlace(session.crosshair(), {30, 20, 10});
}

TEST(SessionRegistration, RefusedPointsChangeNothing) {
  Viewer viewer(0);
  Session& session = viewer.session;
  const Vector3 nasion = session.head().fiducials->nasion;
  const host::Fiducials exchanged = {head.nasion, head.rightEar, head.leftEar};
  EXPECT_THROW(session.registerHead(exchanged), std::invalid_argument);
  EXPECT_THROW(session.registerHead({{0, 400, 0}, head.leftEar, head.rightEar}), std::invalid_argument);
  expectPlace(session.head().fiducials->nasion, nasion);
}

TEST(SessionRegistration, PlacedPointsRegisterWhenAllAreThere) {
  const TempFolder folder;
  Viewer viewer(0);
  Session& session = viewer.session;
  session.openMri(folder.write("head.nii", mri()));
  const auto place = [&](host::FiducialName name, const Vector3& scanner) {
    session.setCrosshair(session.head().frame.fromScanner(scanner));
    session.placeFiducial(name);
  };
  EXPECT_EQ(failureOf([&] { session.registerPlaced(); }), "the nasion has not been placed yet");
  place(host::FiducialName::nasion, head.nasion);
  EXPECT_EQ(failureOf([&] { session.registerPlaced(); }), "the left ear has not been placed yet");
  place(host::FiducialName::leftEar, head.leftEar);
  EXPECT_EQ(failureOf([&] { session.registerPlaced(); }), "the right ear has not been placed yet");
  EXPECT_EQ(session.placedFiducials(), (std::array<bool, 3>{true, true, false}));
  place(host::FiducialName::rightEar, head.rightEar);
  session.registerPlaced();
  expectPlace(session.head().fiducials->nasion, head.nasion);
  expectPlace(session.head().fiducials->leftEar, head.leftEar);
  expectPlace(session.head().fiducials->rightEar, head.rightEar);
  place(host::FiducialName::leftEar, {70, -10, -40});
  EXPECT_THROW(session.registerPlaced(), std::invalid_argument);
  expectPlace(session.head().fiducials->leftEar, head.leftEar);
}

TEST(SessionRegistration, PlacedPointsAreShownInThePresentFrameUntilTheyAreTheHeads) {
  const TempFolder folder;
  Viewer viewer(0);
  Session& session = viewer.session;
  session.openMri(folder.write("head.nii", mri()));
  const auto place = [&](host::FiducialName name, const Vector3& scanner) {
    session.setCrosshair(session.head().frame.fromScanner(scanner));
    session.placeFiducial(name);
  };
  const auto isShown = [&] {
    const auto placed = session.placedPoints();
    return std::array<bool, 3>{placed[0].has_value(), placed[1].has_value(), placed[2].has_value()};
  };
  EXPECT_EQ(isShown(), (std::array<bool, 3>{}));
  session.setCrosshair({3, 2, 1});
  session.placeFiducial(host::FiducialName::leftEar);
  ASSERT_EQ(isShown(), (std::array<bool, 3>{false, true, false}));
  expectPlace(*session.placedPoints()[1], {3, 2, 1});
  const Vector3 scanner = session.head().frame.toScanner({3, 2, 1});
  session.registerHead(head);
  ASSERT_EQ(isShown(), (std::array<bool, 3>{false, true, false}));
  expectPlace(session.head().frame.toScanner(*session.placedPoints()[1]), scanner);
  EXPECT_GT(length(*session.placedPoints()[1] - Vector3{3, 2, 1}), 10.0);  // another frame
  session.unregister();
  place(host::FiducialName::nasion, head.nasion);
  place(host::FiducialName::leftEar, head.leftEar);
  place(host::FiducialName::rightEar, head.rightEar);
  EXPECT_EQ(isShown(), (std::array<bool, 3>{true, true, true}));
  session.registerPlaced();
  EXPECT_EQ(isShown(), (std::array<bool, 3>{}));
  EXPECT_EQ(session.placedFiducials(), (std::array<bool, 3>{true, true, true}));
  session.openMri(folder.path("head.nii"));
  EXPECT_EQ(session.notice(), "");  // what the head took is not lost unheard
  EXPECT_EQ(isShown(), (std::array<bool, 3>{}));
}

TEST(SessionRegistration, MismatchIsToldOnlyOfAPatientWhoIsRegistered) {
  const TempFolder folder;
  Viewer viewer(0);
  for (CFiducialzq* fiducials : {&viewer.set->m_fiducialMri, &viewer.set->m_fiducialCtf}) {
    fiducials->setNasionf(0, 0, 10);
    fiducials->setLeftEarf(10, 0, 0);
    fiducials->setRightEarf(-10, 0, 0);
  }
  EXPECT_EQ(viewer.session.headMismatch(), "");  // the phantom is nobody's head
  viewer.session.openMri(folder.write("head.nii", mri()));
  EXPECT_EQ(viewer.session.headMismatch(), "");
  viewer.session.registerHead(head);
  EXPECT_NE(viewer.session.headMismatch(), "");
  viewer.session.unregister();
  EXPECT_EQ(viewer.session.headMismatch(), "");
}

TEST(SessionRegistration, PointsOfTheSetAreRefusedWithACause) {
  Viewer viewer(0);
  viewer.set->m_fiducialMri.resetAllFiducialPt();
  EXPECT_EQ(failureOf([&] { (void)viewer.session.fiducialsOfSet(); }),
            "the dipole file gave no fiducial points of an MRI");
}

TEST(SessionCrosshair, StaysWithinItsReach) {
  Viewer viewer(0);
  viewer.session.setCrosshair({1000, -1000, 299});
  expectPlace(viewer.session.crosshair(), {300, -300, 299});
  viewer.session.setCrosshair({1, std::numeric_limits<double>::quiet_NaN(), 1});
  viewer.session.setCrosshair({1, 1, std::numeric_limits<double>::infinity()});
  expectPlace(viewer.session.crosshair(), {300, -300, 299});
}

TEST(SessionCrosshair, GoesToTheCurrentDipole) {
  Viewer viewer(2);
  Session& session = viewer.session;
  viewer.set->setDipoleLocation(1, 10, 20, 30);
  viewer.set->setCurrentDipole(1);
  EXPECT_TRUE(session.goToCurrentDipole());
  expectPlace(session.crosshair(), {10, 20, 30});
  for (const float bad : {301.0F, -301.0F, std::numeric_limits<float>::quiet_NaN()}) {
    viewer.set->setDipoleLocation(1, 1, bad, 1);
    EXPECT_FALSE(session.goToCurrentDipole());
    expectPlace(session.crosshair(), {10, 20, 30});
  }
  viewer.set->cleanDipoles();
  EXPECT_FALSE(session.goToCurrentDipole());
}

TEST(SessionColours, ByClusterFollowTheSetTheFilterAndTheRule) {
  Viewer viewer(7);
  Session& session = viewer.session;
  for (int slot = 0; slot < 7; ++slot) {
    viewer.set->m_dipoles[slot]->m_location[0] = slot;
    viewer.set->m_dipoles[slot]->m_location[1] = 0.0;
    viewer.set->m_dipoles[slot]->m_location[2] = 0.0;
    viewer.set->m_dipoles[slot]->m_fitError = slot;
  }
  session.noteChange();
  session.view().colourBy = host::ColourBy::cluster;
  const auto lines = [&] {
    std::vector<std::string> texts;
    for (const auto& line : std::get<host::ClusterColors>(*session.colours()).lines()) {
      texts.push_back(line.text);
    }
    return texts;
  };
  EXPECT_EQ(lines(), (std::vector<std::string>{"1 (7)", "in none (0)"}));
  viewer.set->m_dipoles[6]->m_location[0] = 50.0;
  session.noteChange();
  EXPECT_EQ(lines(), (std::vector<std::string>{"1 (6)", "in none (1)"}));
  session.view().filter.fitError.most = 4.0;
  EXPECT_EQ(lines(), (std::vector<std::string>{"in none (5)"}));
  session.view().clusters.members = 5;
  EXPECT_EQ(lines(), (std::vector<std::string>{"1 (5)", "in none (0)"}));
  session.view().filter = {};
  session.undo();
  EXPECT_EQ(lines(), (std::vector<std::string>{"1 (7)", "in none (0)"}));
  const host::DipoleColors* const before = session.colours();
  EXPECT_EQ(session.colours(), before);
}

TEST(SessionColours, FollowTheSettingAndTheSet) {
  Viewer viewer(3);
  Session& session = viewer.session;
  EXPECT_EQ(session.colours(), nullptr);
  session.view().colourBy = host::ColourBy::latency;
  for (int slot = 0; slot < 3; ++slot) {
    viewer.set->m_dipoles[slot]->m_latency = 10.0 * slot;
  }
  session.noteChange();
  ASSERT_NE(session.colours(), nullptr);
  EXPECT_EQ(std::get<host::ValueColors>(*session.colours()).title(), "latency (ms)");
  EXPECT_EQ(std::get<host::ValueColors>(*session.colours()).range()->high, 20.0);
  viewer.set->m_dipoles[1]->m_latency = 99.0;
  session.noteChange();
  EXPECT_EQ(std::get<host::ValueColors>(*session.colours()).range()->high, 99.0);
  session.undo();
  EXPECT_EQ(std::get<host::ValueColors>(*session.colours()).range()->high, 20.0);
  session.redo();
  EXPECT_EQ(std::get<host::ValueColors>(*session.colours()).range()->high, 99.0);
  session.view().colourBy = host::ColourBy::fitError;
  EXPECT_EQ(std::get<host::ValueColors>(*session.colours()).title(), "fit error (%)");
  session.newSet();
  EXPECT_FALSE(std::get<host::ValueColors>(*session.colours()).range().has_value());
  session.view().colourBy = host::ColourBy::own;
  EXPECT_EQ(session.colours(), nullptr);
}
