#include "host/head/CtfMri.h"

#include <cmath>
#include <stdexcept>
#include <utility>

#include "host/head/CtfMatrix.h"
#include "host/head/Limits.h"
#include "host/text/Numbers.h"

namespace host {

namespace {

// mm. The limits are this program's own: no grown head lies outside of them, and no child's whose head was
// measured for its brain's fields.
constexpr double leastFront = 40.0;  // the nasion before the middle of the ears
constexpr double narrowest = 80.0;   // between the ears
constexpr double widest = 200.0;
constexpr double shortest = 60.0;  // from the nasion to the middle of the ears
constexpr double longest = 140.0;

[[noreturn]] void refuse(const std::string& cause) {
  throw std::runtime_error(cause);
}

std::string number(double value) {
  return host::shortest(value);
}

std::string triple(const Vector3& numbers) {
  return number(numbers.x) + " " + number(numbers.y) + " " + number(numbers.z);
}

std::string earNumbers(const Fiducials& points) {
  return "left ear in sagittal slice " + number(points.leftEar.x) + ", right ear in " +
         number(points.rightEar.x);
}

bool isZero(const Vector3& point) {
  return point == Vector3{};
}

bool isInside(const Vector3& point, int size) {
  bool isIn = true;
  for (int axis = 0; axis < 3; ++axis) {
    isIn = isIn && point[axis] >= 0.0 && point[axis] <= size + 1.0;  // never with what is not a number
  }
  return isIn;
}

// Why these are no points to place dipoles by; empty when they are.
std::string unusable(const CtfMri& mri) {
  if (!mri.points) {
    return "the file lacks a fiducial point";
  }
  const Fiducials& points = *mri.points;
  if (isZero(points.nasion) && isZero(points.leftEar) && isZero(points.rightEar)) {
    return "no fiducial points are set in the file: all their numbers are 0";
  }
  for (const Vector3& point : {points.nasion, points.leftEar, points.rightEar}) {
    if (!isInside(point, mri.size)) {
      return "the fiducial point " + triple(point) + " lies outside of the file's " +
             std::to_string(mri.size) + " voxels along each axis";
    }
  }
  if (points.leftEar.x == points.rightEar.x) {
    return "the ears do not tell the sides: " + earNumbers(points);
  }
  return {};
}

// How the file says that its sagittal slices are stored has to be how its ears lie.
void checkEars(const CtfMri& mri) {
  const Fiducials& points = *mri.points;
  const bool isFromLeft = points.leftEar.x < points.rightEar.x;
  if (!mri.orientation) {
    if (!isFromLeft) {
      refuse("the ears contradict the storage of such files, from the patient's left to the right: " +
             earNumbers(points) +
             "; whether the picture is mirrored or the ears are exchanged cannot be told");
    }
  } else if (isFromLeft != (*mri.orientation == 0)) {
    refuse(std::string("the ears contradict the storage that the file states, \"") +
           (*mri.orientation == 0 ? "left on left\" (0)" : "left on right\" (1)") + ": " +
           earNumbers(points) + "; whether the picture is mirrored or the ears are exchanged cannot be told");
  }
}

// The index in a volume whose sagittal slices run from the left.
Vector3 indexOf(const CtfMri& mri, const Vector3& numbers, bool isMirrored) {
  const double sagittal = numbers.x - firstVoxelNumber;
  return {numbers.y - firstVoxelNumber, numbers.z - firstVoxelNumber,
          isMirrored ? mri.size - 1.0 - sagittal : sagittal};
}

// The points' own frame has to lie as the slices do: to the front, to the left, up.
void checkDirections(const CtfMri& mri, const Fiducials& mm) {
  try {
    const HeadFrame frame(mm);
    const Affine& head = frame.toScanner();
    if (head.column(2).y > 0.0 && head.column(0).x < 0.0 && head.column(1).z > 0.0) {
      return;
    }
  } catch (const std::invalid_argument& error) {
    refuse(std::string(error.what()) + " (nasion " + triple(mri.points->nasion) + ", left ear " +
           triple(mri.points->leftEar) + ", right ear " + triple(mri.points->rightEar) + ")");
  }
  refuse("the fiducial points contradict the storage, front to back and top to bottom: nasion " +
         triple(mri.points->nasion) + ", left ear " + triple(mri.points->leftEar) + ", right ear " +
         triple(mri.points->rightEar));
}

std::string unusualSize(const Fiducials& mm) {
  const Vector3 middle = (mm.leftEar + mm.rightEar) * 0.5;
  const double front = mm.nasion.y - middle.y;
  const double width = length(mm.leftEar - mm.rightEar);
  const double depth = length(mm.nasion - middle);
  std::string text;
  const auto tell = [&](const std::string& what, double found, const std::string& expected) {
    text += (text.empty() ? "" : "; ") + what + " " + fixed(found, 1) + " mm, where heads have " + expected;
  };
  if (front < leastFront) {
    tell("the nasion lies before the ears' middle by", front, "at least 40 mm");
  }
  if (width < narrowest || width > widest) {
    tell("the ears' distance is", width, "80 to 200 mm");
  }
  if (depth < shortest || depth > longest) {
    tell("the nasion's distance from the ears' middle is", depth, "60 to 140 mm");
  }
  return text;
}

void judgeMatrix(const CtfMri& mri, HeadSource& source) {
  const CtfMatrixVerdict verdict = judgeCtfMatrix(mri);
  source.matrix = verdict.text;
  if (verdict.agrees) {
    return;
  }
  if (verdict.sidesDiffer) {
    refuse(
        "the head matrix has left and right the other way round than the ears: its sagittal part of left "
        "is " +
        number((*mri.matrix)[1]) + ", " + earNumbers(*mri.points));
  }
  source.remarks.push_back({Doubt::doubtful, "The file's head matrix " + verdict.text +
                                                 "; the points are used, the matrix is not"});
}

std::string sidesText(const CtfMri& mri) {
  if (!mri.orientation) {
    return "the ears; such files do not state their storage";
  }
  return std::string("the file's storage, \"") + (*mri.orientation == 0 ? "left on left" : "left on right") +
         "\", and the ears, which agree";
}

}  // namespace

void checkCtfPicture(const CtfMri& mri) {
  if (mri.size < CtfMri::fewest || mri.size > CtfMri::most) {
    refuse("an image size of " + std::to_string(mri.size) + ", where 2 to 512 can be read");
  }
  if (mri.bytesPerVoxel != 1 && mri.bytesPerVoxel != 2) {
    refuse(std::to_string(mri.bytesPerVoxel) + " bytes a voxel, where 1 or 2 can be read");
  }
  if (mri.orientation && *mri.orientation != 0 && *mri.orientation != 1) {
    refuse("an unknown image orientation: " + std::to_string(*mri.orientation) + ", neither 0 nor 1");
  }
  for (int axis = 0; axis < 3; ++axis) {
    if (!(mri.spacing[axis] >= finestVoxel && mri.spacing[axis] <= coarsestVoxel)) {
      refuse("voxels of " + number(mri.spacing[axis]) + " mm, where 0.1 to 10 can be read");
    }
  }
}

Affine ctfToScanner(const CtfMri& mri) {
  const Vector3 front = {0, -mri.spacing.y, 0};
  const Vector3 down = {0, 0, -mri.spacing.z};
  const Vector3 right = {mri.spacing.x, 0, 0};
  return {front, down, right, (front + down + right) * (-(mri.size - 1) / 2.0)};
}

CtfPlaces ctfPlaces(const CtfMri& mri) {
  CtfPlaces places;
  places.isMirrored = mri.orientation == 1;
  HeadSource& source = places.source;
  source.format = "CTF MRI " + mri.version;
  source.space = MriSpace::middle;
  source.unplaceable = unusable(mri);
  if (!source.unplaceable.empty()) {
    source.sides = "nothing: " + source.unplaceable;
    source.matrix = "not looked at";
    return places;
  }
  checkEars(mri);
  const Affine toScanner = ctfToScanner(mri);
  const auto place = [&](const Vector3& numbers) {
    return toScanner(indexOf(mri, numbers, places.isMirrored));
  };
  const Fiducials mm = {place(mri.points->nasion), place(mri.points->leftEar), place(mri.points->rightEar)};
  checkDirections(mri, mm);
  judgeMatrix(mri, source);
  if (const std::string unusual = unusualSize(mm); !unusual.empty()) {
    source.remarks.push_back(
        {Doubt::unusual, "The fiducial points in the file are no usual head's: " + unusual});
  }
  source.sides = sidesText(mri);
  source.remarks.push_back({Doubt::note, "Left and right are known by " + source.sides + " (" +
                                             earNumbers(*mri.points) +
                                             "): see on the picture that they are right"});
  source.slices = SliceNumbers{*mri.points, mri.spacing};
  places.sidesKnown = true;
  places.fiducials = mm;
  return places;
}

}  // namespace host
