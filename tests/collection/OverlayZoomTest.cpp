// The zoom of the overlay: how it loses the sides, and the finer grid that keeps them.
#include <cmath>
#include <gtest/gtest.h>

#include "tests/collection/OverlayViews.h"
#include "tests/record/Canvas.h"

// 64 voxels of 2 mm: from -64 to 64 mm along each axis.
TEST(OverlayZoom, OneAloneKeepsLeftAndRightApart) {
  struct Landing {
    double mm;     // to the right on the picture: x is the patient's left, z the front
    int pixel[3];  // with zoom 1, 2, 3
  };
  const Landing landings[] = {{-40.0, {12, 24, 36}}, {-22.0, {21, 42, 63}}, {-20.0, {22, 44, 64}},
                              {-1.0, {31, 63, 64}},  {0.0, {32, 64, 64}},   {1.0, {32, 64, 64}},
                              {20.0, {42, 64, 64}},  {40.0, {52, 64, 64}}};
  Canvas canvas(200, 200);
  for (const View& view : views) {
    const int right = view.slab == 0 ? 2 : 0;
    for (const Landing& landing : landings) {
      const auto face = std::make_unique<Face>();
      face->setDimensionXYZ(64, 64, 64);
      face->setSpaceXYZ(2.0, 2.0, 2.0);
      addAt(*face, 0.0, 0.0, 0.0);
      face->getDipole(0)->m_location[right] = landing.mm;
      for (int zoom = 1; zoom <= 3; ++zoom) {
        canvas.clear();
        (face.get()->*view.draw)(canvas.dc(), 32, zoom);
        EXPECT_EQ(canvas.drawn().left, landing.pixel[zoom - 1])
            << view.name << ", " << landing.mm << " mm, " << zoom;
      }
    }
  }
}

TEST(OverlayZoom, OneAloneKeepsUpAndDownApart) {
  struct Landing {
    double mm;     // up on the picture
    int pixel[3];  // with zoom 1, 2, 3
  };
  const Landing landings[] = {
      {40.0, {12, 24, 36}}, {1.0, {31, 63, 64}}, {-1.0, {32, 64, 64}}, {-40.0, {52, 64, 64}}};
  Canvas canvas(200, 200);
  for (const View& view : views) {
    const int up = view.slab == 1 ? 2 : 1;
    for (const Landing& landing : landings) {
      const auto face = std::make_unique<Face>();
      face->setDimensionXYZ(64, 64, 64);
      face->setSpaceXYZ(2.0, 2.0, 2.0);
      addAt(*face, 0.0, 0.0, 0.0);
      face->getDipole(0)->m_location[up] = landing.mm;
      for (int zoom = 1; zoom <= 3; ++zoom) {
        canvas.clear();
        (face.get()->*view.draw)(canvas.dc(), 32, zoom);
        EXPECT_EQ(canvas.drawn().top, landing.pixel[zoom - 1])
            << view.name << ", " << landing.mm << " mm, " << zoom;
      }
    }
  }
}

TEST(OverlayZoom, AFinerGridEnlargesThePictureAndKeepsTheSides) {
  Canvas canvas(600, 600);
  for (const int finer : {1, 2, 3}) {
    for (const double x : {-40.0, -20.0, 20.0, 40.0}) {
      const auto face = std::make_unique<Face>();
      face->setDimensionXYZ(64 * finer, 64 * finer, 64);  // finer in the picture alone
      face->setSpaceXYZ(2.0 / finer, 2.0 / finer, 2.0);
      addAt(*face, x, 0.0, 0.0);
      canvas.clear();
      face->drawDipoleCoronal(canvas.dc(), 32, 1);
      EXPECT_EQ(canvas.drawn().left, static_cast<int>(std::lround((x + 64.0) / 2.0)) * finer)
          << x << " mm, " << finer;
    }
  }
}
