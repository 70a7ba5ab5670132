// `dipole draw` beside the viewer's saved picture: of the same files both show the same dipoles in the same
// colours at the same places, pixel by pixel.
#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <memory>
#include <string>
#include <vector>

#include "host/panes/PicturePage.h"
#include "host/panes/ScenePane.h"
#include "host/panes/SlicePane.h"
#include "host/session/Session.h"
#include "tests/host/head/NiftiFile.h"
#include "tests/host/paint/PngReading.h"
#include "tests/support/TempFolder.h"

namespace {

using host::Image;
using host::PixelPoint;
using host::Rgb;
using host::View;

constexpr double mmPerPixel = 0.5;
constexpr const char* points = "nasion 0 95 -20\nleft -75 -10 -40\nright 75 -10 -40\n";

// A grey ball around the scanner's origin.
std::string mri() {
  NiftiFile file;
  file.dim = {3, 60, 60, 60, 1, 1, 1, 1};
  file.pixdim = {1, 4, 4, 4, 0, 0, 0, 0};
  file.srow = {4, 0, 0, -118, 0, 4, 0, -118, 0, 0, 4, -118};
  for (int k = 0; k < 60; ++k) {
    for (int j = 0; j < 60; ++j) {
      for (int i = 0; i < 60; ++i) {
        const double radius = 4.0 * std::hypot(i - 29.5, j - 29.5, k - 29.5);
        file.add(radius < 90.0 ? static_cast<float>(100 + (i + j + k) % 9) : 0.0F);
      }
    }
  }
  return file.version1();
}

// Around the slices through (30, 40, 20): near and far ones, one below the ears, one that is switched off.
constexpr const char* dipoleFile =
    "MEG_Sphere\n{\nORIGIN_X: 0.0\nORIGIN_Y: 0.0\nORIGIN_Z: 5.0\nRADIUS: 8.5\n}\n"
    "Dipoles\n{\n// xp (cm) yp (cm) zp (cm) xo yo zo Mom(nAm) Label\n"
    "1: 2.0 3.0 4.0 0.6 0.0 0.8 10 a\n2: 2.1 -3.3 4.3 0.0 1.0 0.0 40 b\n3: -1.0 3.2 4.2 1.0 0.0 0.0 25 c\n"
    "4: 2.2 3.4 -0.3 0.0 0.0 1.0 30 d\n5: 0.0 0.0 9.0 0.0 0.0 1.0 35 e\n6: 2.0 1.0 4.0 0.0 0.0 1.0 55 f\n}\n"
    "Dipole_Flags\n{\n1: 0 0 1 1 1\n2: 0 0 1 1 1\n3: 0 0 1 1 1\n4: 0 0 1 1 1\n5: 0 0 1 1 1\n6: 0 1 1 1 "
    "1\n}\n";

struct ColouredPixel {
  PixelPoint at;
  Rgb colour;
  friend bool operator==(const ColouredPixel&, const ColouredPixel&) = default;
};

// The pixels of exactly these colours, moved so that the first of them is (0, 0).
std::vector<ColouredPixel> pixelsOf(const Image& image, const std::vector<Rgb>& colours) {
  std::vector<ColouredPixel> pixels;
  for (int row = 0; row < image.height(); ++row) {
    for (int column = 0; column < image.width(); ++column) {
      if (const Rgb pixel = image.pixel(column, row);
          std::find(colours.begin(), colours.end(), pixel) != colours.end()) {
        pixels.push_back({{column, row}, pixel});
      }
    }
  }
  if (pixels.empty()) {
    return pixels;
  }
  const PixelPoint first = pixels.front().at;
  for (ColouredPixel& pixel : pixels) {
    pixel.at = {pixel.at.column - first.column, pixel.at.row - first.row};
  }
  return pixels;
}

struct ToolAndViewer : testing::Test {
  ToolAndViewer() {
    folder.write("head.fiducials", points);
    const CString headPath = folder.write("head.nii", mri());
    const CString setPath = folder.write("d.dip", dipoleFile);
    session.openMri(headPath);
    session.importFiles({setPath}, [](int, int, const CString&) { return true; });
    session.dipoles().m_currentDipole = -1;  // no ring
    session.setCrosshair({30.0, 40.0, 20.0});
    session.view().thinnestSlice = mmPerPixel;
    session.view().showLegend = false;
  }

  host::PaneContents contents() {
    return {session.dipoles(), session.head(),    session.view(),        session.crosshair(),
            session.window(),  session.colours(), session.placedPoints()};
  }

