// The sides of a picture of slices are the sides of the patient: a dipole on the left of a head appears under
// the letter L, on the bright blob that lies at its place.
#include <algorithm>
#include <limits>
#include <stdexcept>

#include "host/dipoles/UnknownDipoles.h"
#include "host/panes/ShownDipoles.h"
#include "tests/host/panes/PictureFixture.h"

namespace {

using host::Image;
using host::Rgb;
using host::Vector3;
using host::View;

struct SlicesPicture : PictureFixture {
  static Drawn dipoleIn(const Image& image) {
    return drawnWhere(image, [](const Rgb& pixel) { return pixel == magenta; });
  }

  // Of the picture of a slice through one dipole.
  Image through(View view, const Vector3& place) {
    dipoles->cleanDipoles();
    put(place);
    return slices({{view, place[host::axesOf(view).slab]}}).image;
  }
};

constexpr double aside = 40.0;

}  // namespace

TEST_F(SlicesPicture, ShowsThePatientsLeftUnderTheLetterL) {
  for (const View view : {View::axial, View::coronal}) {
    const Image left = through(view, {aside, 12, 10});
    const Drawn leftDipole = dipoleIn(left);
    const Place letter = letterPlace(left, 'L');
    ASSERT_GT(letter.column, 0.0);
    EXPECT_LT(std::abs(letter.column - leftDipole.column),
              std::abs(letterPlace(left, 'R').column - leftDipole.column));
    EXPECT_GT(leftDipole.column, left.width() * 0.5);
    const Image right = through(view, {-aside, 12, 10});
    EXPECT_LT(dipoleIn(right).column, right.width() * 0.5);
    EXPECT_NEAR(leftDipole.column - dipoleIn(right).column, 2 * aside / 0.5, 2.0);
  }
}

TEST_F(SlicesPicture, TellsWhatRingsAreOnlyWhereThereAreAny) {
  const auto heightAt = [&](double x, int fiducials) {
    dipoles->setShowFiducialPt(fiducials);
    return slices({{View::sagittal, x}}).image.height();
  };
  const double leftEar = head.frame.fromScanner(head.fiducials->leftEar).x;
  EXPECT_GT(heightAt(leftEar, 1), heightAt(leftEar, 0));
  EXPECT_EQ(heightAt(leftEar - 30.0, 1), heightAt(leftEar - 30.0, 0));
}

// Nothing but the note below the slices differs.
TEST_F(SlicesPicture, DoesNotCountFromEarsThatNobodyKnows) {
  dipoles->setShowFiducialPt(0);
  const std::vector<Rgb> known = slices({{View::axial, 10}}).image.pixels();
  head.arePointsAssumed = true;
  EXPECT_NE(slices({{View::axial, 10}}).image.pixels(), known);
}

TEST_F(SlicesPicture, ShowsTheFrontAtTheTopOfAxialViewsAndOnTheRightOfSagittalOnes) {
  const Image axial = through(View::axial, {10, 12, aside});
  EXPECT_LT(std::abs(letterPlace(axial, 'A').row - dipoleIn(axial).row),
            std::abs(letterPlace(axial, 'P').row - dipoleIn(axial).row));
  EXPECT_LT(letterPlace(axial, 'A').row, dipoleIn(axial).row);
  const Image sagittal = through(View::sagittal, {10, 12, aside});
  EXPECT_LT(std::abs(letterPlace(sagittal, 'A').column - dipoleIn(sagittal).column),
            std::abs(letterPlace(sagittal, 'P').column - dipoleIn(sagittal).column));
  EXPECT_GT(letterPlace(sagittal, 'A').column, dipoleIn(sagittal).column);
}

TEST_F(SlicesPicture, ShowsUpAtTheTopUnderTheLetterS) {
  for (const View view : {View::coronal, View::sagittal}) {
    const Image image = through(view, {10, aside, 12});
    EXPECT_LT(letterPlace(image, 'S').row, dipoleIn(image).row);
    EXPECT_LT(dipoleIn(image).row - letterPlace(image, 'S').row,
              letterPlace(image, 'I').row - dipoleIn(image).row);
  }
}

