#include "host/page/PageHead.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <span>
#include <stdexcept>

#include "host/head/HeadBoxOf.h"
#include "host/head/NiftiBytes.h"
#include "host/page/PageWorld.h"
#include "host/text/Numbers.h"

namespace host {

namespace {

constexpr double margin = 10.0;  // mm
constexpr int mostStored = 255;

// Smallest and largest index of what was added.
class IndexBounds {
 public:
  void add(const Vector3& index) {
    for (int axis = 0; axis < 3; ++axis) {
      m_low[axis] = (std::min)(m_low[axis], index[axis]);
      m_high[axis] = (std::max)(m_high[axis], index[axis]);
    }
  }
  // With so many voxels around, within the dimensions.
  VoxelBox box(const Vector3& around, const std::array<int, 3>& dimensions) const {
    VoxelBox box;
    for (int axis = 0; axis < 3; ++axis) {
      const auto at = static_cast<std::size_t>(axis);
      const double last = dimensions.at(at) - 1.0;
      box.first.at(at) = static_cast<int>(std::clamp(std::floor(m_low[axis] - around[axis]), 0.0, last));
      box.end.at(at) = static_cast<int>(std::clamp(std::ceil(m_high[axis] + around[axis]), 0.0, last)) + 1;
    }
    return box;
  }

