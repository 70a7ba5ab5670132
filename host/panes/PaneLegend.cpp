#include "host/panes/PaneLegend.h"

#include "host/paint/PictureText.h"
#include "host/picture/ColorLegend.h"

namespace host {

Image legendOf(const PaneContents& contents, int width, int height) {
  constexpr int lineHeight = 15;  // pixels, of its texts
  constexpr int share = 3;        // it takes no more than this part of the width
  if (contents.colours == nullptr || !contents.settings.showLegend) {
    return {};
  }
  Image legend = legendPicture(*contents.colours, height, lineHeight);
  if (legend.width() * share > width || legend.height() > height) {
    return {};
  }
  return legend;
}

Image withLegend(Image picture, const Image& legend) {
  if (legend.width() == 0) {
    return picture;
  }
  Image whole(picture.width() + legend.width(), picture.height(), pictureBackground);
  whole.paste(picture, 0, 0);
  whole.paste(legend, picture.width(), (picture.height() - legend.height()) / 2);
  return whole;
}

}  // namespace host
