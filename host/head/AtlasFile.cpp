#include "host/head/AtlasFile.h"

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <map>
#include <new>
#include <stdexcept>
#include <string_view>
#include <system_error>
#include <utility>
#include <vector>

#include "host/head/Limits.h"
#include "host/head/MriSpace.h"
#include "host/head/NiftiReader.h"
#include "host/text/PathText.h"
#include "host/text/Utf8.h"

namespace host {

namespace {

namespace fs = std::filesystem;

constexpr std::uint64_t mostAtlasVoxels = std::uint64_t{1} << 26U;

std::string shown(const fs::path& path) {
  return utf8Of(textOf(path));
}

bool isThere(const fs::path& path) {
  std::error_code error;
  return fs::exists(path, error);
}

void checkHeader(const NiftiHeader& header) {
  if (header.series) {
    throw std::runtime_error("it holds several volumes; an atlas is one volume of labels");
  }
  if (header.map != NiftiMap::sform) {
    throw std::runtime_error(
        "it has no sform, and the qforms of such images are often wrong: where its labels lie is not known");
  }
  const auto space = static_cast<MriSpace>(header.mapCode);
  if (space == MriSpace::scanner) {
    throw std::runtime_error("its sform leads to the scanner in which one patient lay, not to MNI's space");
  }
  if (space == MriSpace::talairach) {
    throw std::runtime_error("its sform leads to Talairach's space, which is not MNI's");
  }
  for (int axis = 0; axis < 3; ++axis) {
    const double side = length(header.toScanner.column(axis));
    if (!(side >= finestVoxel && side <= coarsestVoxel)) {
      throw std::runtime_error("its voxels are not between 0.1 and 10 mm wide");
    }
  }
  if (voxelCount(header.format.dimensions) > mostAtlasVoxels) {
    throw std::runtime_error("the image is too large for an atlas: more than " +
                             std::to_string(mostAtlasVoxels) + " voxels");
  }
}

std::vector<Label> labelsOf(const std::vector<float>& voxels) {
  std::vector<Label> labels;
  labels.reserve(voxels.size());
  for (const float voxel : voxels) {
    if (voxel < 0.0F) {
      throw std::runtime_error("it has negative numbers, which are no labels");
    }
    if (voxel > static_cast<float>(std::numeric_limits<Label>::max())) {
      throw std::runtime_error("it has numbers above 65535, which are no labels");
    }
    if (voxel != std::floor(voxel)) {
      throw std::runtime_error("it has numbers that are not whole: it is no image of labels");
    }
    labels.push_back(static_cast<Label>(voxel));
  }
  return labels;
}

// Neighbours in a picture seldom have the same number, in an atlas most do.
void checkLabels(const std::vector<Label>& labels) {
  constexpr std::size_t few = 1000;
  std::size_t count = labels.back() != 0 ? 1 : 0;
  std::size_t alike = 0;
  for (std::size_t i = 0; i + 1 < labels.size(); ++i) {
    count += labels[i] != 0 ? 1 : 0;
    alike += labels[i] != 0 && labels[i] == labels[i + 1] ? 1 : 0;
  }
  if (count == 0) {
    throw std::runtime_error("no voxel of it has a label");
  }
  if (count >= few && static_cast<double>(alike) < 0.4 * static_cast<double>(count)) {
    throw std::runtime_error("it looks like a picture: voxels beside each other differ, labels do not");
  }
}

// "aal" for aal.nii.gz.
std::string nameOf(const fs::path& image) {
  std::string name = shown(image.filename());
  for (const std::string_view ending : {".gz", ".nii", ".hdr", ".img"}) {
    if (hasEnding(fromUtf8(name), ending)) {
      name.resize(name.size() - ending.size());
    }
  }
  return name;
}

LabelNames namesBeside(const fs::path& image) {
  fs::path text = image;
  if (hasEnding(textOf(text), ".gz")) {
    text.replace_extension();
  }
  text += ".txt";
  return isThere(text) ? readLabelNames(text) : LabelNames();
}

// 1: right, -1: left, 0: the name tells no side.
int sideNamedBy(const std::string& name) {
  const auto has = [&](std::string_view end, std::string_view start) {
    return name.ends_with(end) || name.starts_with(start);
  };
  return has("_R", "Right") ? 1 : has("_L", "Left") ? -1 : 0;
}

// Whether most voxels of the labels whose names tell a side lie on the other one.
bool areSidesExchanged(const LabelGrid& grid, const LabelNames& names) {
  std::map<Label, int> sides;
  for (const auto& [label, name] : names) {
    if (const int side = sideNamedBy(name); side != 0) {
      sides[label] = side;
    }
  }
  std::ptrdiff_t balance = 0;
  grid.forEach([&](Label label, const Vector3& mm) {
    const auto side = label != 0 && !sides.empty() ? sides.find(label) : sides.end();
    if (side != sides.end() && mm.x != 0.0) {
      balance += (mm.x > 0.0) == (side->second > 0) ? 1 : -1;
    }
  });
  return balance < 0;
}

LabelGrid readGrid(const fs::path& path, const std::string& name) {
  const auto refuse = [](const std::string& why) {
    if (!why.empty()) {
      throw std::runtime_error(why);
    }
  };
  try {
    refuse(refusalOfName(name));
    const fs::path header = niftiHeaderBeside(path);
    const NiftiImage image = readNiftiImage(header.empty() ? path : header, checkHeader);
    std::vector<Label> labels = labelsOf(image.voxels);
    checkLabels(labels);
    refuse(refusalOfContent(labels, image.header.toScanner));
    return {image.header.format.dimensions, std::move(labels), image.header.toScanner};
  } catch (const std::bad_alloc&) {
    throw std::runtime_error("atlas " + shown(path) + ": there is not enough memory for it");
  } catch (const std::exception& error) {
    throw std::runtime_error("atlas " + shown(path) + ": " + error.what());
  }
}

}  // namespace

AtlasFiles atlasFilesOf(const std::string& argument, const fs::path& folder) {
  if (argument == "aal" || argument == "brodmann") {
    fs::path image = folder / (argument + ".nii.gz");
    if (!isThere(image)) {
      throw std::runtime_error("the atlas " + argument + " is that of Debian's package mricron-data, and " +
                               shown(image) +
                               " is not there: install the package, or name the file of an atlas");
    }
    return {std::move(image), {}};
  }
  const std::size_t comma = argument.rfind(',');
  const fs::path whole = pathOf(fromUtf8(argument));
  if (comma == std::string::npos || isThere(whole)) {
    return {whole, {}};
  }
  return {pathOf(fromUtf8(argument.substr(0, comma))), pathOf(fromUtf8(argument.substr(comma + 1)))};
}

Atlas readAtlas(const AtlasFiles& files) {
  std::string name = nameOf(files.image);
  LabelGrid grid = readGrid(files.image, name);
  LabelNames names = files.names.empty() ? namesBeside(files.image) : readLabelNames(files.names);
  if (areSidesExchanged(grid, names)) {
    throw std::runtime_error("atlas " + shown(files.image) +
                             ": by its sform, labels that are named left lie on the right: it is mirrored");
  }
  return {std::move(name), std::move(grid), std::move(names)};
}

}  // namespace host
