// Dipoles are drawn where they lie, and the account of them agrees with what can be seen.
#include <cmath>
#include <gtest/gtest.h>
#include <memory>
#include <stdexcept>

#include "host/picture/DipoleOverlay.h"

namespace {

using host::Image;
using host::OverlayReport;
using host::PixelBox;
using host::Rgb;
using host::SliceGeometry;
using host::View;

using Dipoles = CDipoleFace8Import01_CTF;

constexpr Rgb grey{90, 90, 90};
constexpr Rgb orange{250, 120, 10};
const SliceGeometry grid(0.5, {40, 30, 50});

std::unique_ptr<Dipoles> noDipoles() {
  return std::make_unique<Dipoles>();
}

CDipoleszq& add(Dipoles& dipoles, double x, double y, double z, double size = 1.0) {
  dipoles.addDipoleF(0, 0, 0);
  CDipoleszq& dipole = *dipoles.getDipole(dipoles.m_totalDipoles - 1);
  dipole.m_location[0] = x;
  dipole.m_location[1] = y;
  dipole.m_location[2] = z;
  dipole.m_size = size;
  dipole.m_color = RGB(orange.red, orange.green, orange.blue);
  return dipole;
}

struct Drawn {
  Image image;
  OverlayReport report;
};

Drawn draw(Dipoles& dipoles, View view, double position, double overlap = 5.0,
           const SliceGeometry& geometry = grid) {
  Image image(geometry.columns(view), geometry.rows(view), grey);
  const OverlayReport report = drawDipoles(dipoles, geometry, view, position, overlap, image);
  return {image, report};
}

int coloured(const Image& image) {
  int count = 0;
  for (const Rgb& pixel : image.pixels())
    count += pixel == orange ? 1 : 0;
  return count;
}

// The pixels of the dipoles' colour.
PixelBox colouredBox(const Image& image) {
  PixelBox box{image.width(), image.height(), 0, 0};
  for (int row = 0; row < image.height(); ++row)
    for (int column = 0; column < image.width(); ++column)
      if (image.pixel(column, row) == orange)
        box = {(std::min)(box.left, column), (std::min)(box.top, row), (std::max)(box.right, column + 1),
               (std::max)(box.bottom, row + 1)};
  return box;
}

void expectBox(const PixelBox& box, int left, int top, int right, int bottom) {
  EXPECT_EQ(box.left, left);
  EXPECT_EQ(box.top, top);
  EXPECT_EQ(box.right, right);
  EXPECT_EQ(box.bottom, bottom);
}

}  // namespace

TEST(DipoleOverlay, PutsEveryDipoleIntoTheCellOfItsSample) {
  for (const View view : {View::axial, View::coronal, View::sagittal})
    for (const int column : {0, 1, 37, grid.columns(view) - 1})
      for (const int row : {0, 1, 53, grid.rows(view) - 1}) {
        const auto dipoles = noDipoles();
        const host::Vector3 point = grid.headPoint(view, 10.0, column, row);
        add(*dipoles, point.x, point.y, point.z);
        const Drawn drawn = draw(*dipoles, view, 10.0);
        EXPECT_EQ(coloured(drawn.image), 1);
        EXPECT_EQ(drawn.image.pixel(column, row), orange);
        EXPECT_EQ(drawn.report.drawn, 1);
      }
}

TEST(DipoleOverlay, PutsLeftToTheRightUpToTheTopAndFrontToTheTopOrRight) {
  const auto dipoles = noDipoles();
  add(*dipoles, 20, 10, 30);
  const Drawn axial = draw(*dipoles, View::axial, 10);
  expectBox(colouredBox(axial.image), 120, 40, 121, 41);  // (20 + 40) / 0.5 and (50 - 30) / 0.5
  const Drawn coronal = draw(*dipoles, View::coronal, 30);
  expectBox(colouredBox(coronal.image), 120, 40, 121, 41);  // (20 + 40) / 0.5 and (30 - 10) / 0.5
  const Drawn sagittal = draw(*dipoles, View::sagittal, 20);
  expectBox(colouredBox(sagittal.image), 160, 40, 161, 41);  // (30 + 50) / 0.5 and (30 - 10) / 0.5
}

TEST(DipoleOverlay, CentresSquaresOfOneSize) {
  const auto dipoles = noDipoles();
  add(*dipoles, 20, 10, 30, 5.0);
  const Drawn odd = draw(*dipoles, View::axial, 10);
  expectBox(colouredBox(odd.image), 118, 38, 123, 43);
  expectBox(*odd.report.squares, 118, 38, 123, 43);
  dipoles->getDipole(0)->m_size = 6.9;
  expectBox(colouredBox(draw(*dipoles, View::axial, 10).image), 118, 38, 124, 44);
}

