// The sides of the picture are the sides of the patient: a bright blob put on the left of a head appears
// under the letter L, and a dipole at its centre is drawn at its centre.
#include <algorithm>
#include <gtest/gtest.h>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>

#include "host/paint/StrokeFont.h"
#include "host/picture/SlicePicture.h"
#include "tests/host/head/Phantom.h"

namespace {

using host::Image;
using host::PixelBox;
using host::Rgb;
using host::SlicePicture;
using host::Vector3;
using host::View;

using Dipoles = CDipoleFace8Import01_CTF;

constexpr Rgb white{255, 255, 255};
constexpr Rgb magenta{255, 0, 255};

struct Spot {
  double x = 0.0;
  double y = 0.0;
};

template <typename Test>
std::optional<PixelBox> boxOf(const Image& image, Test test) {
  std::optional<PixelBox> box;
  for (int row = 0; row < image.height(); ++row)
    for (int column = 0; column < image.width(); ++column)
      if (test(column, row)) {
        if (!box)
          box = PixelBox{column, row, column + 1, row + 1};
        box = PixelBox{(std::min)(box->left, column), (std::min)(box->top, row),
                       (std::max)(box->right, column + 1), (std::max)(box->bottom, row + 1)};
      }
  return box;
}

Spot middle(const std::optional<PixelBox>& box) {
  if (!box) {
    ADD_FAILURE() << "nothing was found";
    return {};
  }
  return {(box->left + box->right) * 0.5, (box->top + box->bottom) * 0.5};
}

// The blob: pixels amid a patch of white, which no letter is.
Spot blobOf(const Image& image) {
  constexpr int radius = 4;
  return middle(boxOf(image, [&](int column, int row) {
    if (column < radius || row < radius || column + radius >= image.width() || row + radius >= image.height())
      return false;
    for (int down = -radius; down <= radius; ++down)
      for (int across = -radius; across <= radius; ++across)
        if (image.pixel(column + across, row + down) != white)
          return false;
    return true;
  }));
}

Spot dipoleOf(const Image& image) {
  return middle(boxOf(image, [&](int column, int row) { return image.pixel(column, row) == magenta; }));
}

// Where a side letter stands: the place where the picture is the letter, pixel by pixel.
Spot letterOf(const Image& image, char letter) {
  const host::StrokeFont font(26);
  const std::string text(1, letter);
  Image pattern(font.width(text), font.lineHeight(), image.pixel(0, 0));
  font.draw(pattern, 0, 0, text, white);
  for (int top = 0; top + pattern.height() <= image.height(); ++top)
    for (int left = 0; left + pattern.width() <= image.width(); ++left) {
      const auto same = [&] {
        for (int row = 0; row < pattern.height(); ++row)
          for (int column = 0; column < pattern.width(); ++column)
            if (image.pixel(left + column, top + row) != pattern.pixel(column, row))
              return false;
        return true;
      };
      if (same())
        return {left + pattern.width() * 0.5, top + pattern.height() * 0.5};
    }
  ADD_FAILURE() << "no letter " << letter;
  return {};
}

struct Drawn {
  Image image;
  host::OverlayReport report;
};

Drawn drawView(View view, const Vector3& blob, bool withDipole, double mmPerPixel = 0.5) {
  const host::HeadFrame frame = tiltedFrame();
  const auto dipoles = std::make_unique<Dipoles>();
  if (withDipole) {
    dipoles->addDipoleF(static_cast<float>(blob.x), static_cast<float>(blob.y), static_cast<float>(blob.z));
    dipoles->getDipole(0)->m_size = 7.0;
    dipoles->getDipole(0)->m_color = RGB(255, 0, 255);
  }
  host::SlicePictureOptions options;
  options.mmPerPixel = mmPerPixel;
  const SlicePicture picture =
      drawSlices(*dipoles, phantom(frame, blob), frame, {{view, blob[host::axesOf(view).slab]}}, options);
  return {picture.image, picture.views.at(0)};
}

// Draws the blob's slice twice, without and with a dipole at the blob's centre, and gives both places.
void locate(View view, const Vector3& blob, Spot& place, Image& image) {
  const Image plain = drawView(view, blob, false).image;
  const Drawn marked = drawView(view, blob, true);
  place = blobOf(plain);
  image = marked.image;
  EXPECT_EQ(marked.report.drawn, 1);
  ASSERT_EQ(plain.width(), image.width());
  ASSERT_EQ(plain.height(), image.height());
  const Spot dipole = dipoleOf(image);
  EXPECT_NEAR(dipole.x, place.x, 1.5);
  EXPECT_NEAR(dipole.y, place.y, 1.5);
}

constexpr double aside = 40.0;

}  // namespace

