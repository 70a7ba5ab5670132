// What is told of the crosshair's place: of every frame that is known, and of no other.
#include <gtest/gtest.h>
#include <memory>
#include <string>

#include "host/session/PlaceTexts.h"
#include "tests/host/head/CtfFile.h"
#include "tests/host/session/SmallMri.h"
#include "tests/host/text/Failing.h"
#include "tests/support/ScriptedOperator.h"
#include "tests/support/TempFolder.h"

namespace {

class CrosshairPlaces : public testing::Test {
 protected:
  void open(const std::string& name, const std::string& bytes) {
    m_session.openMri(m_folder.write(name, bytes));
  }
  host::PlaceTexts texts() const { return placeTexts(m_session); }

  TempFolder m_folder;
  ScriptedOperator m_user;
  std::unique_ptr<CDipoleFace9File> m_set = std::make_unique<CDipoleFace9File>();
  host::Session m_session{*m_set};
};

TEST_F(CrosshairPlaces, SidesStandInsteadOfSigns) {
  EXPECT_EQ(host::headPlaceText({1.25, -2, 3}), "L 1.2  I 2.0  A 3.0 mm");
  EXPECT_EQ(host::headPlaceText({-1, 2, -3}), "R 1.0  S 2.0  P 3.0 mm");
  EXPECT_EQ(host::headPlaceText({-0.04, -0.0, 0}), "L 0.0  S 0.0  A 0.0 mm");
}

TEST_F(CrosshairPlaces, ThePhantomHasNoScannerAndNoMni) {
  EXPECT_NE(texts().head, "");
  EXPECT_EQ(texts().scanner, "");
  EXPECT_NE(failureOf([&] { m_session.setMni({}); }), "");
  EXPECT_EQ(texts().mni, "");
}

TEST_F(CrosshairPlaces, ScannerPlacesAreThoseOfTheMriWhetherRegisteredOrNot) {
  open("head.nii", mri());
  m_session.setCrosshair(m_session.head().frame.fromScanner({11, -12, 13}));
  EXPECT_EQ(texts().scanner, "R 11.0  P 12.0  S 13.0 mm");
  EXPECT_NE(texts().head.find("from the middle of the MRI"), std::string::npos);
  m_session.registerHead({{0, 95, -20}, {-75, -10, -40}, {75, -10, -40}});
  EXPECT_EQ(texts().scanner, "R 11.0  P 12.0  S 13.0 mm");
  EXPECT_EQ(texts().head.find("from the middle"), std::string::npos);
}

TEST_F(CrosshairPlaces, MillimetresAreCalledTheScannersOnlyWhenTheFileSaysSo) {
  open("head.nii", mri());
  EXPECT_EQ(texts().scannerName, "Scanner");
  std::string bytes = mri();
  put(bytes, 254, std::int16_t{4}, std::endian::little);
  open("mni.nii", bytes);
  EXPECT_NE(texts().scanner, "");
  EXPECT_EQ(texts().scannerName, "MRI");
}

TEST_F(CrosshairPlaces, ACtfMriHasNoScannerCoordinates) {
  open("head.mri", CtfFile().bytes());
  ASSERT_TRUE(m_session.head().isRegistered());
  EXPECT_EQ(texts().scanner, "");
  EXPECT_EQ(failureOf([&] { m_session.setMni({}); }),
            "head.mri has no scanner coordinates that could lead to MNI");
}

TEST_F(CrosshairPlaces, MniIsToldWithItsSpaceByStatementOrFileAndForgottenWithTheHead) {
  open("head.nii", mri());
  m_session.setCrosshair(m_session.head().frame.fromScanner({11, -12, 13}));
  EXPECT_EQ(texts().mni, "");  // nothing is guessed
  m_session.setMni({host::Affine(), "MNI152"});
  EXPECT_EQ(texts().mni, "MNI152  11.0  -12.0  13.0 mm");
  m_session.setMni({host::Affine(), ""});
  EXPECT_EQ(texts().mni, "MNI (which one is not known)  11.0  -12.0  13.0 mm");
  m_session.readMni(m_folder.write(
      "talairach.xfm",
      "MNI Transform File\nTransform_Type = Linear;\nLinear_Transform =\n1 0 0 1\n0 1 0 2\n0 0 2 3;\n"));
  EXPECT_EQ(texts().mni, "MNI305  12.0  -10.0  29.0 mm");
  EXPECT_EQ(m_session.knownHead().mni->space, "MNI305");
  EXPECT_NE(failureOf([&] { m_session.readMni(m_folder.write("bad.xfm", "1 2 3")); }), "");
  EXPECT_EQ(texts().mni, "MNI305  12.0  -10.0  29.0 mm");  // as it was
  m_session.forgetMni();
  EXPECT_EQ(texts().mni, "");
  m_session.setMni({host::Affine(), "MNI152"});
  open("other.nii", mri());
  EXPECT_EQ(texts().mni, "");
}

// Labels need MNI places of a registered head; what is missing is told instead.
TEST_F(CrosshairPlaces, AnAtlasTellsLabelsOnlyWhereTheMniPlaceIsKnown) {
  NiftiFile labels;
  labels.dim = {3, 3, 3, 3, 1, 1, 1, 1};
  labels.type = 2;
  labels.pixdim = {1, 10, 10, 10, 0, 0, 0, 0};
  labels.sformCode = 4;
  labels.srow = {10, 0, 0, -10, 0, 10, 0, -10, 0, 0, 10, -10};
  labels.voxels = std::string(27, '\1');
  m_folder.write("own.nii", labels.version1());
  m_folder.write("own.nii.txt", "1 Middle\tpart\n");
  m_session.readAtlas(m_folder.pathUtf8("own.nii"));
  EXPECT_EQ(texts().label, "own: needs a registered head and its MNI coordinates");
  m_folder.write("head.fiducials", points);
  open("head.nii", mri());
  m_session.setMni({host::Affine(), "MNI152"});
  m_session.setCrosshair(m_session.head().frame.fromScanner({0, 0, 0}));
  EXPECT_EQ(texts().label.find("own: Middle"), 0U) << texts().label;
  EXPECT_EQ(texts().label.find('\t'), std::string::npos);
  // Nobody named the atlas' space: it may be another one, or not.
  EXPECT_NE(texts().label.find("its space is not known to be the same, may be some mm off"),
            std::string::npos);
  m_session.setCrosshair(m_session.head().frame.fromScanner({25, 0, 0}));
  EXPECT_EQ(texts().label.find("own: near Middle"), 0U) << texts().label;
  EXPECT_NE(failureOf([&] { m_session.readAtlas(m_folder.pathUtf8("head.nii")); }), "");
  EXPECT_EQ(m_session.atlas()->name(), "own");
  m_session.usePhantom();
  EXPECT_EQ(texts().label, "own: needs a registered head and its MNI coordinates");
  m_session.forgetAtlas();
  EXPECT_EQ(texts().label, "");
}

}  // namespace
