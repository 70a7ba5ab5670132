#include "host/panes/DipolePicture.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <stdexcept>
#include <utility>

#include "host/dipoles/DipoleArrows.h"
#include "host/dipoles/DipoleScene.h"
#include "host/dipoles/UnknownDipoles.h"
#include "host/head/Limits.h"
#include "host/paint/PictureText.h"
#include "host/panes/AtlasTexts.h"
#include "host/panes/PaneFiducials.h"
#include "host/panes/PaneLabels.h"
#include "host/panes/ScenePane.h"
#include "host/panes/SlicePane.h"
#include "host/picture/ColorLegend.h"
#include "host/picture/SliceCaption.h"
#include "host/text/Numbers.h"

namespace host {

namespace {

constexpr double usualPixel = 0.5;  // mm: texts have the size of a screen's then

// A pane with its texts around it. `pictureHeight` is that of the tallest pane of the row, so that what
// stands below is level.
Image panelOf(const Image& picture, const PaneTexts& texts, int pictureHeight, double scale) {
  const StrokeFont titleFont = headFont(scale);
  const StrokeFont font = textFont(scale);
  const int gap = scaledPixels(lineGap, scale);
  const int title = titleFont.width(texts.title) + 4 * gap + font.width(texts.place);
  const int count = texts.lines.empty() ? 0 : font.width(texts.lines.front().text);
  const int width = (std::max)({picture.width(), title, count});
  TextBlock below(width);
  for (const CaptionLine& line : texts.lines) {
    below.add(font, line.text, line.colour);
  }
  for (const CaptionLine& warning : texts.warnings) {
    below.add(font, warning.text, warning.colour);
  }

  const int top = titleFont.lineHeight() + gap;
  Image panel(width, top + pictureHeight + gap + below.height(), pictureBackground);
  titleFont.draw(panel, 0, 0, texts.title, ink);
  font.draw(panel, width - font.width(texts.place), titleFont.lineHeight() - font.lineHeight(), texts.place,
            ink);
  panel.paste(picture, (width - picture.width()) / 2, top + (pictureHeight - picture.height()) / 2);
  below.draw(panel, 0, top + pictureHeight + gap);
  return panel;
}

Image withHeading(Image row, const std::string& heading, double scale) {
  if (heading.empty()) {
    return row;
  }
  TextBlock text(row.width());
  text.add(textFont(scale), heading, ink);
  const int top = text.height() + scaledPixels(lineGap, scale);
  Image whole(row.width(), top + row.height(), pictureBackground);
  text.draw(whole, 0, 0);
  whole.paste(row, 0, top);
  return whole;
}

// One for the whole picture, beside the panes.
Image besideLegend(Image panes, const PaneContents& contents) {
  if (contents.colours == nullptr || !contents.settings.showLegend) {
    return panes;
  }
  const int height = (std::min)(panes.height(), scaledPixels(420.0, contents.scale));
  return gridOf(
      {{std::move(panes), legendPicture(*contents.colours, height, scaledPixels(15.0, contents.scale))}},
      scaledPixels(16.0, contents.scale));
}

void addNotes(PageTexts& texts, const PaneContents& contents, bool hasRings, bool hasDiamonds) {
  const DipoleArrows arrows(contents.dipoles, contents.settings.arrowsByMoment, contents.settings.unknown);
  if (arrows.strongest() > 0.0) {
    texts.notes.push_back({"Arrows are as long as their moments are large; the longest is one of " +
                               shortest(arrows.strongest()) +
                               (contents.dipoles.m_momentInNAm != 0 ? " nAm." : "."),
                           quietInk});
  }
  if (hasRings) {
    texts.notes.push_back({"Rings N, L, R: nasion, left and right ear.", quietInk});
  }
  if (hasDiamonds) {
    texts.notes.push_back({"Diamonds: the same points as the dipole file has them.", quietInk});
  }
}

// Panes without captions of their own, and without a legend each.
ViewSettings settingsOf(const PaneContents& contents) {
  ViewSettings settings = contents.settings;
  settings.showLegend = false;
  return settings;
}

PaneContents forPage(const PaneContents& all, const ViewSettings& settings) {
  PaneContents contents{all.dipoles, all.head, settings, all.crosshair, all.window, all.colours, all.marks};
  contents.showCursor = false;
  contents.showCaption = false;
  contents.scale = all.scale;
  return contents;
}

void checkPixel(double mmPerPixel) {
  if (!(mmPerPixel >= finestPixel && mmPerPixel <= coarsestPixel)) {
    throw std::invalid_argument("a pixel must be 0.1 to 5 mm wide");
  }
}

void checkSize(double pixels) {
  constexpr double most = 250e6;
  if (pixels > most) {
    throw std::runtime_error(
        "the picture would be too large: choose fewer slices or dipoles, or larger pixels");
  }
}

}  // namespace

std::vector<SliceRequest> slicesThrough(const Vector3& place) {
  std::vector<SliceRequest> slices;
  slices.reserve(allViews.size());
  for (const View view : allViews) {
    slices.push_back({view, place[axesOf(view).slab]});
  }
  return slices;
}

SliceRow rowThrough(const PaneContents& contents, int slot) {
  const CDipoleszq& dipole = *contents.dipoles.m_dipoles[slot];
  const std::string unit = contents.dipoles.m_momentInNAm != 0 ? " nAm" : "";
  const UnknownDipoles* unknown = contents.settings.unknown;
  const auto known = [&](DipoleValue value, const std::string& unitOfIt) {
    return unknown != nullptr && unknown->isUnknown(dipole, value)
               ? "unknown"
               : fixed(valueOf(dipole, value), 1) + unitOfIt;
  };
  const std::string place = placeTextOf(contents, dipole);
  return {"Dipole " + std::to_string(dipole.m_number) + "  " + labelOf(dipole) + "   latency " +
              known(DipoleValue::latency, " ms") + "   fit error " + known(DipoleValue::fitError, " %") +
              "   moment " + known(DipoleValue::moment, unit) + (place.empty() ? "" : "   " + place),
          slicesThrough(placeOf(dipole))};
}

double textScale(double mmPerPixel) {
  constexpr double smallest = 0.8;  // smaller texts cannot be read
  constexpr double largest = 5.0;
  return std::clamp(usualPixel / mmPerPixel, smallest, largest);
}

int glyphPixels(int usual, double mmPerPixel) {
  constexpr long least = 3;  // smaller squares cannot be seen
  return static_cast<int>(
      std::clamp(std::lround(usual * usualPixel / mmPerPixel), least, long{largestGlyph}));
}

DipolePicture slicesPicture(const PaneContents& contents, const std::vector<SliceRow>& rows,
                            double mmPerPixel, PageTexts texts) {
  checkPixel(mmPerPixel);
  const ViewSettings settings = settingsOf(contents);
  PaneContents own = forPage(contents, settings);
  const auto goTo = [&](const SliceRequest& slice) {
    own.crosshair = {};
    own.crosshair[axesOf(slice.view).slab] = slice.position;
  };
  std::vector<SlicePane> panes;
  double pixels = 0.0;
  for (const SliceRow& row : rows) {
    for (const SliceRequest& slice : row.slices) {
      goTo(slice);
      panes.emplace_back(slice.view).showWhole(own, mmPerPixel);
      pixels += panes.back().pixels();
      checkSize(pixels);
    }
  }
  auto next = panes.begin();
  DipolePicture made;
  std::vector<std::vector<Image>> grid;
  bool isRadiological = false;
  bool hasRings = false;
  bool hasDiamonds = false;
  for (const SliceRow& row : rows) {
    std::vector<Image> pictures;
    int height = 0;
    const std::size_t first = made.panes.size();
    for (const SliceRequest& slice : row.slices) {
      goTo(slice);
      SlicePane pane = std::move(*next++);  // it goes with what it keeps, one after the other
      pictures.push_back(pane.paint(own));
      made.panes.push_back(pane.texts());
      hasRings = hasRings || pane.hasFiducialRings();
      hasDiamonds = hasDiamonds || pane.hasFiducialDiamonds();
      height = (std::max)(height, pictures.back().height());
      isRadiological = isRadiological || slice.view != View::sagittal;
    }
    std::vector<Image> panels;
    for (std::size_t i = 0; i < pictures.size(); ++i) {
      panels.push_back(panelOf(pictures[i], made.panes[first + i], height, contents.scale));
    }
    if (!panels.empty()) {
      grid.push_back(
          {withHeading(gridOf({panels}, scaledPixels(28.0, contents.scale)), row.heading, contents.scale)});
    }
  }
  if (grid.empty()) {
    throw std::invalid_argument("there is no slice to draw");
  }
  if (isRadiological) {
    texts.notes.push_back({radiologicalNote, quietInk});
  }
  texts.notes.push_back({contents.head.arePointsAssumed ? neuromagFrameNote : headFrameNote, quietInk});
  addNotes(texts, contents, hasRings, hasDiamonds);
  made.image =
      pageOf(besideLegend(gridOf(grid, scaledPixels(20.0, contents.scale)), contents), texts, contents.scale);
  return made;
}

DipolePicture scenePicture(const PaneContents& contents, const ViewAngles& angles,
                           const std::vector<SliceRequest>& slices, double mmPerPixel, PageTexts texts) {
  checkPixel(mmPerPixel);
  const ViewSettings settings = settingsOf(contents);
  const PaneContents own = forPage(contents, settings);
  ScenePane pane;
  pane.lookFrom(angles);
  pane.setSlices(slices);
  const Image& picture = pane.paintWhole(own, mmPerPixel);
  DipolePicture made;
  made.panes.push_back(pane.texts());
  std::string places;
  if (contents.head.isRegistered()) {
    for (const SliceRequest& slice : slices.empty() ? slicesThrough(contents.crosshair) : slices) {
      places += (places.empty() ? "Slices " : ", ") + positionText(slice.view, slice.position);
    }
  }
  if (!places.empty()) {
    texts.notes.push_back({places + ".", quietInk});
  }
  texts.notes.push_back({"The letters at the edges are the patient's sides.", quietInk});
  addNotes(texts, contents, !headFiducials(contents).empty(), !fileFiducials(contents).empty());
  const Image panel = panelOf(picture, pane.texts(), picture.height(), contents.scale);
  made.image = pageOf(besideLegend(panel, contents), texts, contents.scale);
  return made;
}

}  // namespace host