  // Zoomed by the user to the scale of the tool's picture.
  Image viewerPane(View view) {
    host::SlicePane pane(view);
    pane.resize(620, 580);
    pane.paint(contents());
    pane.zoom(pane.mmPerPixel() / mmPerPixel, 310, 290);
    const Image picture = pane.paint(contents());
    EXPECT_NEAR(pane.mmPerPixel(), mmPerPixel, 1e-12);
    return picture;
  }

  // The viewer's saved picture: this view, and three empty panes.
  Image viewerPicture(View view) {
    const Image none(10, 10, {});
    return host::fourPanes(viewerPane(view), none, none, none, {});
  }

  Image toolPicture(const std::string& options) {
    const char* tool = std::getenv("DIPOLE_TOOL");
    if (tool == nullptr) {
      ADD_FAILURE() << "DIPOLE_TOOL does not name the program";
      return {};
    }
    const std::string out = folder.pathUtf8("out.png");
    const std::string command = std::string(tool) + " draw " + folder.pathUtf8("d.dip") + " --mri " +
                                folder.pathUtf8("head.nii") + " --force -o " + out + " " + options +
                                " 2>/dev/null";
    EXPECT_EQ(std::system(command.c_str()), 0) << command;
    std::ifstream file(out, std::ios::binary);
    const Png png(std::string(std::istreambuf_iterator<char>(file), {}));
    Image image(static_cast<int>(png.width), static_cast<int>(png.height), {});
    for (int row = 0; row < image.height(); ++row) {
      for (int column = 0; column < image.width(); ++column) {
        image.setPixel(
            column, row,
            png.pixels.at(static_cast<std::size_t>(row) * png.width + static_cast<std::size_t>(column)));
      }
    }
    return image;
  }

  // Of all dipoles, by the viewer's colours now.
  std::vector<Rgb> dipoleColours() {
    const host::PaneContents now = contents();
    std::vector<Rgb> colours;
    for (int slot = 0; slot < now.dipoles.m_totalDipoles; ++slot) {
      colours.push_back(colourOf(now, *now.dipoles.m_dipoles[slot]));
    }
    return colours;
  }

  void expectSame(const std::string& options) {
    const std::pair<View, std::string> slices[] = {
        {View::axial, "axial:40"}, {View::coronal, "coronal:20"}, {View::sagittal, "sagittal:30"}};
    const std::vector<Rgb> colours = dipoleColours();
    for (const auto& [view, slice] : slices) {
      const auto viewer = pixelsOf(viewerPicture(view), colours);
      const Image picture = toolPicture("--slice " + slice + " " + options);
      const int legend = session.view().colourBy != host::ColourBy::own
                             ? 130
                             : 0;  // columns at the right, which the viewer has not
      const auto tool =
          pixelsOf(picture.cropped({0, 0, picture.width() - legend, picture.height()}), colours);
      EXPECT_GT(viewer.size(), 100U) << slice;
      EXPECT_TRUE(viewer == tool) << slice << " " << options << ": " << viewer.size() << " and "
                                  << tool.size();
    }
  }

  TempFolder folder;
  std::unique_ptr<CDipoleFace9File> set = std::make_unique<CDipoleFace9File>();
  host::Session session{*set};
};

}  // namespace

TEST_F(ToolAndViewer, ShowTheSameDipolesInTheSamePlacesWithTheirOwnColours) {
  expectSame("");
}

TEST_F(ToolAndViewer, ShowTheSameWhateverTheTolerance) {
  session.view().toleranceMm.reset();
  expectSame("--tolerance all");
  session.view().toleranceMm = 1.5;
  expectSame("--tolerance 1.5");
}

TEST_F(ToolAndViewer, ShowTheSameColoursByValue) {
  session.view().colourBy = host::ColourBy::moment;
  session.view().toleranceMm.reset();
  expectSame("--color-by moment --tolerance all");
}

TEST_F(ToolAndViewer, ShowTheSameOfAFilteredSet) {
  session.view().filter.moment = {20.0, 35.0};
  session.view().toleranceMm.reset();
  expectSame("--moment 20:35 --tolerance all");
}

TEST_F(ToolAndViewer, WhatIsNotTheSameIsSeen) {
  const std::vector<Rgb> colours = dipoleColours();
  const auto viewer = pixelsOf(viewerPicture(View::coronal), colours);
  EXPECT_FALSE(viewer == pixelsOf(toolPicture("--slice coronal:20 --moment 20:"), colours));
  EXPECT_FALSE(viewer == pixelsOf(toolPicture("--slice coronal:20 --glyph 8"), colours));
  EXPECT_FALSE(viewer == pixelsOf(toolPicture("--slice coronal:10"), colours));
}
