// The dipole's glyph on a slice, looked at pixel by pixel.
#include <array>
#include <cmath>
#include <gtest/gtest.h>
#include <iterator>
#include <limits>
#include <optional>
#include <random>

#include "record/Dipoleszq.h"
#include "tests/record/Canvas.h"
#include "tests/record/DipoleMembers.h"

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
constexpr COLORREF blueish = 0x00C08040;    // 0x00BBGGRR
constexpr DWORD blueishPixel = 0x004080C0;  // 0x00RRGGBB

using Drawn = Canvas::Drawn;
using DrawOperation = int (CDipoles3Display2D::*)(CDC*, double, double, int, double, double, double, double);

// One row of the table of views: which coordinates and which pair serve which axis of the picture.
struct View {
  const char* name;
  DrawOperation draw;
  int slab;
  int right;
  int up;
  bool rightIsPair1;
};

const View views[] = {{"axial", &CDipoles3Display2D::drawDipoleAxial, 1, 0, 2, true},
                      {"coronal", &CDipoles3Display2D::drawDipoleCoronal, 2, 0, 1, true},
                      {"sagittal", &CDipoles3Display2D::drawDipoleSagittal, 0, 2, 1, false}};

CDipoleszq dipoleAt(double x, double y, double z) {
  CDipoleszq dipole;
  dipole.m_location[0] = x;
  dipole.m_location[1] = y;
  dipole.m_location[2] = z;
  dipole.m_color = blueish;
  return dipole;
}

// What a case draws with: everything the procedure knows.
struct Case {
  std::array<double, 3> location;
  std::array<int, 3> extent;  // x, y, z
  double slabMin;
  double slabMax;
  int zoom;
  double half1;
  double spacing1;
  double half2;
  double spacing2;
  int display;
  double size;
};

// A pixel along one axis of the picture: truncated toward zero, then clamped to the image. Every double is
// covered; only what is no number has no pixel.
std::optional<long long> literalPixel(double pixel, int extent) {
  if (std::isnan(pixel)) {
    return std::nullopt;
  }
  double whole = std::trunc(pixel);
  if (whole > extent) {
    whole = extent;
  }
  if (whole < 0.0) {
    whole = 0.0;
  }
  return static_cast<long long>(whole);
}

std::vector<DWORD> literalPicture(const Canvas& canvas, const View& view, const Case& c) {
  const std::vector<DWORD> nothing = canvas.pictureOf(0, 0, 0, 0);
  const double s = c.location[static_cast<std::size_t>(view.slab)];
  if (!(c.slabMin <= s && s <= c.slabMax) || c.display != 1) {
    return nothing;
  }
  double h = c.location[static_cast<std::size_t>(view.right)];
  double v = c.location[static_cast<std::size_t>(view.up)];
  const double H = view.rightIsPair1 ? c.half1 : c.half2;
  const double P = view.rightIsPair1 ? c.spacing1 : c.spacing2;
  const double V = view.rightIsPair1 ? c.half2 : c.half1;
  const double Q = view.rightIsPair1 ? c.spacing2 : c.spacing1;
  h = h > H ? H : h;
  h = h < -H ? -H : h;
  v = v > V ? V : v;
  v = v < -V ? -V : v;
  const auto px = literalPixel((h + H) / P * c.zoom, c.extent[static_cast<std::size_t>(view.right)]);
  const auto py = literalPixel((V - v) / Q * c.zoom, c.extent[static_cast<std::size_t>(view.up)]);
  if (!px || !py || !(c.size >= 1.0)) {
    return nothing;
  }
  const auto size = static_cast<long long>(c.size > 1e6 ? 1e6 : c.size);
  return canvas.pictureOf(*px, *py, size, blueishPixel);
}

std::vector<DWORD> drawnPicture(Canvas& canvas, const View& view, const Case& c) {
  CDipoleszq dipole = dipoleAt(c.location[0], c.location[1], c.location[2]);
  dipole.setDimensionXYZ(c.extent[0], c.extent[1], c.extent[2]);
  dipole.m_display = c.display;
  dipole.m_size = c.size;
  canvas.clear();
  EXPECT_EQ((dipole.*view.draw)(canvas.dc(), c.slabMin, c.slabMax, c.zoom, c.half1, c.spacing1, c.half2,
                                c.spacing2),
            1);
  return canvas.pixels();
}

