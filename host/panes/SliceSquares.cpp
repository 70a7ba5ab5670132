#include "host/panes/SliceSquares.h"

#include "host/head/Vector3.h"
#include "host/paint/BitmapCanvas.h"
#include "host/paint/PictureText.h"
#include "host/picture/DisplayOverride.h"

namespace host {

namespace {

// Wider than any depth that a dipole can have: one slice holds them all.
constexpr double endlessSpacing = 1e6;  // mm
constexpr int pixelsPerCell = 1;

COLORREF colorRef(Rgb colour) {
  return RGB(colour.red, colour.green, colour.blue);
}

// Dark around a bright square, bright around a dark one: seen over bone as over the ventricles.
Rgb edgeColour(Rgb colour) {
  constexpr int dark = 3 * 60;
  return colour.red + colour.green + colour.blue < dark ? ink : edgeInk;
}

// The module's volume: the pane's grid in the plane, one slice along the third axis.
void setVolume(CDipoleFace2On2DView& dipoles, const PaneGrid& grid) {
  Vector3 spacing{grid.mmPerPixel(), grid.mmPerPixel(), grid.mmPerPixel()};
  spacing[axesOf(grid.view()).slab] = endlessSpacing;
  dipoles.setDimensionXYZ(grid.cells(), grid.cells(), grid.cells());
  dipoles.setSpaceXYZ(spacing.x, spacing.y, spacing.z);
}

// Every dipole that is switched on; on axial slices by the module's rule only those from the origin up.
void drawWholeSet(CDipoleFace2On2DView& dipoles, CDC& dc, const PaneGrid& grid) {
  const int slice = grid.cells() / 2;
  switch (grid.view()) {
    case View::axial:
      dipoles.drawDipoleAxial(&dc, slice, pixelsPerCell);
      return;
    case View::coronal:
      dipoles.drawDipoleCoronal(&dc, slice, pixelsPerCell);
      return;
    case View::sagittal:
      dipoles.drawDipoleSagittal(&dc, slice, pixelsPerCell);
      return;
  }
}

// The same square for one dipole, wherever it lies.
void drawOne(CDipoleszq& dipole, CDC& dc, const PaneGrid& grid) {
  const double mm = grid.mmPerPixel();
  const double half = grid.halfExtent();
  dipole.setDimensionXYZ(grid.cells(), grid.cells(), grid.cells());
  switch (grid.view()) {
    case View::axial:
      dipole.drawDipoleAxial(&dc, -endlessSpacing, endlessSpacing, pixelsPerCell, half, mm, half, mm);
      return;
    case View::coronal:
      dipole.drawDipoleCoronal(&dc, -endlessSpacing, endlessSpacing, pixelsPerCell, half, mm, half, mm);
      return;
    case View::sagittal:
      dipole.drawDipoleSagittal(&dc, -endlessSpacing, endlessSpacing, pixelsPerCell, half, mm, half, mm);
      return;
  }
}

// The squares of the dipoles that are switched on, centred on their pixels.
void drawSwitchedOn(CDipoleFace9File& dipoles, CDC& dc, const PaneGrid& grid,
                    const std::vector<SliceSquare>& squares, int size) {
  // The module hangs a square to the right of and below its pixel.
  const int shift = pixelsBefore(size);
  dc.SetViewportOrg(-grid.origin().column - shift, -grid.origin().row - shift);
  drawWholeSet(dipoles, dc, grid);
  CDipoleszq* current = nullptr;
  for (const SliceSquare& square : squares) {
    CDipoleszq& dipole = *dipoles.m_dipoles[square.slot];
    // The module's rule withholds what lies below the origin; a host must not lose it.
    if (grid.view() == View::axial && dipole.m_location[1] < 0.0) {
      drawOne(dipole, dc, grid);
    }
    if (square.slot == dipoles.m_currentDipole) {
      current = &dipole;
    }
  }
  // Nothing covers the current one.
  if (current != nullptr) {
    drawOne(*current, dc, grid);
  }
}

}  // namespace

void drawSquares(Image& image, CDipoleFace9File& dipoles, const PaneGrid& grid,
                 const std::vector<SliceSquare>& squares, int size, int edge) {
  if (squares.empty()) {
    return;
  }
  BitmapCanvas canvas(image);
  {
    DisplayOverride display(dipoles);
    setVolume(dipoles, grid);
    for (const int around : {edge, 0}) {
      const int side = size + 2 * around;
      for (const SliceSquare& square : squares) {
        display.show(square.slot, side, colorRef(around > 0 ? edgeColour(square.colour) : square.colour));
      }
      drawSwitchedOn(dipoles, canvas.dc(), grid, squares, side);
    }
  }
  canvas.copyTo(image);
}

}  // namespace host
