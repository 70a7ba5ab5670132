// The overlay of the whole set on a slice: slabs, half extents, and the three switches.
#include <cmath>
#include <functional>
#include <gtest/gtest.h>
#include <random>

#include "tests/collection/OverlayViews.h"
#include "tests/record/Canvas.h"

namespace {

using Drawn = Canvas::Drawn;

constexpr DWORD yellow = 0x00FFFF00;

// 20 x 24 x 28 voxels of 1 x 2 x 0.5 mm.
std::unique_ptr<Face> smallVolume() {
  auto face = std::make_unique<Face>();
  face->setDimensionXYZ(20, 24, 28);
  face->setSpaceXYZ(1.0, 2.0, 0.5);
  return face;
}

bool drawsAt(Canvas& canvas, Face& face, const View& view, double slabCoordinate, int slice) {
  face.getDipole(0)->m_location[view.slab] = slabCoordinate;
  canvas.clear();
  EXPECT_EQ((face.*view.draw)(canvas.dc(), slice, 1), 1);
  return !canvas.isEmpty();
}

}  // namespace

TEST(OverlayDefaults, Are128VoxelsOf3Mm) {
  const auto face = std::make_unique<Face>();
  for (int axis = 0; axis < 3; ++axis) {
    EXPECT_EQ(face->m_dimension[axis], 128);
    EXPECT_EQ(face->m_space[axis], 3.0);
  }
}

TEST(OverlayDefaults, TheHostLinkIsNull) {
  EXPECT_EQ(std::make_unique<Face>()->m_cbfDipoleXYZ, nullptr);
}

TEST(OverlayDefaults, SwitchesAreAsDocumented) {
  const auto face = std::make_unique<Face>();
  EXPECT_EQ(face->getShowDipoleLatencySelected(), 0);
  EXPECT_EQ(face->getShowDipole2DOverlap(), 1);
  EXPECT_EQ(face->isShowDipoleArray(), 1);
}

TEST(OverlaySetDimensionXYZ, StoresInTheOrderYXZAndReturnsOne) {
  const auto face = std::make_unique<Face>();
  EXPECT_EQ(face->setDimensionXYZ(10, 20, 30), 1);
  EXPECT_EQ(face->m_dimension[0], 20);
  EXPECT_EQ(face->m_dimension[1], 10);
  EXPECT_EQ(face->m_dimension[2], 30);
}

TEST(OverlaySetSpaceXYZ, StoresInTheOrderXYZAndReturnsOne) {
  const auto face = std::make_unique<Face>();
  EXPECT_EQ(face->setSpaceXYZ(1.0, 2.0, 3.5), 1);
  EXPECT_EQ(face->m_space[0], 1.0);
  EXPECT_EQ(face->m_space[1], 2.0);
  EXPECT_EQ(face->m_space[2], 3.5);
}

TEST(Overlay, OfAnEmptyCollectionDrawsNothingAndReturnsOne) {
  Canvas canvas(32, 32);
  const auto face = std::make_unique<Face>();
  for (const View& view : views) {
    EXPECT_EQ((face.get()->*view.draw)(canvas.dc(), 64, 1), 1);
  }
  EXPECT_TRUE(canvas.isEmpty());
}

TEST(Overlay, AHoleDoesNotKeepTheOthersFromBeingDrawn) {
  Canvas canvas(64, 64);
  for (const View& view : views) {
    const auto face = smallVolume();
    for (int i = 0; i < 3; ++i) {
      addAt(*face, 0.0, 0.0, 0.0);
    }
    face->deleteDipole(1, 0);
    face->getDipole(0)->m_display = 0;
    canvas.clear();
    EXPECT_EQ((face.get()->*view.draw)(canvas.dc(), view.slab == 0 ? 10 : view.slab == 1 ? 12 : 14, 1), 1);
    EXPECT_EQ(canvas.drawn().count, 9) << view.name;
  }
}

TEST(Overlay, ObjectsBehindTheCountAreNotDrawn) {
  Canvas canvas(64, 64);
  const auto face = smallVolume();
  addAt(*face, 0.0, 0.0, 0.0);
  face->m_totalDipoles = 0;
  face->drawDipoleCoronal(canvas.dc(), 14, 1);
  EXPECT_TRUE(canvas.isEmpty());
}