class RandomCases {
 public:
  explicit RandomCases(unsigned seed) : m_random(seed) {}

  Case next() {
    Case c;
    c.half1 = half();
    c.half2 = half();
    for (double& coordinate : c.location) {
      coordinate = this->coordinate();
    }
    for (int& extent : c.extent) {
      extent = chance(20) ? pick(oddExtents) : whole(0, 40);
    }
    c.slabMin = chance(20) ? odd() : uniform(-40.0, 10.0);
    c.slabMax = chance(20) ? odd() : uniform(-10.0, 40.0);
    c.zoom = chance(10) ? pick(oddZooms) : whole(1, 3);
    c.spacing1 = chance(20) ? odd() : uniform(0.5, 3.0);
    c.spacing2 = chance(20) ? odd() : uniform(0.5, 3.0);
    c.display = chance(10) ? whole(-1, 3) : 1;
    c.size = chance(20) ? odd() : uniform(0.0, 9.0);
    return c;
  }

 private:
  static constexpr double odds[] = {0.0,    -0.0,   notANumber, infinity, -infinity,    1e300,
                                    -1e300, 1e-310, 1.0,        -1.0,     2147483648.0, -2147483649.0};
  static constexpr int oddExtents[] = {-1, -7, -40, (std::numeric_limits<int>::max)(),
                                       (std::numeric_limits<int>::min)()};
  static constexpr int oddZooms[] = {0, -1, -3, (std::numeric_limits<int>::max)(),
                                     (std::numeric_limits<int>::min)()};

  int whole(int low, int high) { return std::uniform_int_distribution<int>(low, high)(m_random); }
  bool chance(int percent) { return whole(1, 100) <= percent; }
  double uniform(double low, double high) {
    return std::uniform_real_distribution<double>(low, high)(m_random);
  }
  template <class Value, std::size_t count>
  Value pick(const Value (&values)[count]) {
    return values[static_cast<std::size_t>(whole(0, static_cast<int>(count) - 1))];
  }
  double odd() { return pick(odds); }
  double half() { return chance(5) ? odd() : uniform(-5.0, 30.0); }
  double coordinate() { return chance(8) ? odd() : uniform(-40.0, 40.0); }

  std::mt19937 m_random;
};

// A view of its own volume: 20 mm to both sides, 1 mm voxels, the dipole at the coordinates of the view.
int drawSimple(Canvas& canvas, const View& view, double s, double h, double v, double slabMin,
               double slabMax) {
  CDipoleszq dipole = dipoleAt(0.0, 0.0, 0.0);
  dipole.m_location[view.slab] = s;
  dipole.m_location[view.right] = h;
  dipole.m_location[view.up] = v;
  canvas.clear();
  return (dipole.*view.draw)(canvas.dc(), slabMin, slabMax, 1, 20.0, 1.0, 20.0, 1.0);
}

}  // namespace

TEST(SetDimensionXYZ, StoresTheExtentsAndReturnsOne) {
  CDipoleszq dipole;
  EXPECT_EQ(dipole.setDimensionXYZ(10, 20, 30), 1);
  EXPECT_EQ(dipole.m_dimX, 10);
  EXPECT_EQ(dipole.m_dimY, 20);
  EXPECT_EQ(dipole.m_dimZ, 30);
}

TEST(DipoleGlyph, OnEitherEndOfTheSlabIsDrawn) {
  Canvas canvas(64, 64);
  for (const View& view : views) {
    EXPECT_EQ(drawSimple(canvas, view, -2.0, 0.0, 0.0, -2.0, 3.0), 1);
    EXPECT_EQ(canvas.drawn(), (Drawn{20, 20, 3, 3, 9, blueishPixel})) << view.name;
    EXPECT_EQ(drawSimple(canvas, view, 3.0, 0.0, 0.0, -2.0, 3.0), 1);
    EXPECT_EQ(canvas.drawn(), (Drawn{20, 20, 3, 3, 9, blueishPixel})) << view.name;
  }
}

