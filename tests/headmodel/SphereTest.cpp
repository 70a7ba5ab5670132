// The sphere head model: its data, its copies, its archive record.
#include <bit>
#include <gtest/gtest.h>
#include <type_traits>

#include "headmodel/Spherezq.h"
#include "platform/Utf.h"
#include "tests/headmodel/ArchiveRecord.h"

namespace {

CSpherezq sampleSphere() {
  CSpherezq sphere;
  sphere.m_center[0] = 1.5;
  sphere.m_center[1] = -2.0;
  sphere.m_center[2] = 0.25;
  sphere.m_radius = 75.5;
  sphere.m_auxInt[0] = 7;
  sphere.m_auxInt[1] = -1;
  sphere.m_auxText = _T("Ab");
  return sphere;
}

// The record of sampleSphere, byte by byte.
Bytes sampleRecord() {
  return {0,    0,    0,    0,    0,   0,    0xF8, 0x3F,  // 1.5
          0,    0,    0,    0,    0,   0,    0x00, 0xC0,  // -2.0
          0,    0,    0,    0,    0,   0,    0xD0, 0x3F,  // 0.25
          0,    0,    0,    0,    0,   0xE0, 0x52, 0x40,  // 75.5
          7,    0,    0,    0,                            // 7
          0xFF, 0xFF, 0xFF, 0xFF,                         // -1
          0xFF, 0xFE, 0xFF, 2,    'A', 0,    'b',  0};    // two UTF-16 units
}

void expectSample(const CSphere& sphere) {
  EXPECT_EQ(sphere.m_center[0], 1.5);
  EXPECT_EQ(sphere.m_center[1], -2.0);
  EXPECT_EQ(sphere.m_center[2], 0.25);
  EXPECT_EQ(sphere.m_radius, 75.5);
  EXPECT_EQ(sphere.m_auxInt[0], 7);
  EXPECT_EQ(sphere.m_auxInt[1], -1);
  EXPECT_EQ(toUtf8(sphere.m_auxText), "Ab");
}

}  // namespace

TEST(Sphere, IsAChainOfLayersWithVirtualDestructors) {
  EXPECT_TRUE((std::is_base_of_v<CSphere, CSphere9File>));
  EXPECT_TRUE((std::is_base_of_v<CSphere9File, CSpherezq>));
  EXPECT_TRUE(std::has_virtual_destructor_v<CSphere>);
}

TEST(Sphere, LayersAddNoData) {
  EXPECT_EQ(sizeof(CSpherezq), sizeof(CSphere));
}

TEST(Sphere, MembersHaveTheirTypes) {
  EXPECT_TRUE((std::is_same_v<decltype(CSphere::m_center), double[3]>));
  EXPECT_TRUE((std::is_same_v<decltype(CSphere::m_radius), double>));
  EXPECT_TRUE((std::is_same_v<decltype(CSphere::m_auxInt), int[2]>));
  EXPECT_TRUE((std::is_same_v<decltype(CSphere::m_auxText), CString>));
}

TEST(Sphere, MembersLieInTheirDeclaredOrder) {
  const CSpherezq s;
  EXPECT_TRUE(rising({s.m_center, &s.m_radius, s.m_auxInt, &s.m_auxText}));
}

TEST(Sphere, StartsAtTheOriginWithRadiusZero) {
  const CSpherezq sphere;
  EXPECT_EQ(sphere.m_center[0], 0.0);
  EXPECT_EQ(sphere.m_center[1], 0.0);
  EXPECT_EQ(sphere.m_center[2], 0.0);
  EXPECT_EQ(sphere.m_radius, 0.0);
}

TEST(Sphere, StartsWithEmptyAuxiliaryMembers) {
  const CSpherezq sphere;
  EXPECT_EQ(sphere.m_auxInt[0], 0);
  EXPECT_EQ(sphere.m_auxInt[1], 0);
  EXPECT_TRUE(sphere.m_auxText.IsEmpty());
}

TEST(ZeroSphere, ClearsCentreAndRadiusAndReturnsOne) {
  CSpherezq sphere = sampleSphere();
  EXPECT_EQ(sphere.zeroSphere(), 1);
  EXPECT_EQ(sphere.m_center[0], 0.0);
  EXPECT_EQ(sphere.m_center[1], 0.0);
  EXPECT_EQ(sphere.m_center[2], 0.0);
  EXPECT_EQ(sphere.m_radius, 0.0);
}

