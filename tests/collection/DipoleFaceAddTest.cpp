// Adding dipoles: the four ways, the capacity, exhausted memory.
#include <cmath>
#include <functional>
#include <gtest/gtest.h>
#include <limits>

#include "tests/collection/FaceFixture.h"
#include "tests/record/DipoleMembers.h"
#include "tests/support/FailingNew.h"
#include "tests/support/FreeLog.h"

namespace {

using Message = ScriptedOperator::Message;
using Messages = std::vector<Message>;

const double position[3] = {1.5, -2.5, 3.5};
const double momentVector[3] = {3.0, 0.0, -4.0};
const char* const longLabel = "a label that is far too long to be kept inside the object itself";

// A full collection, made once: filling one takes a while.
CDipoleFace& fullFace() {
  static const std::unique_ptr<CDipoleFace> face = faceOf(DipoleTable::capacity);
  return *face;
}

MemberValues defaults() {
  return membersOf(CDipoleszq());
}

}  // namespace

TEST(AddDipole, PutsADefaultDipoleAtTheRangeOfTheSet) {
  const auto face = std::make_unique<CDipoleFace>();
  face->m_allDipoleRange[0] = 7.0;
  face->m_allDipoleRange[1] = -8.0;
  face->m_allDipoleRange[2] = 9.5;
  EXPECT_EQ(face->addDipole(), 1);
  MemberValues expected = defaults();
  expected["m_location"] = "7 -8 9.5";
  EXPECT_EQ(membersOf(*face->getDipole(0)), expected);
}

TEST(AddDipole, OfAFreshCollectionLiesAtOneHundred) {
  const auto face = std::make_unique<CDipoleFace>();
  face->addDipole();
  EXPECT_EQ(membersOf(*face->getDipole(0)), defaults());
}

TEST(AddDipoleF, WidensTheFloats) {
  const auto face = std::make_unique<CDipoleFace>();
  EXPECT_EQ(face->addDipoleF(0.1F, -2.0F, 3.0F), 1);
  EXPECT_EQ(face->getDipole(0)->m_location[0], static_cast<double>(0.1F));
  EXPECT_EQ(face->getDipole(0)->m_location[1], -2.0);
  EXPECT_EQ(face->getDipole(0)->m_location[2], 3.0);
}

TEST(AddDipoleF, TheRestIsDefault) {
  const auto face = std::make_unique<CDipoleFace>();
  face->addDipoleF(1.0F, 2.0F, 3.0F);
  MemberValues expected = defaults();
  expected["m_location"] = "1 2 3";
  EXPECT_EQ(membersOf(*face->getDipole(0)), expected);
}

TEST(AddDipolePME, SplitsTheMomentIntoStrengthAndOrientation) {
  const auto face = std::make_unique<CDipoleFace>();
  EXPECT_EQ(face->addDipolePME(position, momentVector, 12.5), 1);
  MemberValues expected = defaults();
  expected["m_location"] = "1.5 -2.5 3.5";
  expected["m_moment"] = "5";
  expected["m_orientation"] = "0.59999999999999998 0 -0.80000000000000004";
  expected["m_fitError"] = "12.5";
  EXPECT_EQ(membersOf(*face->getDipole(0)), expected);
}

TEST(AddDipolePME, AZeroMomentGivesAnOrientationThatIsNoNumber) {
  const auto face = std::make_unique<CDipoleFace>();
  const double zero[3] = {0.0, 0.0, 0.0};
  EXPECT_EQ(face->addDipolePME(position, zero, 1.0), 1);
  EXPECT_EQ(face->getDipole(0)->m_moment, 0.0);
  for (const double component : face->getDipole(0)->m_orientation) {
    EXPECT_TRUE(std::isnan(component));
  }
}

TEST(AddDipolePME, ANullPointerGivesZeroWithoutAMessage) {
  ScriptedOperator user;
  const auto face = std::make_unique<CDipoleFace>();
  EXPECT_EQ(face->addDipolePME(nullptr, momentVector, 1.0), 0);
  EXPECT_EQ(face->addDipolePME(position, nullptr, 1.0), 0);
  EXPECT_EQ(face->addDipolePME(nullptr, nullptr, 1.0), 0);
  EXPECT_EQ(user.messages, Messages());
  EXPECT_EQ(face->getTotalDipoles(), 0UL);
}

TEST(AddDipolex, TakesOverWhatTheFinalAssignmentCopiesAndNoMore) {
  const auto face = std::make_unique<CDipoleFace>();
  CDipoleszq source;
  fillMembers(source);
  EXPECT_EQ(face->addDipolex(&source), 1);
  CDipoleszq expected;
  expected = source;
  EXPECT_EQ(membersOf(*face->getDipole(0)), membersOf(expected));
  EXPECT_FALSE(face->getDipole(0)->m_selected);
  EXPECT_EQ(face->getDipole(0)->m_rawLocation.m_radius, 0.0);
  EXPECT_EQ(face->getDipole(0)->m_dimX, 128);
}

