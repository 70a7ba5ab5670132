// Claim: the answers for the 3D view are those of their description around the inert display coordinates,
// which are whatever the outputs held.
#include "collection/DipoleFace3On3DView.h"
#include "tests/collection/FaceFixture.h"

namespace {

struct Face : CDipoleFace3On3DView {
  using CDipoleFace3On3DView::showCurrentDipole;
};

std::unique_ptr<Face> faceWith(int count) {
  auto face = std::make_unique<Face>();
  for (int i = 0; i < count; ++i) {
    face->addDipoleF(50.0F + static_cast<float>(i), 60.0F, 70.0F);
    face->getDipole(-1)->m_id = i;
    face->setDipoleColor(-1, RGB(64 * i, 128, 0));
  }
  return face;
}

using Color = std::vector<float>;

Color pick(Face& face, double x, double y, double z, int expected) {
  const double point[3] = {x, y, z};
  float color[3] = {9.0F, 9.0F, 9.0F};
  EXPECT_EQ(face.getDipolePtColorF(point, color), expected);
  return {color[0], color[1], color[2]};
}

}  // namespace

TEST(View3D, StartsWithAllDipolesAndAMergeRadiusOf15) {
  const auto face = faceWith(0);
  EXPECT_EQ(face->m_showCurrentDipoleOnly, 0);
  EXPECT_EQ(face->m_mergeRadius, 15.0F);
  EXPECT_EQ(face->getShowFiducialPt(), 1);
}

TEST(View3D, CurrentDipoleKeepsTheCallersCoordinates) {
  const auto face = faceWith(1);
  double x = 1.5;
  double y = 2.5;
  double z = 3.5;
  EXPECT_EQ(face->getCurrentDipoleXYZ(x, y, z), 1);
  EXPECT_EQ(faceWith(0)->getCurrentDipoleXYZ(x, y, z), 1);
  const auto hole = faceWith(2);
  hole->deleteDipole(1, 0);
  EXPECT_EQ(hole->m_currentDipole, 1);
  EXPECT_EQ(hole->getCurrentDipoleXYZ(x, y, z), 1);
  EXPECT_EQ(x, 1.5);
  EXPECT_EQ(y, 2.5);
  EXPECT_EQ(z, 3.5);
}

TEST(PickedColour, IsThatOfTheLowestSlotAmongEquals) {
  const auto face = faceWith(3);
  // Every display coordinate is 0: all three are equally near.
  EXPECT_EQ(pick(*face, 10.0, 0.0, 0.0, 1), (Color{0.0F, 0.5F, 0.0F}));
  face->deleteDipole(0, 0);
  EXPECT_EQ(pick(*face, 10.0, 0.0, 0.0, 1), (Color{0.25F, 0.5F, 0.0F}));
}

TEST(PickedColour, NeedsEveryAxisWithinTheMergeRadius) {
  const auto face = faceWith(1);
  pick(*face, 15.0, -15.0, 15.0, 1);  // the box includes its faces
  EXPECT_EQ(pick(*face, 20.0, 0.0, 0.0, 0), (Color{0.0F, 0.0F, 0.0F}));
  pick(*face, 0.0, 15.001, 0.0, 0);
  pick(*face, 0.0, 0.0, -15.001, 0);
}

TEST(PickedColour, OfTheCurrentDipoleAloneNeedsOnlyTwiceTheMergeRadius) {
  const auto face = faceWith(2);
  face->setShowCurrentDipoleOnly(1);
  EXPECT_EQ(pick(*face, 20.0, 0.0, 0.0, 1), (Color{0.25F, 0.5F, 0.0F}));
  pick(*face, 29.99, 0.0, 0.0, 1);
  pick(*face, 30.0, 0.0, 0.0, 0);
  face->m_currentDipole = -1;
  pick(*face, 0.0, 0.0, 0.0, 0);
}

TEST(PickedColour, FollowsTheMergeRadiusThatTheHostSets) {
  const auto face = faceWith(1);
  face->m_mergeRadius = 4.0F;
  pick(*face, 4.0, -4.0, 4.0, 1);  // 6.9 away, which twice the radius still holds
  pick(*face, 4.001, 0.0, 0.0, 0);
  face->setShowCurrentDipoleOnly(1);
  pick(*face, 7.999, 0.0, 0.0, 1);
  pick(*face, 8.0, 0.0, 0.0, 0);
  face->m_mergeRadius = 40.0F;
  pick(*face, 0.0, 79.0, 0.0, 1);
  face->setShowCurrentDipoleOnly(0);
  pick(*face, 0.0, 40.0, 0.0, 1);
  pick(*face, 0.0, 41.0, 0.0, 0);
  face->m_mergeRadius = 0.0F;
  pick(*face, 0.0, 0.0, 0.0, 0);  // nearer than 0 is nothing
}

