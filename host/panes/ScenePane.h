// The picture of the 3D pane: the slices through the crosshair with all visible dipoles, the head sphere and
// the fiducials, seen from where the user turned it. Lengths are mm in the head frame (x left, y up, z
// front); pixels count from the pane's upper left corner.
#pragma once

#include <memory>
#include <optional>
#include <utility>
#include <vector>

#include "host/dipoles/DipoleScene.h"
#include "host/paint/DepthPicture.h"
#include "host/paint/Image.h"
#include "host/paint/SceneCamera.h"
#include "host/panes/PaneAccount.h"
#include "host/panes/PaneContents.h"
#include "host/panes/PaneMarks.h"
#include "host/picture/ScenePainter.h"
#include "host/picture/SlicePlane.h"

namespace host {

class ScenePane {
 public:
  // Looks from the patient's left front, a little from above.
  ScenePane();

  void resize(int width, int height);  // pixels; less than 1 becomes 1
  // As SlicePane::fit; the direction of sight stays.
  void fit() { m_isFitted = true; }
  // Turns the head with the hand: half a degree for each pixel to the right and down.
  void turn(int columns, int rows);
  void zoom(double factor);  // above 1 enlarges; a factor that is not above 0 does nothing
  void pan(int columns, int rows);
  void lookFrom(const ViewAngles& angles) { m_camera.lookFrom(angles); }
  void lookFrom(Standpoint standpoint) { m_camera.lookFrom(standpoint); }

  // Of the pane's size; kept until the next. While the head is not registered there are no slices, unless
  // the set is empty, without fiducials and sphere too. The fiducials are the head's own when it is
  // registered, else the set's; placed ones stand where the head does. With colours and a legend wished for,
  // the legend takes a strip at the right border, unless the pane is too narrow. Throws
  // std::invalid_argument when a coordinate of the crosshair is not within 1000 mm.
  const Image& paint(const PaneContents& contents);
  // The same with smooth edges and as large as what it shows: head, head sphere, dipoles, fiducials, and the
  // marks around them; a pixel has that many mm (finestPixel to coarsestPixel). What lies farther than
  // headReach from the middle is left out. The size is the pane's from then on.
  const Image& paintWhole(const PaneContents& contents, double mmPerPixel);
  // These slices instead of those through the crosshair.
  void setSlices(std::vector<SliceRequest> slices) { m_slices = std::move(slices); }

  // By the last picture:
  // The slot of the dipole whose ball the pixel shows, -1 when there is none.
  int pick(const PaneContents& contents, int column, int row) const;
  const SceneCamera& camera() const { return m_camera; }
  // What lies beyond the borders and behind slices is counted by paintWhole alone.
  const SceneAccount& count() const { return m_count; }
  const PaneTexts& texts() const { return m_texts; }

 private:
  // From which a plane was sampled.
  struct PlaneKey {
    std::shared_ptr<const Volume> volume;
    HeadFrame frame;
    GreyWindow window;
  };
  bool isHeadShown(const PaneContents& contents) const;
  std::vector<SliceRequest> wantedSlices(const PaneContents& contents) const;
  void gather(const PaneContents& contents);
  void renewPlanes(const PaneContents& contents);
  void fitTo(const PaneContents& contents);
  void aimAtAll(const PaneContents& contents, double mmPerPixel);
  void trim(Image& view, const SceneStyle& style, double scale);
  SceneStyle styleOf(const PaneContents& contents) const;
  Image paintSmoothly(SceneStyle style);
  void countHidden(const SceneStyle& style);
  void gatherTexts(const PaneContents& contents);
  void drawOver(Image& image, const PaneContents& contents, const SceneStyle& style);
  void drawPoints(Image& image, const PaneContents& contents) const;
  void drawNames(Image& image, const PaneContents& contents, const SceneStyle& style);

  int m_width = 1;
  int m_height = 1;
  bool m_isFitted = true;
  SceneCamera m_camera;
  std::shared_ptr<const Volume> m_volume;
  std::optional<HeadFrame> m_frame;

  std::optional<PlaneKey> m_planeKey;
  std::vector<SliceRequest> m_slices;  // empty: those through the crosshair
  std::vector<SlicePlane> m_planes;    // none while the head is not shown
  DipoleScene m_scene;
  SceneAccount m_count;
  PaneTexts m_texts;
  ScenePainter m_painter;
  std::optional<DepthPicture> m_depths;
  Image m_picture;
};

}  // namespace host
