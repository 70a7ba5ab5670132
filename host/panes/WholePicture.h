// All four panes as one picture to be kept: with patient, files and settings above, and how to read it below.
#pragma once

#include <string>
#include <vector>

#include "host/paint/Image.h"

namespace host {

// UTF-8; what is empty is left out.
struct WholePictureTexts {
  std::string patientId;
  std::vector<std::string> files;     // such as the MRI and the dipole set
  std::vector<std::string> settings;  // such as "slice tolerance 5.0 mm"
};

// Axial and coronal above, sagittal and 3D below. The panes may differ in size.
[[nodiscard]] Image fourPanes(const Image& axial, const Image& coronal, const Image& sagittal,
                              const Image& scene, const WholePictureTexts& texts);

}  // namespace host