TEST_F(SlicesPicture, ADipoleStandsOnTheBlobAtItsPlace) {
  const Vector3 blob{30, 10, 20};  // the head's, white in its grey window
  window = head.volume->window();
  for (const View view : {View::axial, View::coronal, View::sagittal}) {
    put(blob);
    const Image marked = slices({{view, blob[host::axesOf(view).slab]}}).image;
    const Drawn dipole = dipoleIn(marked);
    dipoles->cleanDipoles();
    const Image plain = slices({{view, blob[host::axesOf(view).slab]}}).image;
    const auto isNear = [&](int column, int row) {
      return std::hypot(column - dipole.column, row - dipole.row) < 40.0;
    };
    Drawn white;
    for (int row = 0; row < plain.height(); ++row) {
      for (int column = 0; column < plain.width(); ++column) {
        if (plain.pixel(column, row) == Rgb{255, 255, 255} && isNear(column, row)) {
          ++white.pixels;
          white.column += column + 0.5;
          white.row += row + 0.5;
        }
      }
    }
    ASSERT_GT(white.pixels, 1000);
    EXPECT_NEAR(white.column / white.pixels, dipole.column, 1.5);
    EXPECT_NEAR(white.row / white.pixels, dipole.row, 1.5);
  }
}

TEST_F(SlicesPicture, KeepsOneScaleForAllViews) {
  put({aside, 5, 5});
  put({-aside, 5, 5}, RGB(0, 255, 255));
  const auto apart = [&](View view, double mmPerPixel) {
    const Image image = slices({{View::sagittal, 90.0}, {view, 5.0}}, mmPerPixel).image;
    return dipoleIn(image).column - drawnWhere(image, [](const Rgb& pixel) {
                                      return pixel == Rgb{0, 255, 255};
                                    }).column;
  };
  for (const View view : {View::axial, View::coronal}) {
    EXPECT_NEAR(apart(view, 0.5), 160.0, 1.0);
    EXPECT_NEAR(apart(view, 1.0), 80.0, 1.0);
  }
}

TEST_F(SlicesPicture, NeverCutsADipoleOff) {
  settings.glyphPixels = 9;
  for (const View view : {View::axial, View::coronal, View::sagittal}) {
    for (const double distance : {-150.0, 150.0, -90.0, 90.0}) {
      for (const int axis : {host::axesOf(view).column, host::axesOf(view).row}) {
        Vector3 place{1, 1, 1};
        place[axis] = distance;
        dipoles->cleanDipoles();
        put(place);
        const host::DipolePicture picture = slices({{view, 1.0}});
        EXPECT_EQ(dipoleIn(picture.image).pixels, 81);
        EXPECT_TRUE(picture.panes.at(0).warnings.empty());
      }
    }
  }
}

TEST_F(SlicesPicture, CropsToTheHead) {
  const Image image = slices({{View::axial, 0.0}}, 0.25).image;
  EXPECT_LT(image.width(), 480 + 130) << "the ball of 120 mm with letters and margins";
}

TEST_F(SlicesPicture, TellsOfItsPanesInTheirOrder) {
  put({30, 20, 10});
  const host::DipolePicture picture =
      slices({{View::sagittal, 30.2}, {View::axial, 20}, {View::coronal, 50}});
  ASSERT_EQ(picture.panes.size(), 3U);
  EXPECT_EQ(picture.panes[0].title, "Sagittal");
  EXPECT_EQ(picture.panes[0].place, "x = 30.2 mm (left)");
  EXPECT_EQ(picture.panes[0].lines.at(0).text, "dipoles: 1 of 1 on this slice");
  EXPECT_EQ(picture.panes[2].title, "Coronal");
  EXPECT_EQ(picture.panes[2].lines.at(0).text, "dipoles: 0 of 1 on this slice");
}

TEST_F(SlicesPicture, TheModulesSlabShowsAllFromTheEarsUpToTheSlice) {
  for (const double y : {-0.5, 0.0, 20.0, 44.0, 46.0}) {
    put({0, y, 0});
  }
  const auto onSlice = [&](double position) {
    return slices({{View::axial, position}}).panes.at(0).lines.at(0).text;
  };
  settings.toleranceMm = 5.0;
  EXPECT_EQ(onSlice(40.0), "dipoles: 1 of 5 on this slice");
  settings.moduleSlab = true;
  EXPECT_EQ(onSlice(40.0), "dipoles: 3 of 5 on this slice");
  const host::DipolePicture below = slices({{View::axial, -2.0}});
  EXPECT_EQ(below.panes.at(0).lines.at(0).text, "dipoles: 1 of 5 on this slice");
  ASSERT_EQ(below.panes.at(0).warnings.size(), 1U);
  EXPECT_EQ(below.panes.at(0).warnings[0].text,
            "1 dipole close to this slice not drawn: below the level of the ears");
  EXPECT_EQ(slices({{View::coronal, 0.0}}).panes.at(0).lines.at(0).text, "dipoles: 5 of 5 on this slice");
}

