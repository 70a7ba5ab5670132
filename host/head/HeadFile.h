// Where a head on the screen comes from: an MRI file, with its fiducial points in or beside it,
// or the phantom.
#pragma once

#include <afx.h>

#include <filesystem>
#include <optional>
#include <string>

#include "host/head/Head.h"
#include "host/head/HeadReader.h"

namespace host {

// How far outside of a volume a fiducial point may lie, mm: ears are often cut off at its border.
inline constexpr double fiducialMargin = 25.0;

struct OpenedHead {
  Head head;
  std::string notice;  // UTF-8: what the user should know about it; empty when there is nothing
  // UTF-8: why the file's own points are no usual head's. They were not taken; takeOwnPoints does, for a user
  // who knows. Empty when there is nothing to ask.
  std::string question;
  std::optional<Fiducials> ownPoints;  // of the file, scanner mm
};

// Reads an MRI of any format, or a folder of DICOM files (host/head/HeadReader.h), and its fiducial points:
// those of the file of the same name with the ending ".fiducials" (head.fiducials for head.nii.gz or
// head.mri), when there is one, else those that the MRI itself holds. Points that cannot be read or do not
// fit leave the head unregistered, and the notice says why. Throws std::runtime_error that names the file
// and the cause.
OpenedHead openHead(const CString& path, const HeadReading& reading = {});

// Whether a file is called as heads are: by its ending, also with .gz behind it.
bool isNamedAsHead(const CString& path);

// The path of the file of points that belongs to an MRI: head.fiducials for head.nii.gz.
std::filesystem::path fiducialsBeside(const std::filesystem::path& mri);

// Registers a head by the points that its file holds, though they are no usual head's.
void takeOwnPoints(OpenedHead& opened);

// Registers a head by points, scanner mm. Throws std::invalid_argument with the cause, which leaves the head
// as it is: that of frameIn, or that no dipole may be placed in this MRI.
void registerHead(Head& head, const Fiducials& points);

// "Phantom", registered.
Head phantomHead();

// For dipoles without an MRI: absent, not registered, and not to be drawn.
Head noHead();

// Around the middle of a volume, its directions those of the scanner: for a head without fiducial points.
HeadFrame provisionalFrame(const Volume& volume);

// The head frame of points in a volume. Throws std::invalid_argument with the cause: HeadFrame's, or a point
// that lies farther outside of the volume than fiducialMargin.
HeadFrame frameIn(const Volume& volume, const Fiducials& points);

}  // namespace host
