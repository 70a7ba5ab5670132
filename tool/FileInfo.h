// What one dipole file holds, gathered from a collection that it alone was imported into.
#pragma once

#include <array>
#include <optional>
#include <string>
#include <vector>

#include "host/exchange/SetFrame.h"
#include "host/exchange/SetPlaces.h"
#include "tool/ImportSession.h"

namespace tool {

using Point = std::array<double, 3>;

// Nasion, left ear, right ear.
using FiducialTriple = std::array<Point, 3>;

struct Sphere {
  Point centre{};  // mm, head frame
  double radius = 0.0;
};

struct Range {
  double smallest = 0.0;
  double largest = 0.0;
};

struct FileInfo {
  FileInfo(std::string name, const ImportSession& session, const host::SetFrame& in,
           const std::optional<host::SetPlaces>& where);

  std::string file;
  std::string version;  // the four texts are empty when the file does not give them
  std::string patient;
  std::string mriFile;
  bool isMegOnly = false;
  std::optional<Sphere> sphere;
  std::optional<FiducialTriple> mriFiducials;   // voxels from the right, from below and from behind
  std::optional<FiducialTriple> headFiducials;  // mm, head frame
  int dipoles = 0;
  int shownOnSlices = 0;
  bool isMomentInNAm = false;
  // Over all dipoles, values that are unknown or not numbers left out; empty without any.
  bool isOtherFrame = false;  // of the ranges of places; else the host's
  std::string frame;
  std::array<const char*, 3> axes{};
  std::array<std::optional<Range>, 3> position;  // mm, head frame
  std::optional<Range> latency;                  // ms
  std::optional<Range> moment;
  std::optional<Range> fitError;  // percent
  std::vector<Message> messages;
  // By an atlas; empty without one.
  std::optional<host::SetPlaces> places;
  host::LabelCounts labels;
};

}  // namespace tool
