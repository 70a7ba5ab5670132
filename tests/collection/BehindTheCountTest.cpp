// Claim: what a moving-dipole import leaves behind the count belongs to no operation on the whole set: it is
// neither counted, nor found, nor changed, nor made current.
#include "collection/DipoleFace3On3DView.h"
#include "tests/collection/FaceFixture.h"

namespace {

// Three dipoles, of which the last stands behind the count: at (2, 20, 200), with the identifier 2.
class BehindTheCount : public testing::Test {
 protected:
  BehindTheCount() {
    for (int n = 0; n < 3; ++n) {
      const auto value = static_cast<float>(n);
      face->addDipoleF(value, 10.0F * value, 100.0F * value);
      face->getDipole(-1)->m_id = n;
    }
    leaveBehindCount(*face, 1);
    face->m_currentDipole = 0;
  }

  CDipoleszq& leftover() { return *face->m_dipoles[2]; }

  std::unique_ptr<CDipoleFace3On3DView> face = std::make_unique<CDipoleFace3On3DView>();
};

}  // namespace

TEST_F(BehindTheCount, NothingIsShownHiddenOrCounted) {
  EXPECT_EQ(face->getTotalDipolesShowed(), 2);
  face->setShowAllDipole(0);
  face->setShowDipoleOrientationAll(0);
  EXPECT_EQ(leftover().m_show, 1);
  EXPECT_EQ(leftover().m_showOrientation, 1);
}

TEST_F(BehindTheCount, NothingBecomesCurrentWhenTheCurrentOneIsHidden) {
  face->setShowDipole(0, 0);
  EXPECT_EQ(face->m_currentDipole, 1);
  face->setShowDipole(1, 0);
  EXPECT_EQ(face->m_currentDipole, 1);
}

TEST_F(BehindTheCount, NothingIsFoundByItsLatency) {
  leftover().m_latency = 500.0;
  double place[3];
  EXPECT_EQ(face->getDipoleXYZ4Latency(499.0, 501.0, place[0], place[1], place[2]), 0);
}

TEST_F(BehindTheCount, NothingIsPicked) {
  face->m_totalDipoles = 0;
  const double point[3] = {};
  float color[3];
  EXPECT_EQ(face->getDipolePtColorF(point, color), 0);
}

TEST_F(BehindTheCount, NothingCountsForTheRange) {
  EXPECT_EQ(face->getMaxDipoleRange(), 100.0F);
}

TEST_F(BehindTheCount, NothingIsBackedUpOrPutBack) {
  leftover().m_rawLocation.m_center[0] = 9.0;
  const CFiducialzq mri;
  const CSpherezq sphere;
  face->transferDipole3D_MRIFit(&mri, true, nullptr, &sphere, 1, 1, 1, 1.0F, 1.0F, 1.0F);
  EXPECT_EQ(face->getDipole(1)->m_rawLocation.m_radius, 1.0);
  EXPECT_EQ(leftover().m_rawLocation.m_radius, 0.0);
  EXPECT_EQ(leftover().m_location[0], 2.0);
}

TEST_F(BehindTheCount, NothingIsSortedNumberedOrMovedToTheFront) {
  leftover().m_number = -7;
  face->getDipole(0)->m_number = 5;
  face->getDipole(1)->m_number = 4;
  face->sortDipoles(0);
  EXPECT_EQ(idsOf(*face), (Ids{1, 0}));
  EXPECT_EQ(leftover().m_id, 2);
  face->reOrderDipoles();
  EXPECT_EQ(numbersOf(*face), (Ids{1, 2}));
  EXPECT_EQ(leftover().m_number, -7);
  face->reSortDipoles();
  EXPECT_EQ(face->m_totalDipoles, 2);
}