TEST(DipoleGlyph, SlightlyOutsideTheSlabIsNotDrawn) {
  Canvas canvas(64, 64);
  for (const View& view : views) {
    EXPECT_EQ(drawSimple(canvas, view, std::nextafter(-2.0, -9.0), 0.0, 0.0, -2.0, 3.0), 1);
    EXPECT_TRUE(canvas.isEmpty()) << view.name;
    EXPECT_EQ(drawSimple(canvas, view, std::nextafter(3.0, 9.0), 0.0, 0.0, -2.0, 3.0), 1);
    EXPECT_TRUE(canvas.isEmpty()) << view.name;
  }
}

TEST(DipoleGlyph, ASlabCoordinateThatIsNoNumberIsOutside) {
  Canvas canvas(64, 64);
  for (const View& view : views) {
    EXPECT_EQ(drawSimple(canvas, view, notANumber, 0.0, 0.0, -infinity, infinity), 1);
    EXPECT_TRUE(canvas.isEmpty()) << view.name;
  }
}

TEST(DipoleGlyph, ASlabTurnedRoundHoldsNothing) {
  Canvas canvas(64, 64);
  for (const View& view : views) {
    drawSimple(canvas, view, 0.0, 0.0, 0.0, 3.0, -2.0);
    EXPECT_TRUE(canvas.isEmpty()) << view.name;
  }
}

TEST(DipoleGlyph, LargerFirstCoordinateLiesFurtherRight) {
  Canvas canvas(64, 64);
  for (const View& view : views) {
    drawSimple(canvas, view, 0.0, 5.0, 0.0, -1.0, 1.0);
    EXPECT_EQ(canvas.drawn().left, 25) << view.name;
    EXPECT_EQ(canvas.drawn().top, 20) << view.name;
  }
}

TEST(DipoleGlyph, LargerSecondCoordinateLiesHigherUp) {
  Canvas canvas(64, 64);
  for (const View& view : views) {
    drawSimple(canvas, view, 0.0, 0.0, 5.0, -1.0, 1.0);
    EXPECT_EQ(canvas.drawn().left, 20) << view.name;
    EXPECT_EQ(canvas.drawn().top, 15) << view.name;
  }
}

TEST(DipoleGlyph, AxialSlicesYAndShowsXRightAndZUp) {
  Canvas canvas(64, 64);
  CDipoleszq dipole = dipoleAt(3.0, 50.0, 7.0);
  dipole.drawDipoleAxial(canvas.dc(), 50.0, 50.0, 1, 20.0, 1.0, 30.0, 1.0);
  EXPECT_EQ(canvas.drawn(), (Drawn{23, 23, 3, 3, 9, blueishPixel}));
}

TEST(DipoleGlyph, CoronalSlicesZAndShowsXRightAndYUp) {
  Canvas canvas(64, 64);
  CDipoleszq dipole = dipoleAt(3.0, 7.0, 50.0);
  dipole.drawDipoleCoronal(canvas.dc(), 50.0, 50.0, 1, 20.0, 1.0, 30.0, 1.0);
  EXPECT_EQ(canvas.drawn(), (Drawn{23, 23, 3, 3, 9, blueishPixel}));
}

TEST(DipoleGlyph, SagittalSlicesXAndShowsZRightByPairTwoAndYUpByPairOne) {
  Canvas canvas(64, 64);
  CDipoleszq dipole = dipoleAt(50.0, 7.0, 3.0);
  dipole.drawDipoleSagittal(canvas.dc(), 50.0, 50.0, 1, 20.0, 1.0, 30.0, 1.0);
  EXPECT_EQ(canvas.drawn(), (Drawn{33, 13, 3, 3, 9, blueishPixel}));
}

TEST(DipoleGlyph, TheLeftSideOfTheHeadLiesRightOnTheAxialPicture) {
  Canvas canvas(64, 64);
  CDipoleszq left = dipoleAt(10.0, 0.0, 0.0);
  left.drawDipoleAxial(canvas.dc(), 0.0, 0.0, 1, 32.0, 1.0, 32.0, 1.0);
  EXPECT_EQ(canvas.drawn().left, 42);
}

TEST(DipoleGlyph, XZeroOfHalfExtent128HasItsLeftEdgeAtPixel128) {
  Canvas canvas(140, 8);
  CDipoleszq dipole = dipoleAt(0.0, 0.0, 128.0);
  dipole.drawDipoleAxial(canvas.dc(), 0.0, 0.0, 1, 128.0, 1.0, 128.0, 1.0);
  EXPECT_EQ(canvas.drawn(), (Drawn{128, 0, 3, 3, 9, blueishPixel}));
}

