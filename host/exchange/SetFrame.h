// The frames in which places of a set can be told: its own head frame, that of CTF's and of Neuromag's
// programs, the scanner's, and MNI's. All in mm here.
#pragma once

#include <array>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "host/exchange/DipoleFields.h"
#include "host/head/Affine.h"
#include "host/head/HeadFrame.h"
#include "host/head/MriSpace.h"
#include "module/dipole.h"

namespace host {

enum class FrameName { host, ctf, neuromag, scanner, mni };

// From scanner mm to an MNI space, mm.
struct MniMap {
  Affine fromScanner;
  std::string space;  // "MNI305", "MNI152", "Colin27"; empty: nobody said which
  // What the file leaves open and was taken for granted, a sentence; empty: nothing.
  std::string assumed = {};
};

// Of a text: FreeSurfer's talairach.xfm and others of its kind, which lead to MNI305; sixteen numbers in four
// lines from scanner mm to MNI mm; a text of ITK or ANTs that registered the head (moving) to MNI (fixed): it
// maps points of MNI to the head, in mm to the left and back, so it is turned round. Throws
// std::invalid_argument with the cause, also for one that mirrors the head or is no map of a head in mm.
MniMap mniMapOf(std::string_view text);
// Of a file. Throws std::runtime_error that names it.
MniMap readMniMap(const std::filesystem::path& path);

// What is known of the head that dipoles belong to.
struct KnownHead {
  std::optional<Fiducials> points;  // scanner mm, unless they are only known among themselves
  std::optional<MniMap> mni;
  MriSpace space = MriSpace::scanner;  // what "scanner mm" are of the MRI
  // Where the points lie in the scanner is not known: their distances are all that counts.
  bool arePointsUnplaced = false;
  // Without points: the Neuromag head frame in the scanner, mm; then ears are taken as symmetric, which is
  // right for dipoles that were imported so.
  std::optional<Affine> neuromagToScanner = std::nullopt;

  // Whether the head frame's place in the scanner is known.
  bool isPlaced() const { return (points && !arePointsUnplaced) || neuromagToScanner; }
};

struct SetFrame {
  FrameName name = FrameName::host;
  Affine fromHost;
  std::string description;            // UTF-8: "head: x left, y up, z front"
  std::string prefix;                 // of the columns' titles: "scanner_"; empty for the host's own
  std::array<const char*, 3> axes{};  // "left", "up", "front"
  std::optional<Fiducials> points = std::nullopt;  // of the head, scanner mm, when they are known
  FrameTitles titles() const;                      // of a table in it
  // Whether axes are right, front, up, as programs take them that know nothing of heads.
  bool isRightFrontUp() const { return axes[0] == std::string_view("right"); }

  bool isSymmetric = false;            // Neuromag's, with ears taken as symmetric
  MriSpace space = MriSpace::scanner;  // of the points, and of the scanner's frame
  // What the points are called in files: "fiducials_scanner_mm".
  const char* pointsTitle() const {
    return space == MriSpace::scanner ? "fiducials_scanner_mm" : "fiducials_mri_mm";
  }
};

// Throws std::runtime_error when the head is not known well enough for it.
SetFrame frameNamed(FrameName name, const KnownHead& head);

// For programs that take all places as right, front, up: the scanner's frame when it is known, or that of an
// MRI without scanner coordinates, else the head frame with its axes in that order.
SetFrame patientFrame(const KnownHead& head);

// A copy of the set whose dipoles are in the frame, their orientations turned and as long as they were.
std::unique_ptr<CDipoleFace9File> inFrame(const CDipoleFace9File& set, const SetFrame& frame);

}  // namespace host