TEST(SlicePicture, ShowsThePatientsLeftUnderTheLetterL) {
  for (const View view : {View::axial, View::coronal}) {
    Spot left;
    Spot right;
    Image image;
    locate(view, {aside, 20, 10}, left, image);
    EXPECT_GT(left.x, image.width() * 0.5);
    EXPECT_LT(letterOf(image, 'L').x - left.x, left.x - letterOf(image, 'R').x);
    EXPECT_GT(letterOf(image, 'L').x, left.x);
    locate(view, {-aside, 20, 10}, right, image);
    EXPECT_LT(right.x, image.width() * 0.5);
    EXPECT_LT(right.x - letterOf(image, 'R').x, letterOf(image, 'L').x - right.x);
    EXPECT_LT(letterOf(image, 'R').x, right.x);
    EXPECT_NEAR(left.x - right.x, 2 * aside / 0.5, 2.0);
  }
}

TEST(SlicePicture, ShowsTheFrontAtTheTopOfAxialViewsUnderTheLetterA) {
  Spot front;
  Spot back;
  Image image;
  locate(View::axial, {10, 20, aside}, front, image);
  EXPECT_LT(letterOf(image, 'A').y, front.y);
  EXPECT_LT(front.y - letterOf(image, 'A').y, letterOf(image, 'P').y - front.y);
  locate(View::axial, {10, 20, -aside}, back, image);
  EXPECT_LT(letterOf(image, 'P').y - back.y, back.y - letterOf(image, 'A').y);
  EXPECT_NEAR(back.y - front.y, 2 * aside / 0.5, 2.0);
}

TEST(SlicePicture, ShowsUpAtTheTopUnderTheLetterS) {
  for (const View view : {View::coronal, View::sagittal}) {
    Spot above;
    Spot below;
    Image image;
    locate(view, {10, aside, 20}, above, image);
    EXPECT_LT(letterOf(image, 'S').y, above.y);
    EXPECT_LT(above.y - letterOf(image, 'S').y, letterOf(image, 'I').y - above.y);
    locate(view, {10, -aside, 20}, below, image);
    EXPECT_LT(letterOf(image, 'I').y - below.y, below.y - letterOf(image, 'S').y);
    EXPECT_NEAR(below.y - above.y, 2 * aside / 0.5, 2.0);
  }
}

TEST(SlicePicture, ShowsTheFrontOnTheRightOfSagittalViewsUnderTheLetterA) {
  Spot front;
  Spot back;
  Image image;
  locate(View::sagittal, {10, 20, aside}, front, image);
  EXPECT_LT(letterOf(image, 'A').x - front.x, front.x - letterOf(image, 'P').x);
  EXPECT_GT(letterOf(image, 'A').x, front.x);
  locate(View::sagittal, {10, 20, -aside}, back, image);
  EXPECT_LT(back.x - letterOf(image, 'P').x, letterOf(image, 'A').x - back.x);
  EXPECT_NEAR(front.x - back.x, 2 * aside / 0.5, 2.0);
}

TEST(SlicePicture, CutsTheSliceAtTheDepthThatWasAsked) {
  // Through the centre the blob is 24 mm wide, 10 mm away from it 13.3 mm: the root of 12^2 - 10^2, twice.
  const host::HeadFrame frame = tiltedFrame();
  const host::Volume volume = phantom(frame, {30, 20, 10});
  const auto dipoles = std::make_unique<Dipoles>();
  for (const View view : {View::axial, View::coronal, View::sagittal}) {
    const Vector3 blob{30, 20, 10};
    const double centre = blob[host::axesOf(view).slab];
    const auto widthAt = [&](double position) {
      const Image image = drawSlices(*dipoles, volume, frame, {{view, position}}, {}).image;
      int most = 0;
      for (int row = 0; row < image.height(); ++row) {
        int run = 0;
        for (int column = 0; column < image.width(); ++column) {
          const Rgb pixel = image.pixel(column, row);
          const bool bright = pixel.red > 170 && pixel.red == pixel.green && pixel.red == pixel.blue;
          run = bright ? run + 1 : 0;
          most = (std::max)(most, run);
        }
      }
      return most * 0.5;
    };
    EXPECT_NEAR(widthAt(centre), 24.0, 2.5);
    EXPECT_NEAR(widthAt(centre + 10), 13.3, 3.0);
    EXPECT_NEAR(widthAt(centre - 10), 13.3, 3.0);
  }
}

