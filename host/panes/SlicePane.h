// The picture of one slice pane: the grey slice through the crosshair with the dipoles near it, for a
// surgeon.
//
// The module draws the dipoles' squares; the pane decides which. Axial and coronal pictures are radiological:
// the patient's left is on the right. Lengths are mm in the head frame (x left, y up, z front); pixels count
// from the pane's upper left corner.
#pragma once

#include <memory>
#include <optional>
#include <vector>

#include "host/dipoles/DipoleArrows.h"
#include "host/head/HeadBox.h"
#include "host/head/Vector3.h"
#include "host/paint/Image.h"
#include "host/panes/GreySlice.h"
#include "host/panes/PaneAccount.h"
#include "host/panes/PaneContents.h"
#include "host/panes/PaneGrid.h"
#include "host/panes/PaneMarks.h"
#include "host/panes/SliceSquares.h"
#include "host/picture/View.h"

namespace host {

class SlicePane {
 public:
  explicit SlicePane(View view);

  void resize(int width, int height);  // pixels; less than 1 becomes 1
  // The next picture shows the whole head, and so does every other one until the user zooms or pans, also
  // after a change of size. A new head or another frame fits by itself.
  void fit() { m_isFitted = true; }
  // Above 1 enlarges; what is under that pixel stays there. A pixel has 0.1 to 5 mm: beyond, the nearer end.
  // A factor that is not above 0 does nothing.
  void zoom(double factor, int column, int row);
  void pan(int columns, int rows);  // moves the picture to the right and down
  // Takes the size, in pixels of that many mm, that holds the whole head, every dipole which the slice of
  // these contents shows, and the letters around them.
  void showWhole(const PaneContents& contents, double mmPerPixel);
  // That the pane has, without the need to paint it.
  double pixels() const { return static_cast<double>(m_width) * m_height; }

  // Of the pane's size; kept until the next. With colours and a legend wished for, a pane of at least 600
  // pixels has the legend at its right border, beside the picture. Throws std::invalid_argument when a
  // coordinate of the crosshair is not within 1000 mm, std::runtime_error when there is no surface to draw
  // on; the dipoles are as before then too.
  const Image& paint(const PaneContents& contents);

  // By the last picture:
  View view() const { return m_view; }
  // False beyond the borders and over the legend.
  bool isInPicture(int column, int row) const { return m_grid.isInPane({column, row}); }
  // The head point that a pixel shows, in the plane that was drawn; beyond the picture as if it went on.
  Vector3 headPoint(int column, int row) const { return m_grid.headPoint(column, row); }
  // Where the picture shows a place, or the one straight before or behind it; nothing beyond the picture.
  std::optional<PixelPoint> pixelOf(const Vector3& head) const;
  // The slot of the dipole whose square holds the pixel; of several the one whose middle is nearest, then
  // the lowest slot; -1 when there is none.
  int pick(const PaneContents& contents, int column, int row) const;
  // mm along the view's slab axis: the crosshair's coordinate.
  double position() const { return m_grid.position(); }
  double mmPerPixel() const { return m_grid.mmPerPixel(); }
  const SliceAccount& account() const { return m_account; }
  const PaneTexts& texts() const { return m_texts; }
  bool hasFiducialRings() const { return m_hasRings; }        // of the points that the head is registered by
  bool hasFiducialDiamonds() const { return m_hasDiamonds; }  // of those of the file

 private:
  void fitTo(const PaneContents& contents);
  HeadBox boxToShow(const PaneContents& contents) const;
  void takeStock(const PaneContents& contents);
  void gatherTexts(const PaneContents& contents);
  void drawFiducials(const PaneContents& contents);
  void drawDipoles(const PaneContents& contents);
  void drawNames(const PaneContents& contents);
  bool isSquareSeen(const PixelPoint& at) const;
  SliceArrow arrowOfDrawn(const PaneContents& contents, const DipoleArrows& arrows,
                          const SliceSquare& drawn) const;

  View m_view;
  int m_width = 1;
  int m_height = 1;
  int m_pictureWidth = 1;  // without the legend
  bool m_isFitted = true;
  double m_mmPerPixel = 1.0;
  Vector3 m_middle;  // what is to be in the middle of the pane; the coordinate along the slab axis is unused
  std::shared_ptr<const Volume> m_volume;
  std::optional<HeadFrame> m_frame;

  PaneGrid m_grid;
  GreySlice m_grey;
  Image m_picture;
  std::vector<SliceSquare> m_drawn;
  int m_glyph = 1;  // pixels
  SliceAccount m_account;
  bool m_hasRings = false;
  bool m_hasDiamonds = false;
  PaneTexts m_texts;
};

}  // namespace host
