// A picture to be kept: panes beside and below each other, with patient, files and settings above, and how to
// read it below.
#pragma once

#include <string>
#include <vector>

#include "host/paint/Image.h"
#include "host/panes/PaneMarks.h"

namespace host {

// UTF-8; what is empty is left out.
struct PageTexts {
  std::string title;
  std::string patientId;
  std::vector<std::string> files;     // such as the MRI and the dipole set
  std::vector<std::string> settings;  // such as "slice tolerance 5.0 mm"
  // What is shown otherwise than the files say, one short text each: in a band above everything.
  std::vector<std::string> wrong;
  std::vector<CaptionLine> notes;  // below the panes
};

// For the notes.
inline constexpr const char* radiologicalNote =
    "Axial and coronal views: the patient's left is on the right of the picture.";
inline constexpr const char* headFrameNote =
    "mm from the point midway between the ears: x left, y up, z front.";
// Where nobody knows the ears (Head::arePointsAssumed).
inline constexpr const char* neuromagFrameNote =
    "mm from the origin of the Neuromag head frame: x left, y up, z front. The ears are not known.";

// Rows of pictures, which may differ in size; those of a column begin at the same place.
Image gridOf(const std::vector<std::vector<Image>>& rows, int gap);

// `scale`: see host/paint/PictureText.h.
Image pageOf(const Image& content, const PageTexts& texts, double scale = 1.0);

// A viewer's panes: axial and coronal above, sagittal and 3D below, and how to read them.
Image fourPanes(const Image& axial, const Image& coronal, const Image& sagittal, const Image& scene,
                PageTexts texts, double scale = 1.0);

}  // namespace host