TEST(DipoleGlyph, BeyondTheHalfExtentIsDrawnAtTheBorder) {
  Canvas canvas(64, 64);
  for (const View& view : views) {
    drawSimple(canvas, view, 0.0, 21.0, 0.0, -1.0, 1.0);
    EXPECT_EQ(canvas.drawn().left, 40) << view.name;
    drawSimple(canvas, view, 0.0, -500.0, 0.0, -1.0, 1.0);
    EXPECT_EQ(canvas.drawn().left, 0) << view.name;
    drawSimple(canvas, view, 0.0, 0.0, infinity, -1.0, 1.0);
    EXPECT_EQ(canvas.drawn().top, 0) << view.name;
    drawSimple(canvas, view, 0.0, 0.0, -infinity, -1.0, 1.0);
    EXPECT_EQ(canvas.drawn().top, 40) << view.name;
  }
}

TEST(DipoleGlyph, BeyondTheImageIsClampedToTheExtentItself) {
  Canvas canvas(64, 64);
  CDipoleszq dipole = dipoleAt(20.0, 0.0, -20.0);
  dipole.setDimensionXYZ(33, 0, 35);
  dipole.drawDipoleAxial(canvas.dc(), 0.0, 0.0, 1, 20.0, 1.0, 20.0, 1.0);
  EXPECT_EQ(canvas.drawn(), (Drawn{33, 35, 3, 3, 9, blueishPixel}));
}

TEST(DipoleGlyph, EachViewClampsToTheExtentsOfItsTwoAxes) {
  struct Expectation {
    const View& view;
    int left;
    int top;
  };
  Canvas canvas(64, 64);
  for (const auto& [view, left, top] :
       {Expectation{views[0], 11, 13}, Expectation{views[1], 11, 12}, Expectation{views[2], 13, 12}}) {
    CDipoleszq dipole = dipoleAt(0.0, 0.0, 0.0);
    dipole.m_location[view.right] = 20.0;
    dipole.m_location[view.up] = -20.0;
    dipole.setDimensionXYZ(11, 12, 13);
    canvas.clear();
    (dipole.*view.draw)(canvas.dc(), 0.0, 0.0, 1, 20.0, 1.0, 20.0, 1.0);
    EXPECT_EQ(canvas.drawn().left, left) << view.name;
    EXPECT_EQ(canvas.drawn().top, top) << view.name;
  }
}

TEST(DipoleGlyph, ZoomAndSpacingScaleThePosition) {
  Canvas canvas(64, 64);
  CDipoleszq dipole = dipoleAt(5.0, 0.0, 5.0);
  dipole.drawDipoleAxial(canvas.dc(), 0.0, 0.0, 3, 20.0, 2.0, 30.0, 4.0);
  EXPECT_EQ(canvas.drawn().left, 37);  // 25 / 2 * 3 = 37.5
  EXPECT_EQ(canvas.drawn().top, 18);   // 25 / 4 * 3 = 18.75
}

TEST(DipoleGlyph, IsDrawnOnlyWhenDisplayIsOne) {
  Canvas canvas(64, 64);
  for (const View& view : views) {
    for (const int display : {0, 2, -1, 3}) {
      CDipoleszq dipole = dipoleAt(0.0, 0.0, 0.0);
      dipole.m_display = display;
      EXPECT_EQ((dipole.*view.draw)(canvas.dc(), -1.0, 1.0, 1, 20.0, 1.0, 20.0, 1.0), 1);
      EXPECT_TRUE(canvas.isEmpty()) << view.name << ' ' << display;
    }
  }
}

TEST(DipoleGlyph, TheSwitchesOfThe3DViewDoNotMatter) {
  Canvas canvas(64, 64);
  CDipoleszq dipole = dipoleAt(0.0, 0.0, 0.0);
  dipole.m_show = 0;
  dipole.m_showOrientation = 0;
  dipole.drawDipoleAxial(canvas.dc(), -1.0, 1.0, 1, 20.0, 1.0, 20.0, 1.0);
  EXPECT_EQ(canvas.drawn().count, 9);
}

