// Stepping through the dipoles and choosing the current one.
#include <climits>
#include <gtest/gtest.h>

#include "tests/collection/FaceFixture.h"

TEST(GetNextDipole, StepsForward) {
  const auto face = faceOf(3);
  face->setCurrentDipole(0);
  EXPECT_EQ(face->getNextDipole(), face->getDipole(1));
  EXPECT_EQ(face->getCurrentDipoleID(), 1);
}

TEST(GetNextDipole, OnTheLastDipoleGivesSlotZero) {
  const auto face = faceOf(3);
  EXPECT_EQ(face->getNextDipole(), face->getDipole(0));
  EXPECT_EQ(face->getCurrentDipoleID(), 0);
}

TEST(GetNextDipole, WithoutACurrentDipoleGivesSlotZero) {
  const auto face = faceOf(3);
  face->m_currentDipole = -1;
  EXPECT_EQ(face->getNextDipole(), face->getDipole(0));
}

TEST(GetNextDipole, StepsOntoAnEmptySlot) {
  const auto face = faceOf(3);
  face->setCurrentDipole(0);
  face->deleteDipole(1, 0);
  EXPECT_EQ(face->getNextDipole(), nullptr);
  EXPECT_EQ(face->getCurrentDipoleID(), 1);
}

TEST(GetNextDipole, FromAnyIndexThatIsNoSlotGivesSlotZero) {
  const auto face = faceOf(3);
  for (const int index : {INT_MIN, INT_MIN + 1, -2, 3, INT_MAX - 1, INT_MAX}) {
    face->m_currentDipole = index;
    EXPECT_EQ(face->getNextDipole(), face->getDipole(0)) << index;
    EXPECT_EQ(face->getCurrentDipoleID(), 0) << index;
  }
}

TEST(GetNextDipole, EmptyCollectionSaysSoAndGivesNull) {
  ScriptedOperator user;
  const auto face = std::make_unique<CDipoleFace>();
  EXPECT_EQ(face->getNextDipole(), nullptr);
  EXPECT_EQ(user.messages, (std::vector<ScriptedOperator::Message>{{"No dipole available", MB_OK}}));
  EXPECT_EQ(face->getCurrentDipoleID(), 0);
}

TEST(GetPreviousDipole, StepsBack) {
  const auto face = faceOf(3);
  EXPECT_EQ(face->getPreviousDipole(), face->getDipole(1));
  EXPECT_EQ(face->getCurrentDipoleID(), 1);
}

TEST(GetPreviousDipole, OnSlotZeroGivesTheLast) {
  const auto face = faceOf(3);
  face->setCurrentDipole(0);
  EXPECT_EQ(face->getPreviousDipole(), face->getDipole(2));
  EXPECT_EQ(face->getCurrentDipoleID(), 2);
}

TEST(GetPreviousDipole, WithoutACurrentDipoleGivesTheLast) {
  const auto face = faceOf(3);
  face->m_currentDipole = -1;
  EXPECT_EQ(face->getPreviousDipole(), face->getDipole(2));
}

TEST(GetPreviousDipole, FromBehindTheCountGivesTheLast) {
  const auto face = faceOf(5);
  leaveBehindCount(*face, 3);
  EXPECT_EQ(face->getPreviousDipole(), face->getDipole(1));
  EXPECT_EQ(face->getCurrentDipoleID(), 1);
}

TEST(GetPreviousDipole, FromAnyIndexThatIsNoSlotGivesTheLast) {
  const auto face = faceOf(3);
  for (const int index : {INT_MIN, INT_MIN + 1, -2, 3, 4, INT_MAX - 1, INT_MAX}) {
    face->m_currentDipole = index;
    EXPECT_EQ(face->getPreviousDipole(), face->getDipole(2)) << index;
    EXPECT_EQ(face->getCurrentDipoleID(), 2) << index;
  }
}

TEST(GetPreviousDipole, EmptyCollectionSaysSoAndGivesNull) {
  ScriptedOperator user;
  const auto face = std::make_unique<CDipoleFace>();
  EXPECT_EQ(face->getPreviousDipole(), nullptr);
  EXPECT_EQ(user.messages, (std::vector<ScriptedOperator::Message>{{"No dipole available", MB_OK}}));
  EXPECT_EQ(face->getCurrentDipoleID(), 0);
}

TEST(SetCurrentDipole, MakesAnIndexTheCurrentOne) {
  const auto face = faceOf(3);
  EXPECT_EQ(face->setCurrentDipole(1), 1);
  EXPECT_EQ(face->getCurrentDipoleID(), 1);
}

TEST(SetCurrentDipole, NegativeIndicesSelectTheFirst) {
  const auto face = faceOf(3);
  for (const int index : {-1, -5, INT_MIN}) {
    face->m_currentDipole = 2;
    EXPECT_EQ(face->setCurrentDipole(index), 1);
    EXPECT_EQ(face->getCurrentDipoleID(), 0) << index;
  }
}

TEST(SetCurrentDipole, IndicesBeyondTheEndSelectTheLast) {
  const auto face = faceOf(3);
  for (const int index : {3, 6, INT_MAX}) {
    face->m_currentDipole = 0;
    EXPECT_EQ(face->setCurrentDipole(index), 1);
    EXPECT_EQ(face->getCurrentDipoleID(), 2) << index;
  }
}

TEST(SetCurrentDipole, EmptyCollectionSaysSoAndGivesZero) {
  ScriptedOperator user;
  const auto face = std::make_unique<CDipoleFace>();
  EXPECT_EQ(face->setCurrentDipole(0), 0);
  EXPECT_EQ(user.messages, (std::vector<ScriptedOperator::Message>{{"No dipole available", MB_OK}}));
}
