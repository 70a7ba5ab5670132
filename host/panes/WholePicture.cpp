#include "host/panes/WholePicture.h"

#include <algorithm>

#include "host/paint/PictureText.h"

namespace host {

namespace {

constexpr int margin = 12;
constexpr int gap = 4;  // between the panes
constexpr int leastWidth = 360;

std::string joined(const std::vector<std::string>& parts) {
  std::string text;
  for (const std::string& part : parts)
    if (!part.empty())
      text += (text.empty() ? "" : ", ") + part;
  return text;
}

}  // namespace

Image fourPanes(const Image& axial, const Image& coronal, const Image& sagittal, const Image& scene,
                const WholePictureTexts& texts) {
  const int leftWidth = (std::max)(axial.width(), sagittal.width());
  const int topHeight = (std::max)(axial.height(), coronal.height());
  const int width = (std::max)(leftWidth + gap + (std::max)(coronal.width(), scene.width()), leastWidth);
  TextBlock header(width);
  if (!texts.patientId.empty())
    header.add(headFont(), "Patient " + texts.patientId, ink);
  for (const std::string& file : texts.files)
    if (!file.empty())
      header.add(textFont(), file, ink);
  if (const std::string settings = joined(texts.settings); !settings.empty())
    header.add(noteFont(), settings, quietInk);
  TextBlock footer(width);
  footer.add(noteFont(), "Axial and coronal views: the patient's left is on the right of the picture.",
             quietInk);
  footer.add(noteFont(), "mm from the point midway between the ears: x left, y up, z front.", quietInk);

  const int panesTop = margin + header.height() + lineGap;
  const int lowerTop = panesTop + topHeight + gap;
  const int footerTop = lowerTop + (std::max)(sagittal.height(), scene.height()) + 2 * lineGap;
  Image image(width + 2 * margin, footerTop + footer.height() + margin, pictureBackground);
  header.draw(image, margin, margin);
  image.paste(axial, margin, panesTop);
  image.paste(coronal, margin + leftWidth + gap, panesTop);
  image.paste(sagittal, margin, lowerTop);
  image.paste(scene, margin + leftWidth + gap, lowerTop);
  footer.draw(image, margin, footerTop);
  return image;
}

}  // namespace host
