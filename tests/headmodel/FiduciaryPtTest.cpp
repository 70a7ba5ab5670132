// One fiducial point: its data, its copies, its archive record.
#include <gtest/gtest.h>
#include <type_traits>

#include "headmodel/FiduciaryPtzq.h"
#include "platform/Utf.h"
#include "tests/headmodel/ArchiveRecord.h"

namespace {

CFiduciaryPtzq samplePoint() {
  CFiduciaryPtzq point;
  for (int i = 0; i < 16; ++i) {
    point.m_values[i] = 0.5 + i;
  }
  point.m_value16 = 0x1122334455667788LL;
  point.m_value17 = -17;
  for (int i = 0; i < 4; ++i) {
    point.m_values2[i] = -0.5 - i;
  }
  point.m_int0 = 20;
  point.m_int1 = 21;
  point.m_int2 = 22;
  point.m_value18 = 0x0102030405060708LL;
  point.m_int3 = 23;
  point.m_label = _T("Nasion");
  return point;
}

Bytes sampleRecord() {
  ByteWriter writer;
  for (int i = 0; i < 16; ++i) {
    writer.value(0.5 + i);
  }
  writer.value(0x1122334455667788LL).value(-17LL);
  for (int i = 0; i < 4; ++i) {
    writer.value(-0.5 - i);
  }
  writer.value(20).value(21).value(22).value(0x0102030405060708LL).value(23).text("Nasion");
  return writer.bytes();
}

}  // namespace

TEST(FiduciaryPt, IsAChainOfLayersWithVirtualDestructors) {
  EXPECT_TRUE((std::is_base_of_v<CFiduciaryPt, CFiduciaryPt02Prcs>));
  EXPECT_TRUE((std::is_base_of_v<CFiduciaryPt02Prcs, CFiduciaryPt9File>));
  EXPECT_TRUE((std::is_base_of_v<CFiduciaryPt9File, CFiduciaryPtzq>));
  EXPECT_TRUE(std::has_virtual_destructor_v<CFiduciaryPt>);
}

TEST(FiduciaryPt, LayersAddNoData) {
  EXPECT_EQ(sizeof(CFiduciaryPtzq), sizeof(CFiduciaryPt));
}

TEST(FiduciaryPt, MembersHaveTheirTypes) {
  EXPECT_TRUE((std::is_same_v<decltype(CFiduciaryPt::m_values), double[16]>));
  EXPECT_TRUE((std::is_same_v<decltype(CFiduciaryPt::m_value16), LONGLONG>));
  EXPECT_TRUE((std::is_same_v<decltype(CFiduciaryPt::m_value17), LONGLONG>));
  EXPECT_TRUE((std::is_same_v<decltype(CFiduciaryPt::m_values2), double[4]>));
  EXPECT_TRUE((std::is_same_v<decltype(CFiduciaryPt::m_int0), int>));
  EXPECT_TRUE((std::is_same_v<decltype(CFiduciaryPt::m_int1), int>));
  EXPECT_TRUE((std::is_same_v<decltype(CFiduciaryPt::m_int2), int>));
  EXPECT_TRUE((std::is_same_v<decltype(CFiduciaryPt::m_value18), LONGLONG>));
  EXPECT_TRUE((std::is_same_v<decltype(CFiduciaryPt::m_int3), int>));
  EXPECT_TRUE((std::is_same_v<decltype(CFiduciaryPt::m_label), CString>));
}

TEST(FiduciaryPt, MembersLieInTheirDeclaredOrder) {
  const CFiduciaryPtzq p;
  EXPECT_TRUE(rising({p.m_values, &p.m_value16, &p.m_value17, p.m_values2, &p.m_int0, &p.m_int1, &p.m_int2,
                      &p.m_value18, &p.m_int3, &p.m_label}));
}

TEST(FiduciaryPt, StartsNotSetAtTheOrigin) {
  const CFiduciaryPtzq point;
  double x = 1.0;
  double y = 1.0;
  double z = 1.0;
  EXPECT_FALSE(point.isSet());
  EXPECT_EQ(point.getPosition(x, y, z), 0);
  EXPECT_EQ(x, 0.0);
  EXPECT_EQ(y, 0.0);
  EXPECT_EQ(z, 0.0);
}

