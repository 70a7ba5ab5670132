// A set is told in each of its frames, orientations turned with the places, and transforms to MNI mean what
// their programs mean.
#include <cmath>
#include <gtest/gtest.h>
#include <stdexcept>
#include <string>

#include "host/exchange/SetFrame.h"
#include "host/head/NeuromagFrame.h"
#include "host/text/PathText.h"
#include "tests/host/text/Failing.h"
#include "tests/support/TempFolder.h"

namespace {

using host::FrameName;
using host::KnownHead;
using host::mniMapOf;
using host::Vector3;

const host::Fiducials crooked{{5, 100, 10}, {-75, -5, 0}, {75, 5, 0}};

void expectNear(const Vector3& found, const Vector3& expected) {
  EXPECT_NEAR(found.x, expected.x, 1e-9);
  EXPECT_NEAR(found.y, expected.y, 1e-9);
  EXPECT_NEAR(found.z, expected.z, 1e-9);
}

std::string causeOf(const std::string& text) {
  try {
    (void)mniMapOf(text);
  } catch (const std::invalid_argument& error) {
    return error.what();
  }
  return "was taken";
}

std::string causeOf(FrameName name, const KnownHead& head) {
  try {
    (void)frameNamed(name, head);
  } catch (const std::runtime_error& error) {
    return error.what();
  }
  return "was taken";
}

}  // namespace

TEST(SetFrame, EachNamesItsAxesInTheTitles) {
  const KnownHead head{crooked, host::MniMap{{}, "MNI152"}};
  const auto first = [&](FrameName name) { return frameNamed(name, head).titles(); };
  EXPECT_EQ(first(FrameName::host)[0], "");
  EXPECT_EQ(first(FrameName::ctf)[0], "ctf_x_front_mm");
  EXPECT_EQ(first(FrameName::ctf)[4], "ctf_orientation_y_left");
  EXPECT_EQ(first(FrameName::neuromag)[1], "neuromag_y_front_mm");
  EXPECT_EQ(first(FrameName::scanner)[2], "scanner_z_up_mm");
  EXPECT_EQ(first(FrameName::mni)[0], "mni152_x_right_mm");
}

TEST(SetFrame, MapsPlacesAsItsNameSays) {
  const KnownHead head{crooked, {}};
  const host::HeadFrame frame(crooked);
  const Vector3 place{1, 2, 3};  // left, up, front
  expectNear(frameNamed(FrameName::host, head).fromHost(place), place);
  expectNear(frameNamed(FrameName::ctf, head).fromHost(place), {3, 1, 2});
  expectNear(frameNamed(FrameName::scanner, head).fromHost(place), frame.toScanner(place));
  expectNear(frameNamed(FrameName::neuromag, head).fromHost(place), host::headToNeuromag(crooked)(place));
  expectNear(frameNamed(FrameName::neuromag, {}).fromHost(place), {-1, 3, 2});
  EXPECT_TRUE(frameNamed(FrameName::neuromag, {}).isSymmetric);
  expectNear(host::patientFrame(head).fromHost(place), frame.toScanner(place));
  expectNear(host::patientFrame({}).fromHost(place), {-1, 3, 2});
}

TEST(SetFrame, RefusesWhatTheHeadIsNotKnownWellEnoughFor) {
  EXPECT_EQ(causeOf(FrameName::scanner, {}),
            "the scanner frame needs the fiducial points of the head, which are not known");
  EXPECT_EQ(causeOf(FrameName::mni, {crooked, {}}),
            "the MNI frame needs a transform to it, or the word that the head is in it (--mni)");
  EXPECT_EQ(causeOf(FrameName::mni, {{}, host::MniMap()}),
            "the MNI frame needs the fiducial points of the head, which are not known");
}

