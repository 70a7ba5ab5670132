#include <charconv>
#include <gtest/gtest.h>
#include <random>
#include <string>
#include <string_view>

#include "host/audit/RowFields.h"

using host::RowFields;

TEST(RowFieldsTest, FieldsStandBetweenBlanks) {
  const std::string row = "  1\t-2.5 +3. .5 abc 1e5 12345678.25\t";
  const RowFields fields(row);
  ASSERT_EQ(fields.count(), 7);
  EXPECT_EQ(fields[1], "-2.5");
  EXPECT_EQ(fields[6], "12345678.25");
  EXPECT_EQ(fields.number(0), 1.0F);
  EXPECT_EQ(fields.number(1), -2.5F);
  EXPECT_EQ(fields.number(2), 3.0F);
  EXPECT_EQ(fields.number(3), 0.5F);
  EXPECT_EQ(fields.number(4), std::nullopt);
  EXPECT_EQ(fields.number(5), 1e5F);
  EXPECT_EQ(fields.number(6), 12345678.25F);
  EXPECT_EQ(fields.number(7), std::nullopt);
  EXPECT_TRUE(fields.arePlain(0, 3));
  EXPECT_FALSE(fields.arePlain(0, 4));  // .5 is read otherwise by some
  EXPECT_TRUE(fields.isInteger(0));
  EXPECT_FALSE(fields.isInteger(1));
  EXPECT_EQ(fields.from(4), "abc 1e5 12345678.25");
}

TEST(RowFieldsTest, WhatIsNoNumberIsNone) {
  for (const char* text :
       {"-", "+", ".", "-.", "1.2.3", "1-2", "12a", "nan", "inf", "--1", "+-1", "1,5", "0x10"}) {
    for (const char* behind : {"", " ", "        "}) {
      const std::string row = text + std::string(behind);
      const RowFields fields(row);
      EXPECT_EQ(fields.number(0), std::nullopt) << row;
      EXPECT_FALSE(fields.arePlain(0, 1)) << row;
    }
  }
}

TEST(RowFieldsTest, BehindTheLimitOnlyWhetherThereIsMoreCounts) {
  EXPECT_EQ(RowFields("1 2 3", 3).count(), 3);
  EXPECT_EQ(RowFields("1 2 3 4 5", 3).count(), 4);
  EXPECT_EQ(RowFields("1 2 3 4 5", 3)[3], "");
  EXPECT_TRUE(RowFields("1 a{b 3").mayHoldMarks());
  EXPECT_FALSE(RowFields("1 ab 3").mayHoldMarks());
}

TEST(RowFieldsTest, NumbersAreThoseOfTheLibraryWhateverTheirLength) {
  std::mt19937 random(7);
  for (int i = 0; i < 200000; ++i) {
    std::string text = random() % 3 == 0 ? "-" : "";
    for (auto digits = random() % 9 + 1; digits > 0; --digits) {
      text += static_cast<char>('0' + random() % 10);
    }
    if (random() % 4 != 0) {
      text += '.';
      for (auto digits = random() % 8; digits > 0; --digits) {
        text += static_cast<char>('0' + random() % 10);
      }
    }
    float expected = 0.0F;
    std::from_chars(text.data(), text.data() + text.size(), expected);
    const std::string row = text + "\t7        ";
    const RowFields fields(row);
    ASSERT_EQ(fields.number(0), expected) << text;
    ASSERT_EQ(fields.number(1), 7.0F) << text;
    ASSERT_TRUE(fields.arePlain(0, 2)) << text;
  }
}

// Fields that end the row are read byte by byte, others by several bytes at once.
TEST(RowFieldsTest, WhatIsAPlainNumberDoesNotDependOnWhatFollows) {
  constexpr std::string_view letters = "0123456789012345678901234567890123456789.-+x\x01";
  std::mt19937 random(11);
  for (int i = 0; i < 300000; ++i) {
    std::string text;
    for (auto count = random() % 18 + 1; count > 0; --count) {
      text += letters[random() % letters.size()];
    }
    const std::string row = text + (random() % 2 == 0 ? " " : "\t") + "7" + std::string(16, ' ');
    const RowFields last(text);
    const RowFields first(row);
    ASSERT_EQ(first[0], text);
    ASSERT_EQ(first.arePlain(0, 1), last.arePlain(0, 1)) << text;
    ASSERT_EQ(first.isInteger(0), last.isInteger(0)) << text;
    ASSERT_EQ(first.number(0), last.number(0)) << text;
    ASSERT_EQ(first.count(), 2);
  }
}

TEST(RowFieldsTest, MarksAreNoticedWhereverTheyStandInAWord) {
  for (std::size_t before = 0; before < 20; ++before) {
    for (std::size_t behind = 0; behind < 20; ++behind) {
      for (const char* rest : {"", " 7", "\t7                "}) {
        for (const char mark : {'(', '/', '{', '}'}) {
          const std::string row = "x" + std::string(before, 'z') + mark + std::string(behind, '0') + rest;
          ASSERT_TRUE(RowFields(row).mayHoldMarks()) << row;
        }
        const std::string row = "x" + std::string(before, 'z') + std::string(behind, '0') + rest;
        ASSERT_FALSE(RowFields(row).mayHoldMarks()) << row;
        ASSERT_EQ(RowFields(row)[0].size(), 1 + before + behind) << row;
      }
    }
  }
}
