#include "tool/PictureOptions.h"

#include "host/head/Limits.h"
#include "host/panes/DipolePicture.h"
#include "tool/ArgumentCheck.h"
#include "tool/UsageError.h"

namespace tool {

void PictureOptions::addTo(CLI::App& command) {
  m_shown.addTo(command);
  command.add_flag("--module-slab", m_isModuleSlab,
                   "Axial slices show all dipoles from the level of the ears up to the slice");
  command
      .add_option("--glyph", m_glyph,
                  "Side of a dipole's square in pixels; 1 to 64; else as the pixels are small")
      ->type_name("PX")
      ->check(numberBetween(host::smallestGlyph, host::largestGlyph, true));
  command.add_option("--mm-per-pixel", m_mmPerPixel, "Size of a pixel; 0.1 to 5")
      ->type_name("MM")
      ->check(numberBetween(host::finestPixel, host::coarsestPixel))
      ->capture_default_str();
}

host::ViewSettings PictureOptions::settings() const {
  host::ViewSettings settings = m_shown.settings();
  if (m_shown.hasClusterRule() && settings.colourBy != host::ColourBy::cluster) {
    throw UsageError(
        "--distance, --angle and --members say what a cluster is: --color-by cluster shows them");
  }
  settings.glyphPixels = m_glyph.value_or(host::glyphPixels(settings.glyphPixels, m_mmPerPixel));
  settings.thinnestSlice = m_mmPerPixel;
  settings.moduleSlab = m_isModuleSlab;
  return settings;
}

void PictureOptions::applyTo(CDipoleFace9File& set) const {
  if (!m_shown.areArrowsShown()) {
    set.setShowDipoleOrientationAll(0);
  }
  if (m_shown.hasTolerance()) {
    set.setShowDipole2DOverlap(1);
  }
  set.setShowDipoleLatencySelected(0);
}

}  // namespace tool