TEST(ZeroSphere, LeavesTheAuxiliaryMembers) {
  CSpherezq sphere = sampleSphere();
  sphere.zeroSphere();
  EXPECT_EQ(sphere.m_auxInt[0], 7);
  EXPECT_EQ(sphere.m_auxInt[1], -1);
  EXPECT_EQ(toUtf8(sphere.m_auxText), "Ab");
}

TEST(Sphere, CopyHoldsEveryMember) {
  const CSpherezq original = sampleSphere();
  const CSpherezq copy(original);
  expectSample(copy);
}

TEST(Sphere, AssignmentTakesEveryMemberAndReturnsTheTarget) {
  const CSpherezq original = sampleSphere();
  CSpherezq target;
  EXPECT_EQ(&(target = original), &target);
  expectSample(target);
}

TEST(Sphere, MiddleLayersCopyAndAssignEveryMember) {
  const CSpherezq original = sampleSphere();
  const CSphere9File copy(original);
  expectSample(copy);
  CSphere9File target;
  target = original;
  expectSample(target);
  CSphere base;
  base = original;
  expectSample(base);
}

TEST(Sphere, AssignmentToItselfKeepsEverything) {
  CSpherezq sphere = sampleSphere();
  const CSpherezq& same = sphere;
  sphere = same;
  expectSample(sphere);
}

TEST(Sphere, CopyIsIndependent) {
  const CSpherezq original = sampleSphere();
  CSpherezq copy(original);
  copy.m_center[1] = 9.0;
  copy.m_auxText = _T("other");
  expectSample(original);
}

TEST(SphereSerialize, WritesTheRecordByteForByte) {
  CSpherezq sphere = sampleSphere();
  EXPECT_EQ(storedBytes(sphere), sampleRecord());
}

TEST(SphereSerialize, ReadsTheRecordIntoAFreshSphere) {
  CSpherezq sphere;
  EXPECT_EQ(loadBytes(sphere, sampleRecord()), 0);
  expectSample(sphere);
}

TEST(SphereSerialize, ReadsTheRecordOverAFilledSphere) {
  CSpherezq sphere = sampleSphere();
  sphere.m_radius = -4.0;
  sphere.m_auxInt[1] = 12;
  sphere.m_auxText = _T("a longer text than before");
  EXPECT_EQ(loadBytes(sphere, sampleRecord()), 0);
  expectSample(sphere);
}

TEST(SphereSerialize, ReturnsOneBothWays) {
  CMemFile file;
  CSpherezq sphere;
  CArchive out(&file, CArchive::store);
  EXPECT_EQ(sphere.serialize(out), 1);
  out.Close();
  file.SeekToBegin();
  CArchive in(&file, CArchive::load);
  EXPECT_EQ(sphere.serialize(in), 1);
}

TEST(SphereSerialize, DoesNotChangeTheSphereItWrites) {
  CSpherezq sphere = sampleSphere();
  storedBytes(sphere);
  expectSample(sphere);
}

TEST(SphereSerialize, LeavesWhatFollowsTheRecord) {
  Bytes bytes = sampleRecord();
  bytes.insert(bytes.end(), {1, 2, 3});
  CSpherezq sphere;
  EXPECT_EQ(loadBytes(sphere, bytes), 3);
  expectSample(sphere);
}

TEST(SphereSerialize, ReadsTextOfEightBits) {
  Bytes bytes = sampleRecord();
  bytes.resize(40);
  bytes.insert(bytes.end(), {2, 'A', 'b'});
  CSpherezq sphere;
  EXPECT_EQ(loadBytes(sphere, bytes), 0);
  expectSample(sphere);
}

TEST(SphereSerialize, ABrokenRecordRaisesEndOfFileAtEveryLength) {
  const Bytes whole = sampleRecord();
  for (std::size_t length = 0; length < whole.size(); ++length) {
    CSpherezq sphere;
    EXPECT_EQ(loadBytes(sphere, Bytes(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(length))),
              -1)
        << length;
  }
}

TEST(SphereSerialize, KeepsTheBitsOfNumbersThatAreNone) {
  CSpherezq sphere;
  sphere.m_center[0] = std::bit_cast<double>(0x7FF8000000001234ULL);
  sphere.m_center[1] = -std::numeric_limits<double>::infinity();
  sphere.m_radius = -0.0;
  CSpherezq back;
  EXPECT_EQ(loadBytes(back, storedBytes(sphere)), 0);
  EXPECT_EQ(std::bit_cast<ULONGLONG>(back.m_center[0]), 0x7FF8000000001234ULL);
  EXPECT_EQ(back.m_center[1], -std::numeric_limits<double>::infinity());
  EXPECT_EQ(std::bit_cast<ULONGLONG>(back.m_radius), 0x8000000000000000ULL);
}
