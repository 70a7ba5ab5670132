#include "tool/FiducialPoints.h"

#include <cerrno>
#include <cstring>
#include <fstream>
#include <optional>
#include <sstream>
#include <stdexcept>
#include <vector>

#include "host/head/FiducialFile.h"
#include "host/head/HeadFile.h"
#include "tool/FileNames.h"

namespace tool {
namespace {

std::optional<host::Fiducials> triples(const std::string& argument) {
  std::istringstream stream(argument);
  std::vector<host::Vector3> points;
  for (std::string word; stream >> word;) {
    const std::optional<host::Vector3> point = host::readCoordinates(word, ',');
    if (!point) {
      return std::nullopt;
    }
    points.push_back(*point);
  }
  if (points.size() != 3) {
    return std::nullopt;
  }
  return host::Fiducials{points[0], points[1], points[2]};
}

}  // namespace

host::Fiducials readFiducials(const std::string& argument) {
  if (const auto given = triples(argument)) {
    return *given;
  }
  if (!std::ifstream(pathOf(argument))) {
    throw std::runtime_error("fiducial points " + argument + ": cannot be opened (" + std::strerror(errno) +
                             "), and is not three triples nx,ny,nz lx,ly,lz rx,ry,rz either");
  }
  return host::readFiducialFile(pathOf(argument));
}

std::optional<host::Fiducials> givenFiducials(const std::string& argument, const std::string& mri) {
  if (!argument.empty()) {
    const host::Fiducials points = readFiducials(argument);
    (void)host::HeadFrame(points);
    return points;
  }
  return mri.empty() ? std::nullopt : host::openHead(pathTextOf(mri)).head.fiducials;
}

}  // namespace tool