TEST_F(SlicesPicture, ADipoleBelowTheOriginIsDrawnOnItsSlice) {
  put({0, -30, 0});
  EXPECT_GT(dipoleIn(slices({{View::axial, -30.0}}).image).pixels, 50);
}

TEST_F(SlicesPicture, TextsAndMarksGrowAsPixelsBecomeSmall) {
  EXPECT_EQ(host::textScale(0.5), 1.0);
  EXPECT_EQ(host::textScale(0.1), 5.0);
  EXPECT_EQ(host::textScale(5.0), 0.8);
  host::PaneContents fine = contents();
  fine.scale = host::textScale(0.25);
  const std::vector<host::SliceRow> row{{"", {{View::axial, 0.0}}}};
  const Image large = host::slicesPicture(fine, row, 0.25, {"title", "A-1", {}, {}, {}, {}}).image;
  const Image small = host::slicesPicture(contents(), row, 0.5, {"title", "A-1", {}, {}, {}, {}}).image;
  EXPECT_NEAR(large.height(), 2 * small.height(), 40) << "line gaps inside of a block stay";
}

TEST_F(SlicesPicture, LabelsStandBesideTheirDipoles) {
  put({10, 5, 5}).m_label = _T("left spike");
  settings.showLabels = true;
  const Image with = slices({{View::axial, 5.0}}).image;
  settings.showLabels = false;
  const Image without = slices({{View::axial, 5.0}}).image;
  const Drawn dipole = dipoleIn(without);
  EXPECT_EQ(dipoleIn(with).pixels, dipole.pixels) << "no label covers a square";
  int changed = 0;
  for (int row = 0; row < with.height(); ++row) {
    for (int column = 0; column < with.width(); ++column) {
      if (with.pixel(column, row) != without.pixel(column, row)) {
        ++changed;
        EXPECT_LT(std::abs(row - dipole.row), 15.0);
        EXPECT_GT(column, dipole.column);
      }
    }
  }
  EXPECT_GT(changed, 150);
}

TEST_F(SlicesPicture, LabelsWithoutRoomAreCounted) {
  for (int i = 0; i < 40; ++i) {
    put({0.1 * i, 5, 5}).m_label = _T("spike");
  }
  settings.showLabels = true;
  const std::string last = slices({{View::axial, 5.0}}).panes.at(0).lines.back().text;
  EXPECT_NE(last.find("labels have no room"), std::string::npos) << last;
}

TEST_F(SlicesPicture, ArrowsByMomentAreAsLongAsTheMomentsAreLarge) {
  const auto reach = [&](double moment) {
    dipoles->cleanDipoles();
    put({0, 5, 55}, RGB(0, 255, 255)).m_moment = -100.0;
    CDipoleszq& dipole = put({-30, 5, 0});
    dipole.m_moment = moment;
    dipole.m_showOrientation = 1;
    dipole.setDipoleOrientation(1, 0, 0);
    const Image image = slices({{View::axial, 5.0}}).image;
    int last = 0;
    for (int row = 0; row < image.height(); ++row) {
      for (int column = 0; column < image.width(); ++column) {
        if (image.pixel(column, row) == magenta) {
          last = (std::max)(last, column);
        }
      }
    }
    return last;
  };
  const int full = reach(100.0);
  EXPECT_EQ(reach(50.0), full) << "not asked for";
  settings.arrowsByMoment = true;
  EXPECT_NEAR(reach(100.0), full, 1);
  EXPECT_NEAR(full - reach(50.0), 30, 2) << "15 of 30 mm";
  EXPECT_NEAR(full - reach(std::numeric_limits<double>::quiet_NaN()), 60 - 4, 2) << "none but the square";
}

TEST_F(SlicesPicture, RowsThroughEachDipoleHaveWhatIsKnownOfIt) {
  CDipoleszq& dipole = put({10, 20, 30});
  dipole.m_label = _T("spike");
  dipole.m_latency = 12.34;
  dipole.m_fitError = 5.0;
  dipole.m_moment = 20.0;
  const host::SliceRow row = host::rowThrough(contents(), 0);
  EXPECT_EQ(row.slices,
            (std::vector<host::SliceRequest>{{View::axial, 20}, {View::coronal, 30}, {View::sagittal, 10}}));
  EXPECT_NE(row.heading.find("spike   latency 12.3 ms   fit error 5.0 %   moment 20.0"), std::string::npos)
      << row.heading;
  host::UnknownDipoles unknown;
  host::UnknownValues values;
  values.mark(0, host::DipoleValue::fitError);
  unknown.mark(*dipoles, values);
  settings.unknown = &unknown;
  EXPECT_NE(host::rowThrough(contents(), 0).heading.find("fit error unknown   moment 20.0"),
            std::string::npos);
  const Image one = host::slicesPicture(contents(), {row}, 0.5, {}).image;
  const Image two = host::slicesPicture(contents(), {row, row}, 0.5, {}).image;
  EXPECT_EQ(one.width(), two.width());
  EXPECT_GT(two.height(), one.height() + 250);
}