TEST(Overlay, LaterDipolesAreDrawnOverEarlierOnes) {
  Canvas canvas(64, 64);
  const auto face = smallVolume();
  addAt(*face, 0.0, 0.0, 0.0);
  addAt(*face, 0.0, 0.0, 0.0);
  face->setDipoleColor(1, 0x000000FF);
  face->drawDipoleCoronal(canvas.dc(), 14, 1);
  EXPECT_EQ(canvas.drawn().color, 0x00FF0000U);
}

TEST(Overlay, GivesEveryDipoleTheExtentsOfTheVolume) {
  Canvas canvas(8, 8);
  for (const View& view : views) {
    const auto face = smallVolume();
    addAt(*face, 0.0, 0.0, 0.0);
    (face.get()->*view.draw)(canvas.dc(), 1, 1);
    EXPECT_EQ(face->getDipole(0)->m_dimX, 20) << view.name;
    EXPECT_EQ(face->getDipole(0)->m_dimY, 24) << view.name;
    EXPECT_EQ(face->getDipole(0)->m_dimZ, 28) << view.name;
  }
}

TEST(Overlay, TheSwitchesDoNotMatter) {
  Canvas canvas(64, 64);
  const auto face = smallVolume();
  addAt(*face, 0.0, 0.0, 0.0);
  face->setShowDipoleArray(0);
  face->setShowDipole2DOverlap(0);
  face->setShowDipoleLatencySelected(1);
  for (const View& view : views) {
    canvas.clear();
    (face.get()->*view.draw)(canvas.dc(), view.slab == 0 ? 10 : view.slab == 1 ? 12 : 14, 1);
    EXPECT_EQ(canvas.drawn().count, 9) << view.name;
  }
}

TEST(Overlay, ADipoleHiddenInThe3DViewIsDrawnOnItsSliceAllTheSame) {
  Canvas canvas(64, 64);
  const auto face = smallVolume();
  addAt(*face, 0.0, 0.0, 0.0);
  face->getDipole(0)->m_show = 0;
  for (const View& view : views) {
    canvas.clear();
    (face.get()->*view.draw)(canvas.dc(), view.slab == 0 ? 10 : view.slab == 1 ? 12 : 14, 1);
    EXPECT_EQ(canvas.drawn().count, 9) << view.name;
  }
}

TEST(OverlayAxial, Of128VoxelsOf3MmAndSlice64ReachesFromZeroToOneAndAHalf) {
  Canvas canvas(160, 160);
  const auto face = std::make_unique<Face>();
  addAt(*face, 0.0, 0.0, 0.0);
  const View& axial = views[0];
  EXPECT_TRUE(drawsAt(canvas, *face, axial, 0.0, 64));
  EXPECT_TRUE(drawsAt(canvas, *face, axial, 1.5, 64));
  EXPECT_FALSE(drawsAt(canvas, *face, axial, std::nextafter(0.0, -1.0), 64));
  EXPECT_FALSE(drawsAt(canvas, *face, axial, std::nextafter(1.5, 2.0), 64));
}

TEST(OverlayAxial, TheHalfExtentsOf128VoxelsOf3MmAre192) {
  Canvas canvas(160, 160);
  const auto face = std::make_unique<Face>();
  addAt(*face, 0.0, 1.0, 0.0);
  face->drawDipoleAxial(canvas.dc(), 64, 1);
  EXPECT_EQ(canvas.drawn(), (Drawn{64, 64, 3, 3, 9, yellow}));
}

TEST(OverlayAxial, ReachesFromTheOriginToTheFarEdgeOfTheSlice) {
  Canvas canvas(64, 64);
  const auto face = smallVolume();
  addAt(*face, 0.0, 0.0, 0.0);
  const View& axial = views[0];
  EXPECT_TRUE(drawsAt(canvas, *face, axial, 0.0, 15));  // 0 to 7 mm
  EXPECT_TRUE(drawsAt(canvas, *face, axial, 7.0, 15));
  EXPECT_FALSE(drawsAt(canvas, *face, axial, 7.0001, 15));
  EXPECT_FALSE(drawsAt(canvas, *face, axial, -0.0001, 15));
}

