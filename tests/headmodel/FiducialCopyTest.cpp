// The set of fiducial points: copying and archiving.
#include <gtest/gtest.h>

#include "headmodel/Fiducialzq.h"
#include "platform/Utf.h"
#include "tests/headmodel/FiducialSample.h"
#include "tests/support/FailingNew.h"
#include "tests/support/Thrown.h"

TEST(Fiducial, CopyHoldsEveryMember) {
  const CFiducialzq original = sampleSet();
  CFiducialzq copy(original);
  EXPECT_EQ(storedBytes(copy), sampleRecord());
}

TEST(Fiducial, AssignmentTakesEveryMemberAndReturnsTheTarget) {
  const CFiducialzq original = sampleSet();
  CFiducialzq target;
  EXPECT_EQ(&(target = original), &target);
  EXPECT_EQ(storedBytes(target), sampleRecord());
}

TEST(Fiducial, AssignmentToItselfKeepsEverything) {
  CFiducialzq set = sampleSet();
  const CFiducialzq& same = set;
  set = same;
  EXPECT_EQ(storedBytes(set), sampleRecord());
}

TEST(Fiducial, ArchiveLayerCopiesAndAssignsEveryMember) {
  const CFiducialzq original = sampleSet();
  CFiducial9File copy(original);
  EXPECT_EQ(storedBytes(copy), sampleRecord());
  CFiducial9File target;
  target = original;
  EXPECT_EQ(storedBytes(target), sampleRecord());
}

TEST(Fiducial, LowerLayersCopyAndAssignTheirPoints) {
  const CFiducialzq original = sampleSet();
  const CFiducial copyOfBase(original);
  const CFiducial02Prcs copyOfSecond(original);
  const CFiducial03Operator copyOfThird(original);
  CFiducial02Prcs second;
  CFiducial03Operator third;
  second = copyOfSecond;
  third = copyOfThird;
  for (const CFiducial* set :
       {&copyOfBase, static_cast<const CFiducial*>(&second), static_cast<const CFiducial*>(&third)}) {
    EXPECT_EQ(set->m_points[5].m_values[15], original.m_points[5].m_values[15]);
    EXPECT_EQ(toUtf8(set->m_points[5].m_label), toUtf8(original.m_points[5].m_label));
    EXPECT_EQ(set->m_tail[2], original.m_tail[2]);
  }
}

TEST(Fiducial, CopyIsIndependentInLabelAndPosition) {
  const CFiducialzq original = sampleSet();
  CFiducialzq copy(original);
  copy.m_points[1].m_label = _T("changed");
  copy.setLeftEarf(-1.0, -2.0, -3.0);
  CFiducialzq again(original);
  EXPECT_EQ(storedBytes(again), sampleRecord());
}

TEST(Fiducial, ACopyThatRunsOutOfMemoryReleasesWhatItMade) {
  CFiducialzq original;
  for (CFiduciaryPtzq& point : original.m_points) {
    point.m_label = _T("a label that is far too long to be kept inside the object itself");
  }
  const long long before = liveAllocations();
  int failures = 0;
  bool failed = true;
  while (failed) {
    FailingNew failing(failures + 1);
    failures += runsOutOfMemory([&] { const CFiducialzq copy(original); }) ? 1 : 0;
    failed = failing.failed();
  }
  EXPECT_EQ(failures, 6);
  EXPECT_EQ(liveAllocations(), before);
}

TEST(FiducialSerialize, WritesTheRecordByteForByte) {
  CFiducialzq set = sampleSet();
  EXPECT_EQ(storedBytes(set), sampleRecord());
}

TEST(FiducialSerialize, ReadsTheRecordIntoAFreshSet) {
  CFiducialzq set;
  EXPECT_EQ(loadBytes(set, sampleRecord()), 0);
  EXPECT_EQ(storedBytes(set), sampleRecord());
}

TEST(FiducialSerialize, ReturnsOneBothWays) {
  CMemFile file;
  CFiducialzq set;
  CArchive out(&file, CArchive::store);
  EXPECT_EQ(set.serialize(out), 1);
  out.Close();
  file.SeekToBegin();
  CArchive in(&file, CArchive::load);
  EXPECT_EQ(set.serialize(in), 1);
}

TEST(FiducialSerialize, AnEmptySetTakes1264Bytes) {
  CFiducialzq set;
  EXPECT_EQ(storedBytes(set).size(), 6U * (200U + 4U) + 16U + 24U);
}

TEST(FiducialSerialize, LeavesWhatFollowsTheRecord) {
  Bytes bytes = sampleRecord();
  bytes.push_back(9);
  CFiducialzq set;
  EXPECT_EQ(loadBytes(set, bytes), 1);
}

TEST(FiducialSerialize, ABrokenRecordRaisesEndOfFileAtEveryLength) {
  const Bytes whole = sampleRecord();
  for (std::size_t length = 0; length < whole.size(); ++length) {
    CFiducialzq set;
    EXPECT_EQ(loadBytes(set, Bytes(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(length))), -1)
        << length;
  }
}