TEST(DipoleOverlay, LetsSquaresOfSeveralSizesHang) {
  const auto dipoles = noDipoles();
  add(*dipoles, 20, 10, 30, 5.0);
  add(*dipoles, 20, 10, 30, 3.0);
  expectBox(colouredBox(draw(*dipoles, View::axial, 10).image), 120, 40, 125, 45);
}

TEST(DipoleOverlay, CentresByTheSquaresOfThePictureAlone) {
  const auto dipoles = noDipoles();
  add(*dipoles, 20, 10, 30, 5.0);
  add(*dipoles, 20, 10, -30, 3.0);
  expectBox(colouredBox(draw(*dipoles, View::coronal, 30).image), 118, 38, 123, 43);
}

TEST(DipoleOverlay, LeavesThePictureBesidesAlone) {
  const auto dipoles = noDipoles();
  add(*dipoles, 20, 10, 30, 5.0);
  const Drawn drawn = draw(*dipoles, View::axial, 10);
  EXPECT_EQ(coloured(drawn.image), 25);
  for (const Rgb& pixel : drawn.image.pixels())
    ASSERT_TRUE(pixel == grey || pixel == orange);
}

TEST(DipoleOverlay, ShowsNeighboursWithinTheOverlap) {
  const auto dipoles = noDipoles();
  add(*dipoles, 0, 1, 12 - 5.25);
  add(*dipoles, 0, 2, 12 + 5.25);
  add(*dipoles, 0, 3, 12 - 5.26);
  add(*dipoles, 0, 4, 12 + 5.26);
  const Drawn drawn = draw(*dipoles, View::coronal, 12);
  EXPECT_EQ(drawn.report.drawn, 2);
  EXPECT_EQ(coloured(drawn.image), 2);
  EXPECT_EQ(drawn.report.total, 4);
  EXPECT_EQ(drawn.report.withheld, 0);
  EXPECT_EQ(drawn.report.shown->from, 6.75);
  EXPECT_EQ(drawn.report.shown->to, 17.25);
}

TEST(DipoleOverlay, ShowsTheSliceAloneWithoutOverlap) {
  const auto dipoles = noDipoles();
  add(*dipoles, 0.25, 1, 12);
  add(*dipoles, -0.26, 3, 12);
  dipoles->setShowDipole2DOverlap(0);
  const Drawn drawn = draw(*dipoles, View::sagittal, 0);
  EXPECT_EQ(drawn.report.drawn, 1);
  EXPECT_EQ(coloured(drawn.image), 1);
  EXPECT_EQ(drawn.report.shown->to, 0.25);
}

TEST(DipoleOverlay, ShowsAllFromTheOriginUpToTheNeighboursOfAnAxialSlice) {
  const auto dipoles = noDipoles();
  add(*dipoles, 1, 0, 0);
  add(*dipoles, 2, 15, 0);
  add(*dipoles, 3, 25.25, 0);
  add(*dipoles, 4, 25.26, 0);
  add(*dipoles, 5, -0.01, 0);
  const Drawn drawn = draw(*dipoles, View::axial, 20);
  EXPECT_EQ(drawn.report.position, 20.0);
  EXPECT_EQ(drawn.report.drawn, 3);
  EXPECT_EQ(coloured(drawn.image), 3);
  EXPECT_EQ(drawn.report.withheld, 0);
  EXPECT_EQ(drawn.report.shown->from, 0.0);
  EXPECT_EQ(drawn.report.shown->to, 25.25);
}

TEST(DipoleOverlay, ShowsAllFromTheOriginUpToAnAxialSliceAloneWithoutOverlap) {
  const auto dipoles = noDipoles();
  add(*dipoles, 1, 0, 0);
  add(*dipoles, 2, 20.25, 0);
  add(*dipoles, 3, 20.26, 0);
  dipoles->setShowDipole2DOverlap(0);
  const Drawn drawn = draw(*dipoles, View::axial, 20);
  EXPECT_EQ(drawn.report.drawn, 2);
  EXPECT_EQ(coloured(drawn.image), 2);
  EXPECT_EQ(drawn.report.shown->to, 20.25);
}

TEST(DipoleOverlay, SaysHowManyBelowTheOriginAnAxialSliceNearItWithholds) {
  const auto dipoles = noDipoles();
  add(*dipoles, 1, -4.9, 0);
  add(*dipoles, 2, 1.0, 0);
  const Drawn drawn = draw(*dipoles, View::axial, -2);
  EXPECT_EQ(drawn.report.drawn, 1);  // the neighbours above the origin show it
  EXPECT_EQ(drawn.report.withheld, 1);
}

