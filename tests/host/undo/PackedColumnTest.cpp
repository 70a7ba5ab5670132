// A packed column gives its values back, bit by bit, and is small where they are alike.
#include <gtest/gtest.h>
#include <random>

#include "host/undo/PackedColumn.h"
#include "host/undo/PackedTexts.h"

namespace {

using host::PackedColumn;
using host::PackedTexts;

std::vector<CString> repacked(const std::vector<CString>& texts) {
  std::vector<const CString*> pointers;
  pointers.reserve(texts.size());
  for (const CString& text : texts) {
    pointers.push_back(&text);
  }
  return PackedTexts(pointers).texts();
}

}  // namespace

TEST(PackedColumn, GivesEveryWidthBack) {
  std::mt19937 random(1);
  for (const std::size_t width : {1U, 2U, 4U, 8U}) {
    for (const std::size_t count : {0U, 1U, 2U, 100U}) {
      for (const unsigned mask : {0U, 1U, 0xFFU}) {
        std::vector<std::byte> bytes(width * count);
        for (std::byte& value : bytes) {
          value = static_cast<std::byte>(random() & mask);
        }
        EXPECT_EQ(PackedColumn(bytes, width).bytes(), bytes) << width << " " << count;
      }
    }
  }
}

TEST(PackedColumn, EqualValuesCostNothing) {
  const std::vector<double> equal(30000, 0.1);
  EXPECT_LT(PackedColumn::of(equal).memory(), 100U);
  EXPECT_EQ(PackedColumn::of(equal).values<double>(), equal);
}

TEST(PackedColumn, SinglePrecisionInDoubleTakesFiveBytes) {
  std::mt19937 random(1);
  std::vector<double> values(30000);
  for (double& value : values) {
    value = static_cast<double>(static_cast<float>(random()) * 0.001F);
  }
  EXPECT_LT(PackedColumn::of(values).memory(), 150'100U);
  EXPECT_EQ(PackedColumn::of(values).values<double>(), values);
}

TEST(PackedColumn, IsEqualOnlyToTheSameValues) {
  EXPECT_EQ(PackedColumn::of<int>({1, 2, 3}), PackedColumn::of<int>({1, 2, 3}));
  EXPECT_NE(PackedColumn::of<int>({1, 2, 3}), PackedColumn::of<int>({1, 2, 4}));
  EXPECT_NE(PackedColumn::of<int>({7, 7}), PackedColumn::of<int>({7, 7, 7}));
  EXPECT_NE(PackedColumn::of<int>({0, 0}), PackedColumn::of<long long>({0, 0}));
}

TEST(PackedTexts, GiveAllTextsBack) {
  const TCHAR units[] = {0xD800, 0, _T('a'), 0};
  const std::vector<CString> texts = {_T(""), CString(units, 4), _T("a longer text than the one before"),
                                      _T("")};
  EXPECT_EQ(repacked(texts), texts);
  EXPECT_EQ(repacked(texts)[1].GetLength(), 4);
  EXPECT_TRUE(repacked({}).empty());
}

TEST(PackedTexts, OneForAllWhenTheyAreTheSame) {
  const std::vector<CString> same(1000, CString(_T('x'), 500));
  std::vector<const CString*> pointers;
  pointers.reserve(same.size());
  for (const CString& text : same) {
    pointers.push_back(&text);
  }
  EXPECT_LT(PackedTexts(pointers).memory(), 1200U);
  EXPECT_EQ(repacked(same), same);
  EXPECT_EQ(repacked({_T(""), _T("")}).size(), 2U);
}
