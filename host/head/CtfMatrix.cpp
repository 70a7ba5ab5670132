#include "host/head/CtfMatrix.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <utility>

#include "host/text/Numbers.h"

namespace host {

namespace {

using Matrix = std::array<double, 16>;
using Points = std::array<Vector3, 3>;

constexpr double mostVoxels = 1.5;

Vector3 scaled(const Vector3& a, const Vector3& b) {
  return {a.x * b.x, a.y * b.y, a.z * b.z};
}

Vector3 divided(const Vector3& a, const Vector3& b) {
  return {a.x / b.x, a.y / b.y, a.z / b.z};
}

// The points in the head frame of the CTF programs, mm: x to the nasion, y to the left ear.
Points inHeadFrame(const Fiducials& mm) {
  const Vector3 origin = (mm.leftEar + mm.rightEar) * 0.5;
  const Vector3 front = mm.nasion - origin;
  const Vector3 x = front * (1.0 / length(front));
  const Vector3 left = mm.leftEar - origin;
  const Vector3 across = left - x * dot(left, x);
  const Vector3 y = across * (1.0 / length(across));
  const auto inFrame = [&](const Vector3& p) { return Vector3{dot(x, p - origin), dot(y, p - origin), 0.0}; };
  return {inFrame(mm.nasion), inFrame(mm.leftEar), inFrame(mm.rightEar)};
}

Vector3 applied(const Matrix& m, const Vector3& p) {
  const auto row = [&](std::size_t r) {
    return m[4 * r] * p.x + m[4 * r + 1] * p.y + m[4 * r + 2] * p.z + m[4 * r + 3];
  };
  return {row(0), row(1), row(2)};
}

Matrix transposed(const Matrix& m) {
  Matrix result{};
  for (std::size_t row = 0; row < 4; ++row) {
    for (std::size_t column = 0; column < 4; ++column) {
      result[4 * row + column] = m[4 * column + row];
    }
  }
  return result;
}

// Rows 2 and 3 with the other sign in their turn, not in their shift.
Matrix turnedRows(Matrix m) {
  for (std::size_t i = 4; i < 11; ++i) {
    m[i] = i % 4 == 3 ? m[i] : -m[i];
  }
  return m;
}

// How the head side of the matrix is counted. With voxels of one size the first two are the same.
enum class Unit { voxelsOfTheirAxes, voxelsInOrder, millimetres };

// The largest distance, voxels, between where the matrix puts the points and where they are.
double distance(const Matrix& matrix, const CtfMri& mri, const Points& head, const Points& numbers,
                Unit unit) {
  double worst = 0.0;
  const Vector3 shift = {matrix[3], matrix[7], matrix[11]};
  for (std::size_t i = 0; i < head.size(); ++i) {
    Vector3 place;
    if (unit == Unit::voxelsOfTheirAxes) {
      place = divided(applied(matrix, head[i]) - shift, mri.spacing) + shift;
    } else {
      place = applied(matrix, unit == Unit::voxelsInOrder ? divided(head[i], mri.spacing) : head[i]);
    }
    const double here = length(place - numbers[i]);
    worst = here <= worst ? worst : here;  // also what is not a number is farther
  }
  return worst;
}

double nearest(const Matrix& matrix, const CtfMri& mri, const Points& head, const Points& numbers) {
  return (std::min)(distance(matrix, mri, head, numbers, Unit::voxelsOfTheirAxes),
                    distance(matrix, mri, head, numbers, Unit::voxelsInOrder));
}

}  // namespace

CtfMatrixVerdict judgeCtfMatrix(const CtfMri& mri) {
  if (!mri.matrix) {
    return {true, false, "none in this version"};
  }
  const Matrix& matrix = *mri.matrix;
  if (std::all_of(matrix.begin(), matrix.end(), [](double number) { return number == 0.0; })) {
    return {true, false, "none: all its numbers are 0"};
  }
  const auto& [nasion, leftEar, rightEar] = mri.points.value();
  const Points numbers = {nasion, leftEar, rightEar};
  const Points head =
      inHeadFrame({scaled(nasion, mri.spacing), scaled(leftEar, mri.spacing), scaled(rightEar, mri.spacing)});
  const double found = nearest(matrix, mri, head, numbers);
  if (found <= mostVoxels) {
    return {true, false, "agrees with the points within " + fixed(found, 2) + " voxels"};
  }
  CtfMatrixVerdict verdict{false, false, "misses the points by " + fixed(found, 1) + " voxels"};
  const Matrix other = transposed(matrix);
  if (nearest(other, mri, head, numbers) <= mostVoxels) {
    verdict.text += "; it fits them when its rows are read as columns";
  } else if (distance(other, mri, head, numbers, Unit::millimetres) <= mostVoxels ||
             distance(matrix, mri, head, numbers, Unit::millimetres) <= mostVoxels) {
    verdict.text += "; it fits them as a matrix in mm";
  } else if (nearest(turnedRows(matrix), mri, head, numbers) <= mostVoxels) {
    verdict.text += "; it fits them when its second and third row change their sign";
  } else {
    // The ears' line has to run the same way in both.
    verdict.sidesDiffer = !(matrix[1] * (leftEar.x - rightEar.x) > 0.0);
  }
  return verdict;
}

}  // namespace host