TEST(PickedColour, OfAnEmptyCurrentSlotAloneIsNone) {
  const auto face = faceWith(2);
  face->deleteDipole(1, 0);
  face->setShowCurrentDipoleOnly(1);
  EXPECT_EQ(face->m_currentDipole, 1);
  EXPECT_EQ(pick(*face, 0.0, 0.0, 0.0, 0), (Color{0.0F, 0.0F, 0.0F}));
}

TEST(PickedColour, OfAnEmptySetIsNone) {
  EXPECT_EQ(pick(*faceWith(0), 0.0, 0.0, 0.0, 0), (Color{0.0F, 0.0F, 0.0F}));
}

TEST(Latency, FindsADipoleWithinBothEndsAndZeroesTheOutputs) {
  const auto face = faceWith(2);
  face->getDipole(0)->m_latency = 10.0;
  face->getDipole(1)->m_latency = 20.0;
  const auto found = [&](double low, double high) {
    double x = 1.0;
    double y = 1.0;
    double z = 1.0;
    const int result = face->getDipoleXYZ4Latency(low, high, x, y, z);
    EXPECT_EQ(x, 0.0);
    EXPECT_EQ(y, 0.0);
    EXPECT_EQ(z, 0.0);
    return result;
  };
  EXPECT_EQ(found(10.0, 10.0), 1);
  EXPECT_EQ(found(15.0, 20.0), 1);
  EXPECT_EQ(found(10.1, 19.9), 0);
  EXPECT_EQ(found(20.0, 10.0), 0);
  face->deleteDipole(0, 0);
  EXPECT_EQ(found(10.0, 10.0), 0);
}

TEST(Corner, KeepsTheCallersCoordinatesAndIsNoneForAnEmptySet) {
  double x = -5.0;
  double y = 6.0;
  double z = 7.0;
  EXPECT_EQ(faceWith(0)->getRightPosteriorInferiorDipole(x, y, z), 0);
  const auto face = faceWith(3);
  face->deleteDipole(0, 0);
  EXPECT_EQ(face->getRightPosteriorInferiorDipole(x, y, z), 1);
  EXPECT_EQ(x, -5.0);
  EXPECT_EQ(y, 6.0);
  EXPECT_EQ(z, 7.0);
}

TEST(Corner, OfASetOfHolesAloneIs1AndKeepsTheCallersCoordinates) {
  const auto face = faceWith(2);
  face->deleteDipole(0, 0);
  face->deleteDipole(1, 0);
  double x = -5.0;
  double y = 6.0;
  double z = 7.0;
  EXPECT_EQ(face->getRightPosteriorInferiorDipole(x, y, z), 1);
  EXPECT_EQ(x, -5.0);
  EXPECT_EQ(y, 6.0);
  EXPECT_EQ(z, 7.0);
}

TEST(Showed, CountsTheShownDipoles) {
  const auto face = faceWith(4);
  EXPECT_EQ(face->getTotalDipolesShowed(), 4);
  face->getDipole(2)->m_show = 0;
  face->deleteDipole(3, 0);
  EXPECT_EQ(face->getTotalDipolesShowed(), 2);
  face->m_currentDipole = 2;
  face->setShowCurrentDipoleOnly(1);
  EXPECT_EQ(face->getTotalDipolesShowed(), 1);  // although the current one is hidden
  face->setShowDipoleArray(0);
  EXPECT_EQ(face->getTotalDipolesShowed(), 0);
  EXPECT_EQ(faceWith(0)->getTotalDipolesShowed(), 0);
}

TEST(Showed, AreNoneOfAnEmptySetEvenOfItsCurrentDipoleAlone) {
  const auto face = faceWith(0);
  face->setShowCurrentDipoleOnly(1);
  EXPECT_EQ(face->getTotalDipolesShowed(), 0);
}

TEST(Showed, CountEveryValueOfTheFlagButZeroAsOne) {
  const auto face = faceWith(4);
  face->getDipole(0)->m_show = 2;
  face->getDipole(1)->m_show = -1;
  face->getDipole(2)->m_show = 0;
  EXPECT_EQ(face->getTotalDipolesShowed(), 3);
}

TEST(ShowDipole, StoresTheValueAsGivenAndMakesTheDipoleCurrent) {
  const auto face = faceWith(3);
  EXPECT_EQ(face->setShowDipole(0, 7), 1);
  EXPECT_EQ(face->getDipole(0)->m_show, 7);
  EXPECT_EQ(face->m_currentDipole, 0);
}

TEST(ShowDipole, OfMinusOneShowsTheCurrentOne) {
  const auto face = faceWith(3);
  face->setShowAllDipole(0);
  face->m_currentDipole = 1;
  EXPECT_EQ(face->setShowDipole(-1, 1), 1);
  EXPECT_EQ(face->getDipole(1)->m_show, 1);
  EXPECT_EQ(face->getTotalDipolesShowed(), 1);
  EXPECT_EQ(face->m_currentDipole, 1);
}