TEST(FiduciaryPt, StartsWithEveryNumberZeroAndNoLabel) {
  CFiduciaryPtzq point;
  ByteWriter zeros;
  for (int i = 0; i < 16; ++i) {
    zeros.value(0.0);
  }
  zeros.value(0LL).value(0LL).value(0.0).value(0.0).value(0.0).value(0.0);
  zeros.value(0).value(0).value(0).value(0LL).value(0).text("");
  EXPECT_EQ(storedBytes(point), zeros.bytes());
}

TEST(FiduciaryPt, PositionLiesInElementsFourFiveAndSix) {
  CFiduciaryPtzq point;
  EXPECT_EQ(point.setPosition(1.0, 2.0, 3.0), 1);
  for (int i = 0; i < 16; ++i) {
    EXPECT_EQ(point.m_values[i], i >= 4 && i <= 6 ? i - 3.0 : 0.0) << i;
  }
}

TEST(FiduciaryPt, ASetPointGivesItsPositionBack) {
  CFiduciaryPtzq point;
  point.setPosition(1.0, 2.0, 3.0);
  double x = 0.0;
  double y = 0.0;
  double z = 0.0;
  EXPECT_TRUE(point.isSet());
  EXPECT_EQ(point.getPosition(x, y, z), 1);
  EXPECT_EQ(x, 1.0);
  EXPECT_EQ(y, 2.0);
  EXPECT_EQ(z, 3.0);
}

TEST(FiduciaryPt, SettingThePositionKeepsShapeSizeAndLabel) {
  CFiduciaryPtzq point = samplePoint();
  point.setPosition(1.0, 2.0, 3.0);
  EXPECT_EQ(point.m_int1, 21);
  EXPECT_EQ(point.m_values2[0], -0.5);
  EXPECT_EQ(toUtf8(point.m_label), "Nasion");
}

TEST(FiduciaryPt, CopiesAndAssignmentsOfEveryArchivedLayerTakeEveryMember) {
  const CFiduciaryPtzq original = samplePoint();
  CFiduciaryPtzq copy(original);
  CFiduciaryPtzq target;
  CFiduciaryPt9File layerCopy(original);
  CFiduciaryPt9File layerTarget;
  EXPECT_EQ(&(target = original), &target);
  layerTarget = original;
  EXPECT_EQ(storedBytes(copy), sampleRecord());
  EXPECT_EQ(storedBytes(target), sampleRecord());
  EXPECT_EQ(storedBytes(layerCopy), sampleRecord());
  EXPECT_EQ(storedBytes(layerTarget), sampleRecord());
}

TEST(FiduciaryPt, LowerLayersCopyAndAssign) {
  const CFiduciaryPtzq original = samplePoint();
  const CFiduciaryPt02Prcs copy(original);
  CFiduciaryPt base;
  base = copy;
  EXPECT_EQ(base.m_values[15], 15.5);
  EXPECT_EQ(base.m_int3, 23);
  EXPECT_EQ(toUtf8(base.m_label), "Nasion");
}

TEST(FiduciaryPt, CopyIsIndependent) {
  CFiduciaryPtzq original = samplePoint();
  CFiduciaryPtzq copy(original);
  copy.m_label = _T("other");
  copy.setPosition(9.0, 9.0, 9.0);
  EXPECT_EQ(storedBytes(original), sampleRecord());
}

TEST(FiduciaryPtSerialize, WritesTheRecordByteForByte) {
  CFiduciaryPtzq point = samplePoint();
  EXPECT_EQ(storedBytes(point), sampleRecord());
}

TEST(FiduciaryPtSerialize, ReadsTheRecordBack) {
  CFiduciaryPtzq point;
  EXPECT_EQ(loadBytes(point, sampleRecord()), 0);
  EXPECT_EQ(point.m_values[0], 0.5);
  EXPECT_EQ(point.m_value16, 0x1122334455667788LL);
  EXPECT_EQ(point.m_values2[3], -3.5);
  EXPECT_EQ(point.m_value18, 0x0102030405060708LL);
  EXPECT_EQ(toUtf8(point.m_label), "Nasion");
  EXPECT_EQ(storedBytes(point), sampleRecord());
}
