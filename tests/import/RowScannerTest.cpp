// RowScanner's claims one by one, with values; native/RowScannerPropertyTest.cpp holds it against the C
// library.
#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <string>

#include "import/RowScanner.h"
#include "platform/Utf.h"

namespace {

constexpr float infinite = std::numeric_limits<float>::infinity();

// The real number that a text begins with, and the word behind it ("" when there is none).
struct RealAndRest {
  float real = -77.5F;
  std::string rest;
  bool operator==(const RealAndRest&) const = default;
};

RealAndRest scanned(const std::string& text) {
  const AnsiLine line(fromUtf8(text));
  RealAndRest result;
  CString rest;
  RowScanner(line).real(result.real).word(rest);
  result.rest = toUtf8(rest);
  return result;
}

int integerOf(const std::string& text) {
  const AnsiLine line(fromUtf8(text));
  int value = -77;
  RowScanner(line).integer(value);
  return value;
}

}  // namespace

TEST(RowScanner, ANumberEndsWhereTheNextCharacterCannotContinueIt) {
  EXPECT_EQ(scanned("1.5.3"), (RealAndRest{1.5F, ".3"}));
  EXPECT_EQ(scanned("12abc"), (RealAndRest{12.0F, "abc"}));
  EXPECT_EQ(scanned("1,5"), (RealAndRest{1.0F, ",5"}));
}

TEST(RowScanner, AnExponentWithoutDigitsIsTakenOffAndIgnored) {
  EXPECT_EQ(scanned("1ex"), (RealAndRest{1.0F, "x"}));
  EXPECT_EQ(scanned("1e+x"), (RealAndRest{1.0F, "x"}));
  EXPECT_EQ(scanned("0x1p-x"), (RealAndRest{1.0F, "x"}));
}

TEST(RowScanner, ALetterBehindACompleteExponentIsNoExponentAgain) {
  EXPECT_EQ(scanned("1e2e"), (RealAndRest{100.0F, "e"}));
  EXPECT_EQ(scanned("1e2e+x"), (RealAndRest{100.0F, "e+x"}));
  EXPECT_EQ(scanned("0x1p3p"), (RealAndRest{8.0F, "p"}));
}

TEST(RowScanner, AnExponentHasOneSign) {
  EXPECT_EQ(scanned("1e+-2"), (RealAndRest{1.0F, "-2"}));
  EXPECT_EQ(scanned("0x1p+-2"), (RealAndRest{1.0F, "-2"}));
}

TEST(RowScanner, InfinityAndNanComeInAnyCase) {
  EXPECT_EQ(scanned("-InF x"), (RealAndRest{-infinite, "x"}));
  EXPECT_EQ(scanned("INFINITY"), (RealAndRest{infinite, ""}));
  EXPECT_TRUE(std::isnan(scanned("nAn(1)").real));
  EXPECT_EQ(scanned("nan(1)").rest, "(1)");
}

TEST(RowScanner, ACutInfinityIsNoNumber) {
  EXPECT_EQ(scanned("infinit"), RealAndRest{});
  EXPECT_EQ(scanned("in"), RealAndRest{});
}

TEST(RowScanner, TooLargeIsInfiniteAndTooSmallIsZero) {
  EXPECT_EQ(scanned("1e39").real, infinite);
  EXPECT_EQ(scanned("-1e99999999999").real, -infinite);
  EXPECT_EQ(scanned("1e-99999999999").real, 0.0F);
  EXPECT_EQ(scanned("0e99999999999").real, 0.0F);
}

TEST(RowScanner, AHalfwayNumberIsRoundedOnceToEven) {
  EXPECT_EQ(scanned("16777217").real, 16777216.0F);
  EXPECT_EQ(scanned("16777217.0000000000000000000000001").real, 16777218.0F);
  EXPECT_EQ(scanned("16777219").real, 16777220.0F);
}

TEST(RowScanner, ANumberThatADoubleTakesForHalfwayIsRoundedOnce) {
  EXPECT_EQ(scanned("1.990870177745819").real, 0x1.fda9aap0F);
  EXPECT_EQ(scanned("1.617058813571930").real, 0x1.9df792p0F);
}

TEST(RowScanner, NumbersOfFewDigitsAreTheNearestFloats) {
  EXPECT_EQ(scanned("0.0000000001").real, 1e-10F);
  EXPECT_EQ(scanned("0.000000000001").real, 1e-12F);
  EXPECT_EQ(scanned("-123456.789012").real, -123456.789012F);
  EXPECT_EQ(scanned("99999999999999").real, 99999999999999.0F);
  EXPECT_EQ(scanned("18446744073709551617").real, 18446744073709551617.0F);  // 2^64 and 1
}

TEST(RowScanner, TheSmallestDenormalStartsAboveHalfOfIt) {
  EXPECT_EQ(scanned("0x1p-150").real, 0.0F);
  EXPECT_EQ(scanned("0x1.000001p-150").real, 0x1p-149F);
}

TEST(RowScanner, AnIntegerBeyond64BitsEndsThereAndItsLow32BitsCount) {
  EXPECT_EQ(integerOf("2147483648"), std::numeric_limits<int>::min());
  EXPECT_EQ(integerOf("4294967299"), 3);
  EXPECT_EQ(integerOf("99999999999999999999"), -1);
  EXPECT_EQ(integerOf("-99999999999999999999"), 0);
}

TEST(RowScanner, AFailedStepEndsTheScanAndKeepsTheValue) {
  const AnsiLine line(_T("1 x 3"));
  int values[3] = {7, 8, 9};
  RowScanner scanner(line);
  EXPECT_EQ(scanner.integer(values[0]).integer(values[1]).integer(values[2]).fields(), 1);
  EXPECT_EQ(values[0], 1);
  EXPECT_EQ(values[1], 8);
  EXPECT_EQ(values[2], 9);
}

TEST(RowScanner, TheColonSkipsNoBlanks) {
  const AnsiLine line(_T("1 :2"));
  int value = 0;
  EXPECT_EQ(RowScanner(line).integer(value).colon().integer(value).fields(), 1);
  EXPECT_EQ(RowScanner(line).integer(value).blanks().colon().integer(value).fields(), 2);
}

TEST(RowScanner, OnlyTheSixBlanksOfAsciiSeparate) {
  EXPECT_EQ(scanned("1 \t\n\v\f\rx"), (RealAndRest{1.0F, "x"}));
  EXPECT_EQ(scanned("1\u00A0x"), (RealAndRest{1.0F, "\u00A0x"}));
  EXPECT_EQ(scanned("1\u3000x"), (RealAndRest{1.0F, "\u3000x"}));
}
