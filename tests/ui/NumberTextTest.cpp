// What a field shows of a number: few digits, and no other number.
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <gtest/gtest.h>
#include <limits>
#include <random>

#include "platform/Utf.h"
#include "ui/NumberText.h"

namespace {

std::string shown(double value) {
  return toUtf8(numberText(value));
}

float singleOf(std::uint32_t bits) {
  float single = 0.0F;
  std::memcpy(&single, &bits, sizeof single);
  return single;
}

// By another way than the module's: the C library reads the text.
bool isGivenBack(float single, const std::string& text) {
  const float asItStands = std::strtof(text.c_str(), nullptr);
  const auto shifted = [&](int places) {
    const std::size_t e = text.find('e');
    const int exponent = (e == std::string::npos ? 0 : std::atoi(text.c_str() + e + 1)) + places;
    return std::strtof((text.substr(0, e) + "e" + std::to_string(exponent)).c_str(), nullptr);
  };
  return asItStands == single || shifted(-1) * 10.0F == single || shifted(1) / 10.0F == single;
}

void expectGivenBack(float single) {
  EXPECT_TRUE(isGivenBack(single, shown(single))) << shown(single);
}

TEST(NumberText, SingleShowsTheFewestDigitsThatGiveItBack) {
  EXPECT_EQ(shown(23.1F), "23.1");
  EXPECT_EQ(shown(-0.7F), "-0.7");
  EXPECT_EQ(shown(1.0F / 3.0F), "0.33333334");
  EXPECT_EQ(shown(1234.567F), "1234.567");
  EXPECT_EQ(shown(1e-7F), "1e-07");
  EXPECT_EQ(shown(0.5), "0.5");
  EXPECT_EQ(shown(0.0), "0");
}

TEST(NumberText, SingleOfAnImportShowsWhatTheFileSays) {
  const float centimetres = 2.31F;
  const float position = centimetres * 10.0F;
  ASSERT_NE(position, 23.1F);
  EXPECT_EQ(shown(position), "23.1");
  int others = 0;
  for (int hundredths = -2000; hundredths <= 2000; ++hundredths) {
    const std::string tenths = shown(hundredths / 10.0);
    const float inFile = static_cast<float>(hundredths / 100.0);
    others += inFile * 10.0F == static_cast<float>(hundredths / 10.0) ? 0 : 1;
    EXPECT_EQ(shown(inFile * 10.0F), tenths);
    EXPECT_EQ(shown(static_cast<float>(hundredths / 10.0) / 10.0F), shown(hundredths / 100.0));
  }
  EXPECT_GT(others, 100);  // otherwise this proves nothing
}

TEST(NumberText, WholeNumbersShowEachDigit) {
  EXPECT_EQ(shown(100.0), "100");
  EXPECT_EQ(shown(-9000.0), "-9000");
  EXPECT_EQ(shown(1200000.0), "1200000");
  EXPECT_EQ(shown(16777216.0), "16777216");
}

TEST(NumberText, WhatIsNoSingleShowsFifteenDigits) {
  EXPECT_EQ(shown(23.1), "23.1");
  EXPECT_EQ(shown(0.1 + 0.2), "0.3");
  EXPECT_EQ(shown(1.0 / 3.0), "0.333333333333333");
  EXPECT_EQ(shown(std::nextafter(static_cast<double>(23.1F), 24.0)), "23.1000003814697");
  EXPECT_EQ(shown(-1.23456789012345e-105), "-1.23456789012345e-105");
}

// 123456792 is a single, but the fewest digits that give it back are those of 123456790.
TEST(NumberText, LargeNumbersAreNotRoundedToTheDigitsOfASingle) {
  EXPECT_EQ(shown(123456792.0), "123456792");
  EXPECT_EQ(shown(33554434.0), "33554434");
  EXPECT_EQ(shown(1e10), "10000000000");
  EXPECT_EQ(shown(1e30F), "1.00000001504747e+30");
  EXPECT_EQ(shown(1e300), "1e+300");
}

TEST(NumberText, WhatIsNoNumberIsShownAsSuch) {
  EXPECT_EQ(shown(std::numeric_limits<double>::quiet_NaN()), "nan");
  EXPECT_EQ(shown(std::numeric_limits<double>::infinity()), "inf");
  EXPECT_EQ(shown(-std::numeric_limits<double>::infinity()), "-inf");
}

TEST(NumberText, EverySingleIsGivenBack) {
  for (std::uint32_t exponent = 0; exponent <= 127 + 23; ++exponent) {
    for (const std::uint32_t bits : {exponent << 23, (exponent << 23) + 1, (exponent << 23) + 0x7FFFFF}) {
      expectGivenBack(singleOf(bits));
      expectGivenBack(-singleOf(bits));
    }
  }
  std::mt19937 random(20);
  for (int i = 0; i < 20000; ++i) {
    expectGivenBack(singleOf(static_cast<std::uint32_t>(random() % ((127U + 24U) << 23))));
  }
}

}  // namespace
