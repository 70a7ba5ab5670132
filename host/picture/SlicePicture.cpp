#include "host/picture/SlicePicture.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <stdexcept>
#include <string_view>

#include "host/head/HeadBox.h"
#include "host/paint/PictureText.h"
#include "host/paint/StrokeFont.h"
#include "host/picture/SliceCaption.h"
#include "host/picture/SliceGeometry.h"
#include "host/picture/SliceSampler.h"

namespace host {

namespace {

constexpr int margin = 12;     // around everything
constexpr int edge = 30;       // between a slice and the edge of its view, where the side letters stand
constexpr int cropMargin = 6;  // around the head and the squares
constexpr double scaleBarMm = 50.0;

// One slice with its dipoles, cut to what is worth seeing.
struct Slice {
  Image image;
  OverlayReport report;
};

Image greySlice(const Volume& volume, const HeadFrame& frame, const SliceGeometry& geometry, View view,
                double position) {
  const Vector3 first = geometry.headPoint(view, position, 0, 0);
  const SampleGrid grid{first, geometry.headPoint(view, position, 1, 0) - first,
                        geometry.headPoint(view, position, 0, 1) - first, geometry.columns(view),
                        geometry.rows(view)};
  return greyPicture(sampleSlice(volume, frame, grid), grid.columns, grid.rows, volume.window());
}

PixelBox headPixels(const HeadBox& head, const SliceGeometry& geometry, View view) {
  const ViewAxes axes = axesOf(view);
  Vector3 upperLeft;
  Vector3 lowerRight;
  upperLeft[axes.column] = head.low[axes.column];
  upperLeft[axes.row] = head.high[axes.row];
  lowerRight[axes.column] = head.high[axes.column];
  lowerRight[axes.row] = head.low[axes.row];
  const auto first = geometry.pixelOf(view, upperLeft);
  const auto last = geometry.pixelOf(view, lowerRight);
  return {first.column, first.row, last.column + 1, last.row + 1};
}

PixelBox cropBox(const PixelBox& head, const OverlayReport& report) {
  PixelBox box = head;
  if (report.squares) {
    box.left = (std::min)(box.left, report.squares->left);
    box.top = (std::min)(box.top, report.squares->top);
    box.right = (std::max)(box.right, report.squares->right);
    box.bottom = (std::max)(box.bottom, report.squares->bottom);
  }
  return {box.left - cropMargin, box.top - cropMargin, box.right + cropMargin, box.bottom + cropMargin};
}

// The farthest that the pictures reach: the head, and every dipole with its square.
Vector3 reachOf(const HeadBox& head, const CDipoleFace8Import01_CTF& dipoles, double mmPerPixel) {
  constexpr double leastReach = 50.0;
  constexpr double largestSquare = 64.0;
  Vector3 reach{leastReach, leastReach, leastReach};
  for (int axis = 0; axis < 3; ++axis)
    reach[axis] = (std::max)({reach[axis], std::abs(head.low[axis]), std::abs(head.high[axis])});
  double square = 0.0;
  for (int index = 0; index < dipoles.m_totalDipoles; ++index) {
    const CDipoleszq* dipole = dipoles.getDipole(index);
    if (dipole == nullptr)
      continue;
    for (int axis = 0; axis < 3; ++axis)
      if (std::isfinite(dipole->m_location[axis]))
        reach[axis] = (std::max)(reach[axis], std::abs(dipole->m_location[axis]));
    if (dipole->m_size > square)
      square = (std::min)(dipole->m_size, largestSquare);
  }
  // One more pixel: the box around the head ends behind its last pixel.
  const double border = (square + cropMargin + 1) * mmPerPixel;
  return reach + Vector3{border, border, border};
}

void drawLetters(Image& panel, const PixelBox& slice, View view) {
  const StrokeFont& font = letterFont();
  const SideLetters letters = sideLetters(view);
  const auto draw = [&](char letter, int centreX, int centreY) {
    const std::string text(1, letter);
    font.draw(panel, centreX - font.width(text) / 2, centreY - font.lineHeight() / 2, text, letterInk);
  };
  const int middleX = (slice.left + slice.right) / 2;
  const int middleY = (slice.top + slice.bottom) / 2;
  draw(letters.left, slice.left - edge / 2, middleY);
  draw(letters.right, slice.right + edge / 2, middleY);
  draw(letters.top, middleX, slice.top - edge / 2);
  draw(letters.bottom, middleX, slice.bottom + edge / 2);
}

int scaleBarPixels(double mmPerPixel) {
  return static_cast<int>(std::lround(scaleBarMm / mmPerPixel));
}

std::string scaleBarLabel() {
  return "50 mm";
}

// A line of the bar's length with a tick at each end and its label to the right.
void drawScaleBar(Image& panel, int left, int top, double mmPerPixel) {
  const int right = left + scaleBarPixels(mmPerPixel);
  const int middle = top + textFont().lineHeight() / 2;
  panel.fill({left, middle - 1, right, middle + 1}, ink);
  panel.fill({left, middle - 5, left + 2, middle + 5}, ink);
  panel.fill({right - 2, middle - 5, right, middle + 5}, ink);
  textFont().draw(panel, right + 8, top, scaleBarLabel(), ink);
}

// The widest of what must stand in one row.
int panelWidth(const Slice& slice, double mmPerPixel) {
  const int title = headFont().width(nameOf(slice.report.view)) + 16 +
                    textFont().width(positionText(slice.report.view, slice.report.position));
  const int bar = scaleBarPixels(mmPerPixel) + 8 + textFont().width(scaleBarLabel());
  const int count = textFont().width(countText(slice.report));
  return (std::max)({slice.image.width() + 2 * edge, title, bar, count});
}

TextBlock notesOf(const OverlayReport& report, int width) {
  TextBlock notes(width);
  notes.add(textFont(), countText(report), ink);
  for (const std::string& warning : warningTexts(report))
    notes.add(textFont(), warning, warningInk);
  return notes;
}

// One view: title, slice between its letters, scale bar, notes. `sliceHeight` is that of the tallest slice of
// the picture, so that what stands below is level in all views.
Image drawPanel(const Slice& slice, int sliceHeight, double mmPerPixel) {
  const int width = panelWidth(slice, mmPerPixel);
  const TextBlock notes = notesOf(slice.report, width);
  const int sliceTop = headFont().lineHeight() + lineGap + edge;
  const int barTop = sliceTop + sliceHeight + edge + lineGap;
  const int notesTop = barTop + textFont().lineHeight() + 2 * lineGap;
  Image panel(width, notesTop + notes.height(), pictureBackground);

  headFont().draw(panel, 0, 0, nameOf(slice.report.view), ink);
  const std::string position = positionText(slice.report.view, slice.report.position);
  textFont().draw(panel, width - textFont().width(position),
                  headFont().lineHeight() - textFont().lineHeight(), position, ink);

  const int left = (width - slice.image.width()) / 2;
  const int top = sliceTop + (sliceHeight - slice.image.height()) / 2;
  panel.paste(slice.image, left, top);
  drawLetters(panel, {left, top, left + slice.image.width(), top + slice.image.height()}, slice.report.view);
  drawScaleBar(panel, 0, barTop, mmPerPixel);
  notes.draw(panel, 0, notesTop);
  return panel;
}

TextBlock headerOf(const SlicePictureOptions& options, const Volume& volume, int width) {
  TextBlock header(width);
  if (!options.title.empty())
    header.add(headFont(), options.title, ink);
  if (!options.patientId.empty())
    header.add(textFont(), "Patient " + options.patientId, ink);
  if (!volume.sidesStated())
    header.add(textFont(), "The MRI file does not say which side is left: the sides are not certain",
               warningInk);
  return header;
}

TextBlock footerOf(const std::vector<SliceRequest>& requests, int width) {
  TextBlock footer(width);
  const auto isSagittal = [](const SliceRequest& request) { return request.view == View::sagittal; };
  if (!std::all_of(requests.begin(), requests.end(), isSagittal))
    footer.add(noteFont(), "Axial and coronal views: the patient's left is on the right of the picture.",
               quietInk);
  footer.add(noteFont(), "mm from the point midway between the ears: x left, y up, z front.", quietInk);
  return footer;
}

Image arrange(const std::vector<Image>& panels, const std::vector<SliceRequest>& requests,
              const Volume& volume, const SlicePictureOptions& options) {
  constexpr int panelGap = 28;
  constexpr int leastWidth = 360;
  int width = -panelGap;
  int height = 0;
  for (const Image& panel : panels) {
    width += panel.width() + panelGap;
    height = (std::max)(height, panel.height());
  }
  const int innerWidth = (std::max)(width, leastWidth);
  const TextBlock header = headerOf(options, volume, innerWidth);
  const TextBlock footer = footerOf(requests, innerWidth);
  const int panelTop = margin + header.height() + 2 * lineGap;
  const int footerTop = panelTop + height + 2 * lineGap;
  Image image(innerWidth + 2 * margin, footerTop + footer.height() + margin, pictureBackground);
  header.draw(image, margin, margin);
  int left = margin + (innerWidth - width) / 2;
  for (const Image& panel : panels) {
    image.paste(panel, left, panelTop);
    left += panel.width() + panelGap;
  }
  footer.draw(image, margin, footerTop);
  return image;
}

}  // namespace

SlicePicture drawSlices(CDipoleFace8Import01_CTF& dipoles, const Volume& volume, const HeadFrame& frame,
                        const std::vector<SliceRequest>& requests, const SlicePictureOptions& options) {
  if (requests.empty())
    throw std::invalid_argument("there is no slice to draw");
  const HeadBox head = findHead(volume, frame);
  const SliceGeometry geometry(options.mmPerPixel, reachOf(head, dipoles, options.mmPerPixel));

  SlicePicture picture;
  std::vector<Slice> slices;
  int sliceHeight = 0;
  for (const SliceRequest& request : requests) {
    const int index = geometry.sliceAt(request.view, request.position);
    const double position = geometry.slicePosition(request.view, index);
    Image image = greySlice(volume, frame, geometry, request.view, position);
    const OverlayReport report =
        drawDipoles(dipoles, geometry, request.view, position, options.overlapMm, image);
    slices.push_back({image.cropped(cropBox(headPixels(head, geometry, request.view), report)), report});
    sliceHeight = (std::max)(sliceHeight, slices.back().image.height());
    picture.views.push_back(report);
  }
  std::vector<Image> panels;
  panels.reserve(slices.size());
  for (const Slice& slice : slices)
    panels.push_back(drawPanel(slice, sliceHeight, options.mmPerPixel));
  picture.image = arrange(panels, requests, volume, options);
  return picture;
}

}  // namespace host