TEST(ShowDipole, HidingACurrentHoleMovesToTheLastShown) {
  const auto face = faceWith(4);
  face->deleteDipole(3, 0);
  EXPECT_EQ(face->m_currentDipole, 3);
  face->getDipole(2)->m_show = 0;
  EXPECT_EQ(face->setShowDipole(3, 0), 1);
  EXPECT_EQ(face->m_currentDipole, 1);
  EXPECT_EQ(face->getTotalDipolesShowed(), 2);
}

TEST(ShowDipole, HidingTheCurrentOneMovesToTheLastShown) {
  const auto face = faceWith(5);
  face->m_currentDipole = 1;
  face->getDipole(4)->m_show = 0;
  EXPECT_EQ(face->setShowDipole(-1, 0), 1);
  EXPECT_EQ(face->getDipole(1)->m_show, 0);
  EXPECT_EQ(face->m_currentDipole, 3);
  EXPECT_EQ(face->setShowDipole(0, 0), 1);  // not the current one
  EXPECT_EQ(face->m_currentDipole, 3);
}

TEST(ShowDipole, HidingAnotherThanTheCurrentOneKeepsTheCurrentOne) {
  const auto face = faceWith(4);
  face->m_currentDipole = 1;
  EXPECT_EQ(face->setShowDipole(2, 0), 1);
  EXPECT_EQ(face->m_currentDipole, 1);  // though slot 3 is the last one shown
  face->getDipole(1)->m_show = 0;
  EXPECT_EQ(face->setShowDipole(0, 0), 1);
  EXPECT_EQ(face->m_currentDipole, 1);
}

TEST(ShowDipole, HidingTheLastShownOneKeepsTheCurrentIndex) {
  const auto face = faceWith(1);
  EXPECT_EQ(face->setShowDipole(0, 0), 1);
  EXPECT_EQ(face->m_currentDipole, 0);
}

TEST(ShowDipole, OfNoDipoleIs0AndOfAnEmptySlot1) {
  const auto face = faceWith(3);
  EXPECT_EQ(face->setShowDipole(3, 1), 0);
  EXPECT_EQ(face->setShowDipole(-2, 1), 0);
  EXPECT_EQ(faceWith(0)->setShowDipole(-1, 1), 0);
  face->deleteDipole(0, 0);
  EXPECT_EQ(face->setShowDipole(0, 1), 1);
  EXPECT_EQ(face->m_currentDipole, 2);
  EXPECT_EQ(face->setShowDipole(0, 0), 1);
}

TEST(ShowAll, GivesEveryDipoleTheValue) {
  const auto face = faceWith(3);
  face->deleteDipole(1, 0);
  EXPECT_EQ(face->setShowAllDipole(0), 1);
  EXPECT_EQ(face->getTotalDipolesShowed(), 0);
  EXPECT_EQ(face->setShowAllDipole(2), 1);
  EXPECT_EQ(face->getDipole(2)->m_show, 2);
}

TEST(ShowAll, KeepsTheValueOfTheOrientationsForTheSetAndGivesItToEveryDipole) {
  const auto face = faceWith(3);
  face->deleteDipole(1, 0);
  for (const int value : {2, 0, 1}) {
    EXPECT_EQ(face->setShowDipoleOrientationAll(value), 1);
    EXPECT_EQ(face->m_showDipoleOrientationAll, value);
    EXPECT_EQ(face->getDipole(0)->m_showOrientation, value);
    EXPECT_EQ(face->getDipole(2)->m_showOrientation, value);
  }
}

TEST(ShowAll, AnswersByTheWholeSetsSwitchWhateverTheLatencies) {
  const auto face = faceWith(1);
  for (const int selected : {0, 1}) {
    face->setShowDipoleLatencySelected(selected);
    face->setShowDipoleArray(5);
    EXPECT_EQ(face->showAllDipole(), 1);
    EXPECT_EQ(face->showLatencySelectedDipoles(1.0F, 2.0F), 1);
    face->setShowDipoleArray(0);
    EXPECT_EQ(face->showAllDipole(), 0);
    EXPECT_EQ(face->showLatencySelectedDipoles(1.0F, 2.0F), 0);
  }
}

TEST(View3D, SettersAndInertOperationsReturn1) {
  const auto face = faceWith(1);
  EXPECT_EQ(face->setShowFiducialPt(3), 1);
  EXPECT_EQ(face->getShowFiducialPt(), 3);
  EXPECT_EQ(face->setShowCurrentDipoleOnly(2), 1);
  EXPECT_EQ(face->m_showCurrentDipoleOnly, 2);
  EXPECT_EQ(face->setDipoleMaterialParameters(nullptr), 1);
  EXPECT_EQ(face->showCurrentDipole(), 1);
  face->deleteDipole(0, 0);
  EXPECT_EQ(face->m_currentDipole, 0);
  EXPECT_EQ(face->showCurrentDipole(), 1);  // an empty slot
  EXPECT_EQ(faceWith(0)->showCurrentDipole(), 1);
}