TEST(AddDipolex, MakesAnObjectOfItsOwn) {
  const auto face = std::make_unique<CDipoleFace>();
  CDipoleszq source;
  face->addDipolex(&source);
  source.m_location[0] = -1.0;
  EXPECT_NE(face->getDipole(0), &source);
  EXPECT_EQ(face->getDipole(0)->m_location[0], 100.0);
}

TEST(AddDipolex, TakesADipoleOfTheCollectionItself) {
  const auto face = faceOf(2);
  EXPECT_EQ(face->addDipolex(face->getDipole(1)), 3);
  EXPECT_EQ(idsOf(*face), (Ids{0, 1, 1}));
  EXPECT_NE(face->getDipole(1), face->getDipole(2));
}

TEST(AddDipolex, TakesTheObjectThatLiesInItsSlot) {
  const auto face = faceOf(3);
  leaveBehindCount(*face, 1);
  EXPECT_EQ(face->addDipolex(face->m_dipoles[2]), 3);
  EXPECT_EQ(idsOf(*face), (Ids{0, 1, 2}));
}

TEST(AddDipolex, NullGivesZeroWithoutAMessage) {
  ScriptedOperator user;
  const auto face = std::make_unique<CDipoleFace>();
  EXPECT_EQ(face->addDipolex(nullptr), 0);
  EXPECT_EQ(user.messages, Messages());
  EXPECT_EQ(face->getTotalDipoles(), 0UL);
}

TEST(Adding, ReturnsTheNewCount) {
  const auto face = std::make_unique<CDipoleFace>();
  const CDipoleszq source;
  EXPECT_EQ(face->addDipole(), 1);
  EXPECT_EQ(face->addDipoleF(0.0F, 0.0F, 0.0F), 2);
  EXPECT_EQ(face->addDipolePME(position, momentVector, 0.0), 3);
  EXPECT_EQ(face->addDipolex(&source), 4);
  EXPECT_EQ(face->getTotalDipoles(), 4UL);
}

TEST(Adding, MakesTheNewDipoleTheCurrentOne) {
  const auto face = faceOf(3);
  const CDipoleszq source;
  const std::function<int()> ways[] = {[&] { return face->addDipole(); },
                                       [&] { return face->addDipoleF(0.0F, 0.0F, 0.0F); },
                                       [&] { return face->addDipolePME(position, momentVector, 0.0); },
                                       [&] { return face->addDipolex(&source); }};
  for (const auto& add : ways) {
    face->setCurrentDipole(0);
    const int count = add();
    EXPECT_EQ(face->getCurrentDipoleID(), count - 1);
    EXPECT_EQ(face->getCurrentDipole(), face->m_dipoles[count - 1]);
  }
}

TEST(Adding, LeavesTheOtherDipolesInTheirSlots) {
  const auto face = faceOf(3);
  const CDipoleszq* first = face->getDipole(0);
  face->addDipole();
  EXPECT_EQ(face->getDipole(0), first);
  EXPECT_EQ(idsOf(*face), (Ids{0, 1, 2, 0}));
}

TEST(Adding, DoesNotFillAHole) {
  const auto face = faceOf(3);
  face->deleteDipole(1, 0);
  EXPECT_EQ(face->addDipole(), 4);
  EXPECT_EQ(face->getDipole(1), nullptr);
}

TEST(Adding, ReleasesTheObjectThatAnImportLeftInTheSlotOnce) {
  const auto face = faceOf(3);
  leaveBehindCount(*face, 1);
  const void* left = face->m_dipoles[2];
  const FreeLog log;
  face->addDipole();
  EXPECT_EQ(log.timesFreed(left), 1);
}

TEST(Adding, KeepsFurtherObjectsBehindTheCount) {
  const auto face = faceOf(4);
  leaveBehindCount(*face, 2);
  const CDipoleszq* further = face->m_dipoles[3];
  face->addDipole();
  EXPECT_EQ(face->m_dipoles[3], further);
}

TEST(Adding, The30000thDipoleSucceeds) {
  ScriptedOperator user;
  const auto face = faceOf(DipoleTable::capacity - 1);
  EXPECT_EQ(face->addDipole(), 30000);
  EXPECT_EQ(face->getTotalDipoles(), 30000UL);
  EXPECT_EQ(face->getCurrentDipoleID(), 29999);
  EXPECT_EQ(user.messages, Messages());
}