// Of a CTF MRI: its millimetres are those around its middle.
TEST(SetFrame, OfAnMriWithoutScannerCoordinatesIsNeverCalledTheScanners) {
  KnownHead head{crooked, {}};
  head.space = host::MriSpace::middle;
  EXPECT_NE(causeOf(FrameName::scanner, head).find("the MRI has no scanner coordinates"), std::string::npos);
  head.mni = host::MniMap();
  EXPECT_NE(causeOf(FrameName::mni, head).find("is not in MNI space as it is"), std::string::npos);
  head.mni->fromScanner = host::Affine({1, 0, 0}, {0, 1, 0}, {0, 0, 1}, {1, 2, 3});
  EXPECT_EQ(causeOf(FrameName::mni, head), "was taken");  // made from this MRI
  const host::SetFrame own = host::patientFrame(head);
  EXPECT_EQ(own.description, "MRI, around its middle, not the scanner's: x right, y front, z up");
  EXPECT_EQ(own.titles()[0], "mri_x_right_mm");
  EXPECT_STREQ(own.pointsTitle(), "fiducials_mri_mm");
  expectNear(own.fromHost({1, 2, 3}), host::HeadFrame(crooked).toScanner({1, 2, 3}));
  EXPECT_STREQ(frameNamed(FrameName::neuromag, head).pointsTitle(), "fiducials_mri_mm");
  EXPECT_STREQ(frameNamed(FrameName::neuromag, {crooked, {}}).pointsTitle(), "fiducials_scanner_mm");
}

TEST(SetFrame, MillimetresThatTheFileCallsOthersAreNeverCalledTheScanners) {
  KnownHead head{crooked, host::MniMap()};
  for (const auto& [code, said] :
       {std::pair{2, "another image"}, {3, "Talairach"}, {4, "MNI"}, {9, "not known"}}) {
    head.space = static_cast<host::MriSpace>(code);
    const host::SetFrame own = frameNamed(FrameName::scanner, head);
    EXPECT_EQ(own.description.find("MRI, "), 0U);
    EXPECT_NE(own.description.find(said), std::string::npos) << own.description;
    EXPECT_EQ(own.titles()[0], "mri_x_right_mm");
    EXPECT_STREQ(own.pointsTitle(), "fiducials_mri_mm");
    expectNear(own.fromHost({1, 2, 3}), host::HeadFrame(crooked).toScanner({1, 2, 3}));
    EXPECT_EQ(causeOf(FrameName::mni, head), "was taken");
  }
}

TEST(SetFrame, TurnsOrientationsAndKeepsTheirLengthAndTheSet) {
  const auto set = std::make_unique<CDipoleFace9File>();
  for (int i = 0; i < 3; ++i) {
    set->addDipole();
  }
  set->m_dipoles[0]->setDipoleOrientation(0, 0, 2);
  set->m_dipoles[1]->setDipoleOrientation(0, 0, 0);
  set->deleteDipole(2, 0);
  const host::Affine stretched({2, 0, 0}, {0, 3, 0}, {0, 0, 4}, {7, 0, 0});
  const host::SetFrame frame = frameNamed(FrameName::mni, {crooked, host::MniMap{stretched, "MNI305"}});
  const auto turned = inFrame(*set, frame);
  const double* const d = turned->m_dipoles[0]->m_orientation;
  EXPECT_NEAR(length(Vector3{d[0], d[1], d[2]}), 2.0, 1e-12);
  const Vector3 front = host::turned(host::HeadFrame(crooked).toScanner(), {0, 0, 1});
  const Vector3 expected = Vector3{front.x * 2, front.y * 3, front.z * 4};
  expectNear({d[0], d[1], d[2]}, expected * (2.0 / length(expected)));
  EXPECT_EQ(turned->m_dipoles[1]->m_orientation[0], 0.0);
  EXPECT_EQ(turned->m_dipoles[2], nullptr);
  EXPECT_EQ(set->m_dipoles[0]->m_orientation[2], 2.0);
}

TEST(MniMap, OfFreeSurferLeadsToMni305) {
  const host::MniMap map = mniMapOf(
      "MNI Transform File\n% a comment 1 2\n\nTransform_Type = Linear;\nLinear_Transform =\n"
      "1.1 0 0 5\n0 1.2 0.1 -6\n0 0 1.3 7;\n");
  EXPECT_EQ(map.space, "MNI305");
  EXPECT_EQ(map.assumed, "");
  expectNear(map.fromScanner({10, 20, 30}), {16, 21, 46});
}