TEST_F(SlicesPicture, TheLegendStandsOnceBesideThePanes) {
  put({10, 5, 5}).m_latency = 10.0;
  put({-10, 5, 5}).m_latency = 20.0;
  const Image plain = slices({{View::axial, 5.0}, {View::coronal, 5.0}}).image;
  const host::DipoleColors byLatency = host::ValueColors(*dipoles, host::DipoleValue::latency);
  colours = &byLatency;
  const Image coloured = slices({{View::axial, 5.0}, {View::coronal, 5.0}}).image;
  EXPECT_GT(coloured.width(), plain.width() + 60);
  EXPECT_GT(drawnWhere(coloured, [](const Rgb& pixel) { return pixel == host::noValueColor; }).pixels, 100);
  EXPECT_EQ(dipoleIn(coloured).pixels, 0) << "no own colours";
}

TEST_F(SlicesPicture, WhatIsWrongStandsInThePicture) {
  host::PageTexts texts;
  texts.wrong = {"the unit is not known"};
  const Image image = slices({{View::axial, 0.0}}, 0.5, texts).image;
  EXPECT_EQ(image.pixel(0, 0), (Rgb{168, 24, 32}));
  EXPECT_NE(slices({{View::axial, 0.0}}).image.pixel(0, 0), (Rgb{168, 24, 32}));
}

TEST_F(SlicesPicture, WarnsWhenTheVolumeDoesNotStateItsSides) {
  EXPECT_TRUE(slices({{View::axial, 0.0}}).panes.at(0).warnings.empty());
  head.volume = std::make_shared<host::Volume>(head.volume->dimensions(), head.volume->voxels(),
                                               head.volume->toScanner(), false);
  EXPECT_EQ(slices({{View::axial, 0.0}}).panes.at(0).warnings.at(0).text,
            "The MRI file does not say which side is left");
}

TEST_F(SlicesPicture, RefusesWhatCannotBeDrawn) {
  EXPECT_THROW((void)slices({}), std::invalid_argument);
  EXPECT_THROW((void)slices({{View::axial, 1e7}}), std::invalid_argument);
  for (const double bad : {0.0, 0.09, 5.1, std::nan("")}) {
    EXPECT_THROW((void)slices({{View::axial, 1.0}}, bad), std::invalid_argument);
  }
}

TEST_F(SlicesPicture, APictureThatWouldBeTooLargeIsRefusedBeforeItIsMade) {
  const host::SliceRow row{"", {{View::axial, 0.0}}};
  const std::vector<host::SliceRow> rows(400, row);
  EXPECT_THROW((void)host::slicesPicture(contents(), rows, 0.1, {}), std::runtime_error);
}

TEST_F(SlicesPicture, TheStrongestShownDipoleWithAPlaceIsFound) {
  EXPECT_EQ(host::strongestSlot(contents()), -1);
  put({1, 2, 3}).m_moment = -50.0;
  put({1, 2, 3}).m_moment = 20.0;
  put({std::nan(""), 2, 3}).m_moment = 900.0;
  put({1, 2, 3}).m_moment = std::nan("");
  put({301, 2, 3}).m_moment = 800.0;
  CDipoleszq& off = put({1, 2, 3});
  off.m_moment = 700.0;
  off.m_display = 0;
  EXPECT_EQ(host::strongestSlot(contents()), 0);
  settings.filter.moment.least = 0.0;
  EXPECT_EQ(host::strongestSlot(contents()), 1);
}

TEST_F(SlicesPicture, ItsChoiceIsToldInWords) {
  EXPECT_TRUE(host::filterTexts(contents()).empty());
  EXPECT_EQ(host::toleranceText(contents()), "dipoles within 5.0 mm of the slices");
  settings.toleranceMm.reset();
  EXPECT_EQ(host::toleranceText(contents()), "dipoles at any distance from the slices");
  settings.filter.fitError.most = 10.0;
  settings.filter.moment = {5.0, 50.5};
  settings.filter.latency.least = -3.0;
  EXPECT_EQ(
      host::filterTexts(contents()),
      (std::vector<std::string>{"fit error at most 10 %",
                                std::string("moment 5 to 50.5") + (dipoles->m_momentInNAm != 0 ? " nAm" : ""),
                                "latency at least -3 ms"}));
}
