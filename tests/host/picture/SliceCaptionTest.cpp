// The exact words of a slice picture.
#include <gtest/gtest.h>

#include "host/picture/SliceCaption.h"

namespace {

using host::View;

}  // namespace

TEST(SliceCaption, WritesMillimetres) {
  EXPECT_EQ(host::formatMm(58.0), "58.0");
  EXPECT_EQ(host::formatMm(-6.75), "-6.75");
  EXPECT_EQ(host::formatMm(0.1 + 0.2), "0.3");
  EXPECT_EQ(host::formatMm(-0.0), "0.0");
  EXPECT_EQ(host::formatMm(-0.001), "0.0");
}

TEST(SliceCaption, SaysWhereTheSliceLies) {
  EXPECT_EQ(host::positionText(View::axial, 58), "y = 58.0 mm (up)");
  EXPECT_EQ(host::positionText(View::axial, -20), "y = -20.0 mm (down)");
  EXPECT_EQ(host::positionText(View::coronal, 12.5), "z = 12.5 mm (front)");
  EXPECT_EQ(host::positionText(View::coronal, -1), "z = -1.0 mm (back)");
  EXPECT_EQ(host::positionText(View::sagittal, 52), "x = 52.0 mm (left)");
  EXPECT_EQ(host::positionText(View::sagittal, -52), "x = -52.0 mm (right)");
  EXPECT_EQ(host::positionText(View::sagittal, 0), "x = 0.0 mm (origin)");
}