TEST(Adding, ToAFullTableSaysSoAndGivesZeroInEachWay) {
  CDipoleFace& face = fullFace();
  const CDipoleszq source;
  const std::function<int()> ways[] = {[&] { return face.addDipole(); },
                                       [&] { return face.addDipoleF(0.0F, 0.0F, 0.0F); },
                                       [&] { return face.addDipolePME(position, momentVector, 0.0); },
                                       [&] { return face.addDipolex(&source); }};
  for (const auto& add : ways) {
    ScriptedOperator user;
    EXPECT_EQ(add(), 0);
    EXPECT_EQ(user.messages, (Messages{{"No more dipole space", MB_OK}}));
  }
}

TEST(Adding, ToAFullTableChangesNothing) {
  ScriptedOperator user;
  CDipoleFace& face = fullFace();
  face.setCurrentDipole(17);
  face.addDipole();
  EXPECT_EQ(face.getTotalDipoles(), 30000UL);
  EXPECT_EQ(face.getCurrentDipoleID(), 17);
  EXPECT_EQ(face.getDipole(29999)->m_id, 29999);
}

TEST(Adding, NullToAFullTableGivesZeroWithoutAMessage) {
  ScriptedOperator user;
  CDipoleFace& face = fullFace();
  EXPECT_EQ(face.addDipolePME(position, nullptr, 1.0), 0);
  EXPECT_EQ(face.addDipolePME(nullptr, momentVector, 1.0), 0);
  EXPECT_EQ(face.addDipolex(nullptr), 0);
  EXPECT_EQ(user.messages, Messages());
}

TEST(Adding, ToAFullTableWithAHoleIsStillRefused) {
  ScriptedOperator user;
  const auto face = faceOf(DipoleTable::capacity);
  face->deleteDipole(5, 0);
  EXPECT_EQ(face->addDipole(), 0);
  EXPECT_EQ(user.messages, (Messages{{"No more dipole space", MB_OK}}));
  face->reOrderDipoles();
  EXPECT_EQ(face->addDipole(), 30000);
}

TEST(Adding, DeletingFromAFullTableMakesRoomForOne) {
  ScriptedOperator user;
  const auto face = faceOf(DipoleTable::capacity);
  face->deleteDipole(0, 1);
  EXPECT_EQ(face->getTotalDipoles(), 29999UL);
  EXPECT_EQ(face->m_dipoles[29999], nullptr);
  EXPECT_EQ(face->addDipole(), 30000);
  face->deleteCurrentDipole();
  EXPECT_EQ(face->getTotalDipoles(), 29999UL);
  EXPECT_EQ(user.messages, Messages());
}

TEST(Adding, WithoutMemorySaysSoChangesNothingAndGivesZero) {
  const auto face = faceOf(2);
  face->setCurrentDipole(0);
  CDipoleszq source;
  source.m_label = fromUtf8(longLabel);
  const std::function<int()> ways[] = {[&] { return face->addDipole(); },
                                       [&] { return face->addDipoleF(0.0F, 0.0F, 0.0F); },
                                       [&] { return face->addDipolePME(position, momentVector, 0.0); },
                                       [&] { return face->addDipolex(&source); }};
  for (const auto& add : ways) {
    ScriptedOperator user;
    const long long before = liveAllocations();
    int result = -1;
    {
      const FailingNew failing(1);
      result = add();
    }
    user.messages.shrink_to_fit();
    EXPECT_EQ(result, 0);
    EXPECT_EQ(user.messages, (Messages{{"Not enough memory", MB_OK}}));
    EXPECT_EQ(idsOf(*face), (Ids{0, 1}));
    EXPECT_EQ(face->getCurrentDipoleID(), 0);
    user.messages = Messages();
    EXPECT_EQ(liveAllocations(), before);
  }
}

TEST(Adding, WithoutMemoryForTheLabelReleasesTheDipole) {
  const auto face = faceOf(2);
  CDipoleszq source;
  source.m_label = fromUtf8(longLabel);
  ScriptedOperator user;
  const long long before = liveAllocations();
  int result = -1;
  {
    const FailingNew failing(2);
    result = face->addDipolex(&source);
  }
  EXPECT_EQ(result, 0);
  EXPECT_EQ(user.messages, (Messages{{"Not enough memory", MB_OK}}));
  user.messages = Messages();
  EXPECT_EQ(liveAllocations(), before);
}

TEST(Adding, WorksAgainOnceThereIsMemory) {
  ScriptedOperator user;
  const auto face = faceOf(2);
  {
    const FailingNew failing(1);
    face->addDipole();
  }
  EXPECT_EQ(face->addDipole(), 3);
}
