// The three fiducial points of a head as text, or as MNE keeps them.
//
// A fiducial file has the lines "nasion x y z", "left x y z" and "right x y z" in any order, scanner mm
// (right, anterior, superior positive). Blank lines and what follows a # are left out, but for a line
// "# millimetres: around the middle of the volume", or another text of host/head/MriSpace.h. Or it is a .fif
// file (host/head/FifFile.h), which its content tells.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

#include "host/head/FramedPoints.h"

namespace host {

// Throws std::runtime_error that names the file, the line and the cause.
FramedPoints readFiducialFile(const std::filesystem::path& path);

// What readFiducialFile reads back; millimetres to a thousandth.
std::string fiducialText(const Fiducials& points, MriSpace space);

// Three finite numbers and nothing else: with a separator between them, or, when it is a blank, with any
// white space between and around them.
std::optional<Vector3> readCoordinates(std::string_view text, char separator);

}  // namespace host
