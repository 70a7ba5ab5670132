#include "host/head/HeadFile.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <memory>
#include <optional>
#include <stdexcept>
#include <system_error>
#include <utility>
#include <vector>

#include "host/head/FiducialFile.h"
#include "host/head/HeadPlacement.h"
#include "host/head/Phantom.h"
#include "host/text/Failure.h"
#include "host/text/PathText.h"

namespace host {

namespace {

namespace fs = std::filesystem;

fs::path unpackedName(fs::path name) {
  if (hasEnding(textOf(name), ".gz")) {
    name.replace_extension();
  }
  return name;
}

bool isHeadName(const fs::path& name) {
  constexpr std::array<const char*, 6> endings = {".nii", ".mri", ".mgh", ".mgz", ".hdr", ".img"};
  return std::any_of(endings.begin(), endings.end(),
                     [&](const char* ending) { return hasEnding(textOf(name), ending); });
}

OpenedHead unregistered(const fs::path& file, const HeadReading& reading) {
  ReadHead read = readHead(file, reading);
  auto volume = std::make_shared<const Volume>(std::move(read.volume));
  const HeadFrame frame = provisionalFrame(*volume);
  Head head{utf8Of(textOf(file.filename())), std::move(volume), frame, std::nullopt};
  head.source = std::move(read.source);
  return {std::move(head), {}, {}, read.fiducials};
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
    registerHead(opened.head, inScanner(readFiducialFile(path), opened.head));
  } catch (const std::invalid_argument& error) {
    opened.notice = "fiducial points " + utf8Of(textOf(path)) + ": " + error.what();
  } catch (const std::runtime_error& error) {
    opened.notice = error.what();
  }
}

// A folder may be given as "scans/" or ".": one that has a name, and files beside it.
fs::path nameable(const fs::path& file) {
  std::error_code error;
  const bool isNamed = file.has_filename() && file.filename() != "." && file.filename() != "..";
  const fs::path whole = isNamed ? fs::path() : fs::canonical(file, error);
  return whole.empty() ? file : whole;
}

// Unless they are such as only those take who know.
void offerOwnPoints(OpenedHead& opened) {
  if (!opened.ownPoints) {
    return;
  }
  for (const HeadRemark& remark : opened.head.source.remarks) {
    if (remark.doubt == Doubt::unusual) {
      opened.question = remark.text;
      return;
    }
  }
  takeOwnPoints(opened);
}

}  // namespace

bool isNamedAsHead(const CString& path) {
  return isHeadName(unpackedName(pathOf(path)));
}

fs::path fiducialsBeside(const fs::path& mri) {
  fs::path name = unpackedName(mri);
  if (isHeadName(name)) {
    name.replace_extension();
  }
  name += ".fiducials";
  return name;
}

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

void registerHead(Head& head, const Fiducials& points) {
  if (!head.source.unplaceable.empty()) {
    throw std::invalid_argument("no dipoles can be placed in this MRI: " + head.source.unplaceable);
  }
  head.frame = frameIn(*head.volume, points);
  head.fiducials = points;
  head.arePointsAssumed = false;
  // What is said of points that are no longer used.
  head.source.slices.reset();
  std::erase_if(head.source.remarks, [](const HeadRemark& remark) { return remark.doubt != Doubt::note; });
}

void takeOwnPoints(OpenedHead& opened) {
  if (!opened.ownPoints) {
    return;
  }
  try {
    HeadSource source = opened.head.source;
    registerHead(opened.head, *opened.ownPoints);
    opened.head.source = std::move(source);
    opened.question.clear();
  } catch (const std::invalid_argument& error) {
    opened.notice = std::string("the MRI's own fiducial points: ") + error.what();
  }
}

OpenedHead openHead(const CString& path, const HeadReading& reading) {
  return withFile("read", path, [&] {
    const fs::path file = nameable(pathOf(path));
    OpenedHead opened = unregistered(file, reading);
    const fs::path points = fiducialsBeside(file);
    std::error_code error;
    if (fs::exists(points, error)) {
      takeFiducials(points, opened);
    } else {
      offerOwnPoints(opened);
    }
    return opened;
  });
}

Head phantomHead() {
  return withinMemory([] {
    Phantom phantom = makePhantom();
    return Head{"Phantom",
                std::make_shared<const Volume>(std::move(phantom.volume)),
                HeadFrame(phantom.fiducials),
                phantom.fiducials,
                false,
                true};
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