TEST(OverlayAxial, SlicesBelowTheOriginShowNothing) {
  Canvas canvas(64, 64);
  const auto face = smallVolume();
  addAt(*face, 0.0, 0.0, 0.0);
  for (const double y : {-3.0, -2.0, -1.0, 0.0, 1.0}) {
    EXPECT_FALSE(drawsAt(canvas, *face, views[0], y, 11)) << y;
  }
}

TEST(OverlayCoronal, ReachesHalfAVoxelToBothSidesOfTheSlice) {
  Canvas canvas(64, 64);
  const auto face = smallVolume();
  addAt(*face, 0.0, 0.0, 0.0);
  const View& coronal = views[1];  // slice 17: 1.5 mm
  EXPECT_TRUE(drawsAt(canvas, *face, coronal, 1.25, 17));
  EXPECT_TRUE(drawsAt(canvas, *face, coronal, 1.75, 17));
  EXPECT_FALSE(drawsAt(canvas, *face, coronal, 1.2499, 17));
  EXPECT_FALSE(drawsAt(canvas, *face, coronal, 1.7501, 17));
}

TEST(OverlaySagittal, ReachesHalfAVoxelToBothSidesOfTheSlice) {
  Canvas canvas(64, 64);
  const auto face = smallVolume();
  addAt(*face, 0.0, 0.0, 0.0);
  const View& sagittal = views[2];  // slice 7: -3 mm
  EXPECT_TRUE(drawsAt(canvas, *face, sagittal, -3.5, 7));
  EXPECT_TRUE(drawsAt(canvas, *face, sagittal, -2.5, 7));
  EXPECT_FALSE(drawsAt(canvas, *face, sagittal, -3.5001, 7));
  EXPECT_FALSE(drawsAt(canvas, *face, sagittal, -2.4999, 7));
}

TEST(Overlay, TheMiddleOfAnOddDimensionIsTruncated) {
  Canvas canvas(160, 160);
  const auto face = std::make_unique<Face>();
  face->setDimensionXYZ(129, 129, 129);
  face->setSpaceXYZ(1.0, 1.0, 1.0);
  addAt(*face, 0.0, 0.0, 0.0);
  EXPECT_TRUE(drawsAt(canvas, *face, views[1], -64.0, 0));
  EXPECT_TRUE(drawsAt(canvas, *face, views[1], -63.5, 0));
  EXPECT_FALSE(drawsAt(canvas, *face, views[1], -65.0, 0));
}

TEST(Overlay, TheMiddleOfANegativeDimensionIsTruncatedTowardZero) {
  Canvas canvas(160, 160);
  const auto face = smallVolume();
  face->setDimensionXYZ(20, 24, -3);
  addAt(*face, 0.0, 0.0, 0.0);
  EXPECT_TRUE(drawsAt(canvas, *face, views[1], 0.5, 0));  // 0 + 1, of 0.5 mm each
  EXPECT_FALSE(drawsAt(canvas, *face, views[1], 1.0, 0));
}

TEST(Overlay, TheModeIsTheZoomOfTheGlyph) {
  Canvas canvas(64, 64);
  const auto face = smallVolume();
  addAt(*face, -4.0, 0.0, 0.0);
  face->drawDipoleCoronal(canvas.dc(), 14, 2);
  EXPECT_EQ(canvas.drawn(), (Drawn{12, 24, 3, 3, 9, yellow}));
}