TEST(MniMap, OfAMatrixIsTakenAsItStands) {
  const host::MniMap map = mniMapOf("1 0 0 5\r\n0 1 0 6\r\n0 0 1 7\r\n0 0 0 1\r\n");
  EXPECT_EQ(map.space, "");
  EXPECT_NE(map.assumed.find("flirt"), std::string::npos);
  expectNear(map.fromScanner({1, 2, 3}), {6, 8, 10});
}

// A head (moving) registered to MNI (fixed): the file maps points of MNI to the head, to the left and back.
// The numbers were worked out by hand: MNI (0, 0, 0) lies at the head's left 1, back 2, up 3.
TEST(MniMap, OfItkIsTurnedRoundAndFromLeftBackToRightFront) {
  const std::string head =
      "#Insight Transform File V1.0\n#Transform 0\nTransform: AffineTransform_double_3_3\n";
  const host::MniMap shift = mniMapOf(head + "Parameters: 1 0 0 0 1 0 0 0 1 1 2 3\nFixedParameters: 0 0 0\n");
  expectNear(shift.fromScanner({-1, -2, 3}), {0, 0, 0});
  // About the centre (10, 0, 0) to the left: a turn by 30 degrees about the vertical.
  const host::MniMap turn =
      mniMapOf(head +
               "Parameters: 0.8660254037844386 -0.5 0 0.5 0.8660254037844386 0 0 0 1 0 0 0\n"
               "FixedParameters: 10 0 0\n");
  expectNear(turn.fromScanner({-10, 0, 5}), {-10, 0, 5});  // the centre stays
  // (20, 0, 0) goes to (10 + 10 cos 30, 10 sin 30, 0), both to the left and back.
  expectNear(turn.fromScanner({-18.660254037844386, -5, 0}), {-20, 0, 0});
}

TEST(MniMap, RefusesWhatItDoesNotKnow) {
  EXPECT_EQ(causeOf("1 2 3"), "it is neither an MNI transform nor one of ITK, and has 3 numbers, not 16");
  EXPECT_EQ(causeOf("words"), "\"words\" is no number");
  EXPECT_EQ(causeOf("1 0 0 0 0 1 0 0 0 0 1 0 0 0 1 1"), "the last row of the matrix is not 0 0 0 1");
  EXPECT_EQ(causeOf("1 0 0 0 0 1 0 0 1 1 0 0 0 0 0 1"), "the matrix has no inverse");
  EXPECT_EQ(causeOf("MNI Transform File\n% Linear_Transform = 1 2 3;\n"), "the MNI transform is not linear");
  EXPECT_EQ(causeOf("MNI Transform File\nLinear_Transform =\n1 2 3;\n"),
            "the MNI transform has 3 numbers, not 12");
  EXPECT_EQ(causeOf("#Insight Transform File V1.0\nTransform: Euler3DTransform_double_3_3\nParameters: 1\n"),
            "the ITK transform is not one affine map of 12 parameters");
}

TEST(MniMap, RefusesHeadsThatAreTurnedRoundOrFarAway) {
  const std::string cause = "the matrix turns the head round: right, front and up do not stay where they are";
  EXPECT_EQ(causeOf("-1 0 0 0 0 -1 0 0 0 0 1 0 0 0 0 1"), cause);  // to the left and back
  EXPECT_EQ(causeOf("0 -1 0 0 1 0 0 0 0 0 1 0 0 0 0 1"), cause);
  EXPECT_EQ(causeOf("0.6 -0.8 0 0 0.8 0.6 0 0 0 0 1 0 0 0 0 1"), "was taken");  // 53 degrees
  EXPECT_EQ(causeOf("1 0 0 300 0 1 0 300 0 0 1 264 0 0 0 1"), "was taken");
  EXPECT_EQ(causeOf("1 0 0 300 0 1 0 300 0 0 1 265 0 0 0 1"),
            "the matrix shifts the head by more than 500 mm");
}