 private:
  static constexpr double beyond = std::numeric_limits<double>::infinity();
  Vector3 m_low = {beyond, beyond, beyond};
  Vector3 m_high = {-beyond, -beyond, -beyond};
};

// How many voxels have to be gone along each axis to be so many mm away from where one was.
Vector3 voxelsOf(const Affine& fromScanner, double mm) {
  Vector3 most;
  for (int axis = 0; axis < 3; ++axis) {
    const Vector3 row{fromScanner.column(0)[axis], fromScanner.column(1)[axis], fromScanner.column(2)[axis]};
    most[axis] = mm * length(row);
  }
  return most;
}

bool isInside(const Vector3& index, const std::array<int, 3>& dimensions) {
  for (int axis = 0; axis < 3; ++axis) {
    // No for what is no number.
    if (!(index[axis] >= -0.5 && index[axis] <= dimensions.at(static_cast<std::size_t>(axis)) - 0.5)) {
      return false;
    }
  }
  return true;
}

VoxelBox wholeBox(const Volume& volume) {
  return {{}, volume.dimensions()};
}

// The first index runs fastest.
template <typename Visit>
void forEach(const Volume& volume, const VoxelBox& box, Visit visit) {
  for (int k = box.first[2]; k < box.end[2]; ++k) {
    for (int j = box.first[1]; j < box.end[1]; ++j) {
      for (int i = box.first[0]; i < box.end[0]; ++i) {
        visit(volume.voxel(i, j, k));
      }
    }
  }
}

NiftiLayout layoutOf(const Head& head, const VoxelBox& box) {
  const Affine& map = head.volume->toScanner();
  const auto index = [&](std::size_t axis) { return static_cast<double>(box.first.at(axis)); };
  NiftiLayout layout;
  for (std::size_t axis = 0; axis < 3; ++axis) {
    layout.dimensions.at(axis) = box.end.at(axis) - box.first.at(axis);
  }
  layout.toMm = Affine(map.column(0), map.column(1), map.column(2), map({index(0), index(1), index(2)}));
  // Where sides are only assumed the page says so; the picture has to stand somewhere.
  layout.space = head.source.space;
  layout.shown = head.volume->window();
  return layout;
}

template <typename Number>
std::string packedAs(const NiftiLayout& layout, const Volume& volume) {
  std::vector<Number> stored;
  stored.reserve(volume.voxels().size());
  for (const float value : volume.voxels()) {
    stored.push_back(static_cast<Number>(value));
  }
  return packedNifti(layout, std::as_bytes(std::span(stored)));
}

std::string fullNifti(const Head& head) {
  const Volume& volume = *head.volume;
  NiftiLayout layout = layoutOf(head, wholeBox(volume));
  layout.type = smallestVoxelType(volume.voxels());
  switch (layout.type) {
    case VoxelType::uint16:
      return packedAs<std::uint16_t>(layout, volume);
    case VoxelType::int16:
      return packedAs<std::int16_t>(layout, volume);
    default:
      return packedNifti(layout, std::as_bytes(std::span(volume.voxels())));
  }
}

std::string steppedNifti(const Head& head, const VoxelBox& box, const GreySteps& steps) {
  NiftiLayout layout = layoutOf(head, box);
  layout.slope = steps.slope;
  layout.intercept = steps.intercept;
  std::vector<std::uint8_t> stored;
  const auto slope = static_cast<double>(steps.slope);
  forEach(*head.volume, box, [&](float value) {
    const double step = std::round((static_cast<double>(value) - steps.low()) / slope);
    stored.push_back(static_cast<std::uint8_t>(std::clamp(step, 0.0, static_cast<double>(mostStored))));
  });
  return packedNifti(layout, std::as_bytes(std::span(stored)));
}

Json pairJson(double low, double high) {
  return Json::array({singleDigits(low), singleDigits(high)});
}

std::string sizeText(int x, int y, int z) {
  return std::to_string(x) + " x " + std::to_string(y) + " x " + std::to_string(z);
}

std::string aboutCrop(const VoxelBox& box, const Volume& volume) {
  const std::array<int, 3>& all = volume.dimensions();
  if (box == wholeBox(volume)) {
    return "The head is shown in all " + sizeText(all[0], all[1], all[2]) + " voxels of its MRI, ";
  }
  return "The head is shown in " +
         sizeText(box.end[0] - box.first[0], box.end[1] - box.first[1], box.end[2] - box.first[2]) + " of " +
         sizeText(all[0], all[1], all[2]) + " voxels of its MRI, ";
}

std::string aboutGrey(const GreySteps& steps) {
  return steps.isExact
             ? "with the grey values that they have."
             : "with 256 steps of grey from " + shortest(singleDigits(steps.low())) + " to " +
                   shortest(singleDigits(steps.high())) + "; what lies beyond is stored as that end.";
}

std::vector<Vector3> placesThatCount(const PageSource& source) {
  const Affine& toHead = source.head.frame.fromScanner();
  const Fiducials& points = source.head.fiducials.value();
  std::vector<Vector3> places = {toHead(points.nasion), toHead(points.leftEar), toHead(points.rightEar)};
  for (int slot = 0; slot < source.set.m_totalDipoles; ++slot) {
    if (const CDipoleszq* const dipole = source.set.m_dipoles[slot]) {
      places.push_back({dipole->m_location[0], dipole->m_location[1], dipole->m_location[2]});
    }
  }
  return places;
}

}  // namespace

VoxelBox headVoxels(const Head& head, const std::vector<Vector3>& places) {
  const Volume& volume = *head.volume;
  const Affine toIndex = volume.fromScanner().after(head.frame.toScanner());
  const HeadBox box = headBoxOf(head);
  IndexBounds bounds;
  for (unsigned corner = 0; corner < 8U; ++corner) {
    Vector3 place;
    for (int axis = 0; axis < 3; ++axis) {
      place[axis] = (corner >> static_cast<unsigned>(axis) & 1U) != 0 ? box.high[axis] : box.low[axis];
    }
    bounds.add(toIndex(place));
  }
  for (const Vector3& place : places) {
    if (const Vector3 index = toIndex(place); isInside(index, volume.dimensions())) {
      bounds.add(index);
    }
  }
  return bounds.box(voxelsOf(volume.fromScanner(), margin), volume.dimensions());
}

GreySteps greyStepsOf(const Volume& volume, const VoxelBox& box) {
  bool isWhole = true;
  double low = std::numeric_limits<double>::infinity();
  double high = -low;
  forEach(volume, box, [&](float value) {
    isWhole = isWhole && value == std::trunc(value);
    low = (std::min)(low, static_cast<double>(value));
    high = (std::max)(high, static_cast<double>(value));
  });
  if (isWhole && high - low <= mostStored) {
    return {1.0F, static_cast<float>(low), true};
  }
  constexpr double below = 0.1;
  constexpr double above = 0.4;
  const GreyWindow& window = volume.window();
  const double width = window.high - window.low;
  low = (std::max)(low, window.low - below * width);
  high = (std::min)(high, window.high + above * width);
  const auto slope = static_cast<float>((high - low) / mostStored);
  return {slope > 0.0F ? slope : 1.0F, static_cast<float>(low), false};
}

PageHead pageHead(const PageSource& source) {
  const Head& head = source.head;
  if (!PageWorld(source).hasHead) {
    return {nullptr, {}, {}};
  }
  const Volume& volume = *head.volume;
  const VoxelBox box = source.isFull ? wholeBox(volume) : headVoxels(head, placesThatCount(source));
  const GreySteps steps = source.isFull ? GreySteps{} : greyStepsOf(volume, box);
  PageHead made;
  made.nifti = source.isFull ? fullNifti(head) : steppedNifti(head, box, steps);
  constexpr std::size_t most = std::size_t{256} << 20U;  // browsers take no longer texts
  if (made.nifti.size() > most) {
    throw std::runtime_error("the head is too large for a page" +
                             std::string(source.isFull ? " (--full)" : ""));
  }
  const auto [least, largest] = std::minmax_element(volume.voxels().begin(), volume.voxels().end());
  made.json = {{"name", source.isAnonymous ? Json() : jsonText(head.name)},
               {"format", head.source.format},
               {"sides", head.source.sides},
               {"areSidesStated", volume.sidesStated()},
               {"window", pairJson(volume.window().low, volume.window().high)},
               {"range", source.isFull ? pairJson(static_cast<double>(*least), static_cast<double>(*largest))
                                       : pairJson(steps.low(), steps.high())},
               {"isFull", source.isFull}};
  if (!source.isFull) {
    made.about = aboutCrop(box, volume) + aboutGrey(steps);
  }
  return made;
}

std::string atlasNifti(const Atlas& atlas) {
  const LabelGrid& grid = atlas.grid();
  NiftiLayout layout{grid.dimensions(), grid.toMm()};
  layout.space = MriSpace::mni;
  const std::vector<Label>& labels = grid.labels();
  if (*std::max_element(labels.begin(), labels.end()) > mostStored) {
    layout.type = VoxelType::uint16;
    return packedNifti(layout, std::as_bytes(std::span(labels)));
  }
  std::vector<std::uint8_t> stored;
  stored.reserve(labels.size());
  for (const Label label : labels) {
    stored.push_back(static_cast<std::uint8_t>(label));
  }
  return packedNifti(layout, std::as_bytes(std::span(stored)));
}

}  // namespace host