TEST(Overlay, FollowsItsTableOnRandomVolumes) {
  Canvas expected(48, 48);
  Canvas actual(48, 48);
  std::mt19937 random(11);
  const auto whole = [&random](int low, int high) {
    return std::uniform_int_distribution<int>(low, high)(random);
  };
  const auto real = [&random](double low, double high) {
    return std::uniform_real_distribution<double>(low, high)(random);
  };
  const auto face = std::make_unique<Face>();
  for (int i = 0; i < 12; ++i) {
    addAt(*face, 0.0, 0.0, 0.0);
  }
  int visible = 0;
  for (int round = 0; round < 3000; ++round) {
    const int voxels[3] = {whole(1, 40), whole(1, 40), whole(1, 40)};
    const double spacing[3] = {real(0.3, 2.0), real(0.3, 2.0), real(0.3, 2.0)};
    const View& view = views[round % 3];
    const int slice = whole(-3, 43);
    const int mode = whole(1, 2);
    face->setDimensionXYZ(voxels[0], voxels[1], voxels[2]);
    face->setSpaceXYZ(spacing[0], spacing[1], spacing[2]);
    const int middle = voxels[view.slab] / 2;
    const double centre = static_cast<double>(slice - middle) * spacing[view.slab];
    const double low = view.slab == 1 ? 0.0 : centre - spacing[view.slab] * 0.5;
    const double high = centre + spacing[view.slab] * 0.5;
    expected.clear();
    for (int slot = 0; slot < face->m_totalDipoles; ++slot) {
      CDipoleszq& dipole = *face->getDipole(slot);
      for (double& coordinate : dipole.m_location) {
        coordinate = real(-20.0, 20.0);
      }
      dipole.m_color = static_cast<COLORREF>(whole(0, 0xFFFFFF));
      CDipoleszq alone(dipole);
      alone.setDimensionXYZ(voxels[0], voxels[1], voxels[2]);
      (alone.*view.glyph)(
          expected.dc(), low, high, mode, static_cast<double>(voxels[view.first]) * spacing[view.first] * 0.5,
          spacing[view.first], static_cast<double>(voxels[view.second]) * spacing[view.second] * 0.5,
          spacing[view.second]);
    }
    actual.clear();
    ASSERT_EQ((face.get()->*view.draw)(actual.dc(), slice, mode), 1);
    ASSERT_EQ(actual.pixels(), expected.pixels()) << view.name << ", round " << round;
    visible += expected.isEmpty() ? 0 : 1;
  }
  EXPECT_GT(visible, 300);
}

TEST(ShowDipole2DOverlap, SetterReturnsThePreviousValue) {
  const auto face = std::make_unique<Face>();
  face->m_showDipole2DOverlap = 0;
  EXPECT_EQ(face->setShowDipole2DOverlap(1), 0);
  EXPECT_EQ(face->setShowDipole2DOverlap(7), 1);
  EXPECT_EQ(face->setShowDipole2DOverlap(0), 7);
  EXPECT_EQ(face->getShowDipole2DOverlap(), 0);
}

TEST(ShowDipole2DOverlap, ToggleReturnsTheNewValue) {
  const auto face = std::make_unique<Face>();
  EXPECT_EQ(face->toggleShowDipole2DOverlap(), 0);
  EXPECT_EQ(face->toggleShowDipole2DOverlap(), 1);
  face->m_showDipole2DOverlap = 5;
  EXPECT_EQ(face->toggleShowDipole2DOverlap(), 0);
  EXPECT_EQ(face->m_showDipole2DOverlap, 0);
}

TEST(ShowDipoleLatencySelected, SetterReturnsOne) {
  const auto face = std::make_unique<Face>();
  EXPECT_EQ(face->setShowDipoleLatencySelected(5), 1);
  EXPECT_EQ(face->getShowDipoleLatencySelected(), 5);
  EXPECT_EQ(face->setShowDipoleLatencySelected(0), 1);
  EXPECT_EQ(face->getShowDipoleLatencySelected(), 0);
}

TEST(ShowDipoleLatencySelected, ToggleReturnsTheNewValue) {
  const auto face = std::make_unique<Face>();
  EXPECT_EQ(face->toggleShowDipoleLatencySelected(), 1);
  EXPECT_EQ(face->toggleShowDipoleLatencySelected(), 0);
  face->m_showDipoleLatencySelected = -2;
  EXPECT_EQ(face->toggleShowDipoleLatencySelected(), 0);
}

TEST(ShowDipoleArray, SetterReturnsOne) {
  const auto face = std::make_unique<Face>();
  EXPECT_EQ(face->setShowDipoleArray(0), 1);
  EXPECT_EQ(face->isShowDipoleArray(), 0);
  EXPECT_EQ(face->setShowDipoleArray(9), 1);
  EXPECT_EQ(face->isShowDipoleArray(), 9);
}

TEST(ShowDipoleArray, ToggleReturnsTheNewValue) {
  const auto face = std::make_unique<Face>();
  EXPECT_EQ(face->toggleShowDipoleArray(), 0);
  EXPECT_EQ(face->toggleShowDipoleArray(), 1);
  face->m_showDipoleArray = 3;
  EXPECT_EQ(face->toggleShowDipoleArray(), 0);
}