TEST(DipoleOverlay, ShowsNothingOnAxialSlicesBelowTheOriginAndSaysHowManyAreThere) {
  const auto dipoles = noDipoles();
  add(*dipoles, 1, -20, 0);
  add(*dipoles, 2, -24, 0);
  add(*dipoles, 3, -26, 0);
  add(*dipoles, 4, 10, 0);
  const Drawn drawn = draw(*dipoles, View::axial, -20);
  EXPECT_EQ(drawn.report.drawn, 0);
  EXPECT_EQ(coloured(drawn.image), 0);
  EXPECT_EQ(drawn.report.withheld, 2);
  EXPECT_FALSE(drawn.report.shown);
}

TEST(DipoleOverlay, CountsDipolesThatAreSwitchedOff) {
  const auto dipoles = noDipoles();
  add(*dipoles, 1, 1, 1).m_display = 0;
  add(*dipoles, 2, 1, 1).m_display = 2;
  add(*dipoles, 3, 1, 1, 0.5);
  add(*dipoles, 4, 1, 1, std::nan(""));
  add(*dipoles, 5, 1, 1);
  const Drawn drawn = draw(*dipoles, View::coronal, 1);
  EXPECT_EQ(drawn.report.drawn, 1);
  EXPECT_EQ(coloured(drawn.image), 1);
  EXPECT_EQ(drawn.report.switchedOff, 4);
}

TEST(DipoleOverlay, DrawsNothingOfASetThatIsNotShown) {
  const auto dipoles = noDipoles();
  add(*dipoles, 1, 1, 1);
  dipoles->setShowDipoleArray(0);
  const Drawn drawn = draw(*dipoles, View::coronal, 1);
  EXPECT_EQ(coloured(drawn.image), 0);
  EXPECT_EQ(drawn.report.switchedOff, 1);
}

TEST(DipoleOverlay, TellsOfDipolesThatStandAtTheBorder) {
  const auto dipoles = noDipoles();
  add(*dipoles, -400, 1, 1, 3.0);
  const Drawn drawn = draw(*dipoles, View::coronal, 1);
  EXPECT_EQ(drawn.report.drawn, 1);
  EXPECT_EQ(drawn.report.outside, 1);
  EXPECT_EQ(colouredBox(drawn.image).left, 0);
}

TEST(DipoleOverlay, CountsDipolesWithoutALocation) {
  const auto dipoles = noDipoles();
  add(*dipoles, std::nan(""), 1, 1);
  add(*dipoles, 1, 1, INFINITY);
  const Drawn drawn = draw(*dipoles, View::coronal, 1);
  EXPECT_EQ(drawn.report.nowhere, 2);
  EXPECT_EQ(drawn.report.drawn, 0);
  EXPECT_EQ(coloured(drawn.image), 0);
}

TEST(DipoleOverlay, SkipsEmptySlots) {
  const auto dipoles = noDipoles();
  add(*dipoles, 1, 1, 1);
  add(*dipoles, 5, 1, 1);
  dipoles->deleteDipole(0, 0);
  const Drawn drawn = draw(*dipoles, View::coronal, 1);
  EXPECT_EQ(drawn.report.total, 1);
  EXPECT_EQ(coloured(drawn.image), 1);
}

TEST(DipoleOverlay, CountsWhatIsSeenAtEveryPixelSize) {
  for (const double spacing : {0.1, 0.3, 0.7, 1.0, 2.5}) {
    const SliceGeometry geometry(spacing, {40, 30, 50});
    const auto dipoles = noDipoles();
    constexpr int many = 120;
    for (int i = 0; i < many; ++i)
      add(*dipoles, i * 0.25 - 15.0, 3.0, 12.0 + i * 0.1 - 6.0);
    Drawn drawn = draw(*dipoles, View::coronal, 12.0, 5.0, geometry);
    // Each dipole gets a picture of its own, so that none hides another.
    int seen = 0;
    for (int i = 0; i < many; ++i) {
      const auto one = noDipoles();
      add(*one, i * 0.25 - 15.0, 3.0, 12.0 + i * 0.1 - 6.0);
      seen += coloured(draw(*one, View::coronal, 12.0, 5.0, geometry).image);
    }
    EXPECT_EQ(drawn.report.drawn, seen) << spacing;
    EXPECT_GT(seen, 90) << spacing;
    EXPECT_LT(seen, many) << spacing;
  }
}

TEST(DipoleOverlay, RefusesAnImpossibleOverlap) {
  const auto dipoles = noDipoles();
  EXPECT_THROW(draw(*dipoles, View::coronal, 1, -1), std::invalid_argument);
  EXPECT_THROW(draw(*dipoles, View::coronal, 1, std::nan("")), std::invalid_argument);
}