TEST(MniMap, RefusesMoreThanOneMapAndWhatTurnsItRound) {
  const std::string start = "MNI Transform File\r\n% Linear_Transform = 9;\r\n";
  const std::string map = "Linear_Transform =\r\n1 0 0 5 % right\r\n0 1 0 6\r\n0 0 1 7;\r\n";
  const std::string linear = "Transform_Type = Linear;\r\n" + map;
  expectNear(mniMapOf(start + linear).fromScanner({1, 2, 3}), {6, 8, 10});
  const std::string cause = "the MNI transform is not one linear map: it says ";
  EXPECT_EQ(causeOf(start + linear + linear), cause + "\"Transform_Type = Linear\"");
  EXPECT_EQ(causeOf(start + linear + "Transform_Type = Grid_Transform;\n"),
            cause + "\"Transform_Type = Grid_Transform\"");
  EXPECT_EQ(causeOf(start + "Transform_Type = Linear;\nInvert_Flag = True;\n" + map),
            cause + "\"Invert_Flag = True\"");
  EXPECT_EQ(causeOf(start + linear + map).substr(0, cause.size()), cause);
}

TEST(MniMap, OfItkIsOneOfTheAffineKinds) {
  const std::string start = "#Insight Transform File V1.0\n";
  const std::string rest = "_double_3_3\nParameters: 1 0 0 0 1 0 0 0 1 1 2 3\nFixedParameters: 0 0 0\n";
  const std::string one = "#Transform 0\nTransform: MatrixOffsetTransformBase" + rest;
  expectNear(mniMapOf(start + one).fromScanner({-1, -2, 3}), {0, 0, 0});
  const std::string cause = "the ITK transform is not one affine map of 12 parameters";
  EXPECT_EQ(causeOf(start + one + one), cause);
  EXPECT_EQ(causeOf(start + "#Transform 0\nTransform: CenteredAffineTransform" + rest), cause);
  EXPECT_EQ(causeOf(start + "#Transform 0\nTransform: AffineTransform_double_2_2\n"), cause);
}

TEST(MniMap, RefusesToMirrorAHeadAndToMeasureItInOtherThanMm) {
  const std::string mirrors = "the matrix mirrors the head: it exchanges left and right";
  EXPECT_EQ(causeOf("-1 0 0 0\n0 1 0 0\n0 0 1 0\n0 0 0 1\n"), mirrors);
  EXPECT_EQ(
      causeOf(
          "MNI Transform File\nTransform_Type = Linear;\nLinear_Transform =\n-1 0 0 0 0 1 0 0 0 0 1 0;\n"),
      mirrors);
  EXPECT_EQ(causeOf("#Insight Transform File V1.0\nTransform: AffineTransform_double_3_3\n"
                    "Parameters: 1 0 0 0 -1 0 0 0 1 0 0 0\nFixedParameters: 0 0 0\n"),
            mirrors);
  EXPECT_EQ(causeOf("0.001 0 0 0\n0 0.001 0 0\n0 0 0.001 0\n0 0 0 1\n"),
            "the matrix makes 0.001 mm of a mm, which maps no head in mm to another");
  EXPECT_EQ(causeOf("1 0 0 0\n0 3.1 0 0\n0 0 1 0\n0 0 0 1\n"),
            "the matrix makes 3.100 mm of a mm, which maps no head in mm to another");
}

TEST(MniMap, OfAFileIsReadUpTo64KiB) {
  const TempFolder folder;
  std::string text = "1 0 0 5\n0 1 0 6\n0 0 1 7\n0 0 0 1\n";
  text.resize(65536, ' ');
  const auto read = [&] { return host::readMniMap(host::pathOf(folder.write("map.txt", text))); };
  expectNear(read().fromScanner({1, 2, 3}), {6, 8, 10});
  text += ' ';
  EXPECT_EQ(failureOf([&] { (void)read(); }),
            host::utf8Of(folder.path("map.txt")) + ": there are more than 64 KiB of it");
}
