// The exact words of a slice picture.
#include <gtest/gtest.h>

#include "host/picture/SliceCaption.h"

namespace {

using host::OverlayReport;
using host::Slab;
using host::View;

}  // namespace

TEST(SliceCaption, NamesThePatientsSides) {
  EXPECT_EQ(host::sideLetters(View::axial).left, 'R');
  EXPECT_EQ(host::sideLetters(View::axial).right, 'L');
  EXPECT_EQ(host::sideLetters(View::axial).top, 'A');
  EXPECT_EQ(host::sideLetters(View::axial).bottom, 'P');
  EXPECT_EQ(host::sideLetters(View::coronal).left, 'R');
  EXPECT_EQ(host::sideLetters(View::coronal).right, 'L');
  EXPECT_EQ(host::sideLetters(View::coronal).top, 'S');
  EXPECT_EQ(host::sideLetters(View::coronal).bottom, 'I');
  EXPECT_EQ(host::sideLetters(View::sagittal).left, 'P');
  EXPECT_EQ(host::sideLetters(View::sagittal).right, 'A');
  EXPECT_EQ(host::sideLetters(View::sagittal).top, 'S');
  EXPECT_EQ(host::sideLetters(View::sagittal).bottom, 'I');
}

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

TEST(SliceCaption, CountsWhatIsShown) {
  OverlayReport report;
  report.view = View::coronal;
  report.shown = Slab{6.75, 17.25};
  report.drawn = 2;
  report.total = 3;
  EXPECT_EQ(host::countText(report), "dipoles z 6.75 .. 17.25 mm: 2 of 3");
  report.shown.reset();
  report.drawn = 0;
  EXPECT_EQ(host::countText(report), "dipoles: 0 of 3");
}

TEST(SliceCaption, WarnsOfWhatIsNotSeenInItsPlace) {
  OverlayReport report;
  report.shown = Slab{0, 1};
  EXPECT_TRUE(host::warningTexts(report).empty());
  report.shown.reset();
  report.withheld = 1;
  report.outside = 2;
  report.switchedOff = 3;
  report.nowhere = 4;
  EXPECT_EQ(host::warningTexts(report),
            (std::vector<std::string>{"axial slices below y = 0 show no dipoles",
                                      "1 dipole close to this slice not drawn",
                                      "2 dipoles outside of the picture, drawn at its edge",
                                      "3 dipoles switched off", "4 dipoles without a valid location"}));
}
