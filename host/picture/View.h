// The three views of a head, and which head axis (0 x left, 1 y up, 2 z front) runs where in each. Axial and
// coronal pictures follow the radiological convention: the patient's left is on the right of the picture.
//
//   view      slices along  columns run to  rows run, from the top, from
//   axial     y (up)        x (left)        +z (front) down to -z
//   coronal   z (front)     x (left)        +y (up) down to -y
//   sagittal  x (left)      z (front)       +y (up) down to -y
#pragma once

#include <array>
#include <string_view>

namespace host {

enum class View { axial, coronal, sagittal };

struct ViewAxes {
  int slab = 0;
  int column = 0;
  int row = 0;
};

constexpr ViewAxes axesOf(View view) {
  switch (view) {
    case View::axial:
      return {1, 0, 2};
    case View::coronal:
      return {2, 0, 1};
    case View::sagittal:
      break;
  }
  return {0, 2, 1};
}

constexpr std::string_view nameOf(View view) {
  switch (view) {
    case View::axial:
      return "Axial";
    case View::coronal:
      return "Coronal";
    case View::sagittal:
      break;
  }
  return "Sagittal";
}

inline constexpr std::array<View, 3> allViews{View::axial, View::coronal, View::sagittal};

// A slice: mm in the head frame along the view's slab axis (y axial, z coronal, x sagittal).
struct SliceRequest {
  View view = View::axial;
  double position = 0.0;

  friend bool operator==(const SliceRequest&, const SliceRequest&) = default;
};

}  // namespace host
