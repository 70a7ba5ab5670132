#include "host/head/HeadFile.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <filesystem>
#include <memory>
#include <optional>
#include <stdexcept>
#include <system_error>
#include <utility>
#include <vector>

#include "host/head/FiducialFile.h"
#include "host/head/NiftiReader.h"
#include "host/head/Phantom.h"
#include "host/text/Failure.h"
#include "host/text/PathText.h"

namespace host {

namespace {

namespace fs = std::filesystem;

fs::path fiducialsBeside(const fs::path& mri) {
  fs::path name = mri;
  if (hasEnding(textOf(name), ".gz")) {
    name.replace_extension();
  }
  if (hasEnding(textOf(name), ".nii")) {
    name.replace_extension();
  }
  name += ".fiducials";
  return name;
}

Head unregistered(const fs::path& file) {
  auto volume = std::make_shared<const Volume>(readNifti(file));
  const HeadFrame frame = provisionalFrame(*volume);
  return {utf8Of(textOf(file.filename())), std::move(volume), frame, std::nullopt};
}

// The nearest point of the volume lies so far away, mm.
double distanceTo(const Volume& volume, const Vector3& scanner) {
  const Vector3 index = volume.fromScanner()(scanner);
  Vector3 nearest;
  for (int axis = 0; axis < 3; ++axis) {
    nearest[axis] = std::clamp(index[axis], 0.0, volume.dimensions()[static_cast<std::size_t>(axis)] - 1.0);
  }
  return length(volume.toScanner()(nearest) - scanner);
}

void takeFiducials(const fs::path& path, OpenedHead& opened) {
  try {
    const Fiducials points = readFiducialFile(path);
    opened.head.frame = frameIn(*opened.head.volume, points);
    opened.head.fiducials = points;
  } catch (const std::invalid_argument& error) {
    opened.notice = "fiducial points " + utf8Of(textOf(path)) + ": " + error.what();
  } catch (const std::runtime_error& error) {
    opened.notice = error.what();
  }
}

}  // namespace

HeadFrame provisionalFrame(const Volume& volume) {
  constexpr double reach = 100.0;  // any head's size will do
  const auto [width, height, depth] = volume.dimensions();
  const Vector3 middle = volume.toScanner()({(width - 1) / 2.0, (height - 1) / 2.0, (depth - 1) / 2.0});
  return HeadFrame(
      {middle + Vector3{0, reach, 0}, middle - Vector3{reach, 0, 0}, middle + Vector3{reach, 0, 0}});
}

HeadFrame frameIn(const Volume& volume, const Fiducials& points) {
  HeadFrame frame(points);
  const std::array<std::pair<const char*, Vector3>, 3> named = {
      {{"the nasion", points.nasion}, {"the left ear", points.leftEar}, {"the right ear", points.rightEar}}};
  for (const auto& [name, point] : named) {
    if (!(distanceTo(volume, point) <= fiducialMargin)) {
      throw std::invalid_argument(std::string(name) + " lies outside of this MRI");
    }
  }
  return frame;
}

OpenedHead openHead(const CString& path) {
  return withFile("read", path, [&] {
    const fs::path file = pathOf(path);
    OpenedHead opened{unregistered(file), {}};
    const fs::path points = fiducialsBeside(file);
    std::error_code error;
    if (fs::exists(points, error)) {
      takeFiducials(points, opened);
    }
    return opened;
  });
}

Head phantomHead() {
  return withinMemory([] {
    Phantom phantom = makePhantom();
    return Head{"Phantom", std::make_shared<const Volume>(std::move(phantom.volume)),
                HeadFrame(phantom.fiducials), phantom.fiducials, true};
  });
}

Head noHead() {
  auto volume =
      std::make_shared<const Volume>(std::array<int, 3>{1, 1, 1}, std::vector<float>{0.0F}, Affine());
  const HeadFrame frame = provisionalFrame(*volume);
  Head head{"", std::move(volume), frame, std::nullopt};
  head.isAbsent = true;
  return head;
}

}  // namespace host