TEST(DipoleGlyph, TheSizeIsTruncated) {
  Canvas canvas(64, 64);
  CDipoleszq dipole = dipoleAt(0.0, 0.0, 0.0);
  dipole.m_size = 3.9;
  dipole.drawDipoleAxial(canvas.dc(), -1.0, 1.0, 1, 20.0, 1.0, 20.0, 1.0);
  EXPECT_EQ(canvas.drawn(), (Drawn{20, 20, 3, 3, 9, blueishPixel}));
}

TEST(DipoleGlyph, ASizeBelowOneDrawsNothing) {
  Canvas canvas(64, 64);
  for (const double size : {0.5, 0.0, -0.9, -3.0, notANumber, -infinity}) {
    CDipoleszq dipole = dipoleAt(0.0, 0.0, 0.0);
    dipole.m_size = size;
    EXPECT_EQ(dipole.drawDipoleAxial(canvas.dc(), -1.0, 1.0, 1, 20.0, 1.0, 20.0, 1.0), 1);
    EXPECT_TRUE(canvas.isEmpty()) << size;
  }
}

TEST(DipoleGlyph, AnEndlessSizeFillsThePictureRightAndBelow) {
  Canvas canvas(64, 64);
  CDipoleszq dipole = dipoleAt(0.0, 0.0, 0.0);
  dipole.m_size = infinity;
  dipole.drawDipoleAxial(canvas.dc(), -1.0, 1.0, 1, 20.0, 1.0, 20.0, 1.0);
  EXPECT_EQ(canvas.drawn(), (Drawn{20, 20, 44, 44, 44 * 44, blueishPixel}));
}

TEST(DipoleGlyph, AnInPlaneCoordinateThatIsNoNumberIsNotDrawn) {
  Canvas canvas(160, 160);  // larger than the image of 128 pixels, so that its last pixel would be seen
  for (const View& view : views) {
    EXPECT_EQ(drawSimple(canvas, view, 0.0, notANumber, 0.0, -1.0, 1.0), 1);
    EXPECT_TRUE(canvas.isEmpty()) << view.name;
    EXPECT_EQ(drawSimple(canvas, view, 0.0, 0.0, notANumber, -1.0, 1.0), 1);
    EXPECT_TRUE(canvas.isEmpty()) << view.name;
    drawSimple(canvas, view, 0.0, 0.0, 0.0, -1.0, 1.0);
    EXPECT_FALSE(canvas.isEmpty()) << view.name;
  }
}

TEST(DipoleGlyph, FollowsTheViewportOrigin) {
  Canvas canvas(64, 64);
  canvas.dc()->SetViewportOrg(7, -4);
  CDipoleszq dipole = dipoleAt(0.0, 0.0, 0.0);
  dipole.drawDipoleAxial(canvas.dc(), -1.0, 1.0, 1, 20.0, 1.0, 20.0, 1.0);
  EXPECT_EQ(canvas.drawn(), (Drawn{27, 16, 3, 3, 9, blueishPixel}));
}

TEST(DipoleGlyph, DrawingDoesNotChangeTheDipole) {
  Canvas canvas(64, 64);
  CDipoleszq dipole = dipoleAt(300.0, 0.0, 0.0);
  const MemberValues before = membersOf(dipole);
  for (const View& view : views) {
    (dipole.*view.draw)(canvas.dc(), -500.0, 500.0, 2, 20.0, 1.0, 20.0, 1.0);
  }
  EXPECT_EQ(membersOf(dipole), before);
}

TEST(DipoleGlyph, FollowsItsStepsOnRandomAndOddNumbers) {
  Canvas canvas(48, 48);
  const std::vector<DWORD> nothing = canvas.pictureOf(0, 0, 0, 0);
  RandomCases cases(2026);
  int visible = 0;
  for (int i = 0; i < 12000; ++i) {
    const Case c = cases.next();
    const View& view = views[i % 3];
    const std::vector<DWORD> expected = literalPicture(canvas, view, c);
    ASSERT_EQ(drawnPicture(canvas, view, c), expected) << view.name << ", case " << i;
    visible += expected != nothing ? 1 : 0;
  }
  EXPECT_GT(visible, 1000);
}