TEST(SlicePicture, KeepsOneScaleForAllViews) {
  const Image fine = drawView(View::axial, {30, 20, 10}, true, 0.25).image;
  const Image coarse = drawView(View::axial, {30, 20, 10}, true, 1.0).image;
  EXPECT_NEAR(letterOf(fine, 'P').y - letterOf(fine, 'A').y - 42.0,
              4 * (letterOf(coarse, 'P').y - letterOf(coarse, 'A').y - 42.0), 12.0);
}

TEST(SlicePicture, NeverCutsADipoleOff) {
  const host::HeadFrame frame = tiltedFrame();
  const host::Volume volume = phantom(frame, {0, 0, 0});
  for (const View view : {View::axial, View::coronal, View::sagittal})
    for (const double distance : {-150.0, 150.0, -90.0, 90.0})
      for (const int axis : {host::axesOf(view).column, host::axesOf(view).row}) {
        Vector3 place{1, 1, 1};
        place[axis] = distance;
        const auto dipoles = std::make_unique<Dipoles>();
        dipoles->addDipoleF(static_cast<float>(place.x), static_cast<float>(place.y),
                            static_cast<float>(place.z));
        dipoles->getDipole(0)->m_size = 9.0;
        dipoles->getDipole(0)->m_color = RGB(255, 0, 255);
        const SlicePicture picture = drawSlices(*dipoles, volume, frame, {{view, 1.0}}, {});
        const auto pixels = picture.image.pixels();
        EXPECT_EQ(std::count(pixels.begin(), pixels.end(), magenta), 81);
        EXPECT_EQ(picture.views[0].outside, 0);
      }
}

TEST(SlicePicture, ReportsTheViewsInTheirOrder) {
  const host::HeadFrame frame = tiltedFrame();
  const auto dipoles = std::make_unique<Dipoles>();
  dipoles->addDipoleF(30, 20, 10);
  const SlicePicture picture =
      drawSlices(*dipoles, phantom(frame, {30, 20, 10}), frame,
                 {{View::sagittal, 30.2}, {View::axial, 20}, {View::coronal, 50}}, {});
  ASSERT_EQ(picture.views.size(), 3U);
  EXPECT_EQ(picture.views[0].view, View::sagittal);
  EXPECT_EQ(picture.views[0].position, 30.0);
  EXPECT_EQ(picture.views[0].drawn, 1);
  EXPECT_EQ(picture.views[1].drawn, 1);
  EXPECT_EQ(picture.views[2].view, View::coronal);
  EXPECT_EQ(picture.views[2].drawn, 0);
  EXPECT_EQ(picture.views[2].total, 1);
}

TEST(SlicePicture, WritesItsTitleAndPatientAndGrowsForLongOnes) {
  const host::HeadFrame frame = tiltedFrame();
  const host::Volume volume = phantom(frame, {30, 20, 10});
  const auto dipoles = std::make_unique<Dipoles>();
  const auto heightWith = [&](const std::string& title, const std::string& patient) {
    host::SlicePictureOptions options;
    options.title = title;
    options.patientId = patient;
    return drawSlices(*dipoles, volume, frame, {{View::axial, 20}}, options).image.height();
  };
  const int bare = heightWith("", "");
  EXPECT_EQ(heightWith("spikes.dip", ""), bare + 24);
  EXPECT_EQ(heightWith("spikes.dip", "P007"), bare + 24 + 21);
  EXPECT_GT(heightWith(std::string(300, 'w'), ""), bare + 24);
}

TEST(SlicePicture, WarnsWhenTheVolumeDoesNotStateItsSides) {
  const host::HeadFrame frame = tiltedFrame();
  const host::Volume known = phantom(frame, {30, 20, 10});
  const host::Volume unknown(known.dimensions(), known.voxels(), known.toScanner(), false);
  const auto dipoles = std::make_unique<Dipoles>();
  const int quiet = drawSlices(*dipoles, known, frame, {{View::axial, 20}}, {}).image.height();
  EXPECT_GT(drawSlices(*dipoles, unknown, frame, {{View::axial, 20}}, {}).image.height(), quiet);
}

TEST(SlicePicture, RefusesRequestsThatCannotBeDrawn) {
  const host::HeadFrame frame = tiltedFrame();
  const host::Volume volume = phantom(frame, {30, 20, 10});
  const auto dipoles = std::make_unique<Dipoles>();
  EXPECT_THROW((void)drawSlices(*dipoles, volume, frame, {}, {}), std::invalid_argument);
  EXPECT_THROW((void)drawSlices(*dipoles, volume, frame, {{View::axial, 1e7}}, {}), std::invalid_argument);
  host::SlicePictureOptions options;
  options.mmPerPixel = 0.0;
  EXPECT_THROW((void)drawSlices(*dipoles, volume, frame, {{View::axial, 1}}, options), std::invalid_argument);
}
