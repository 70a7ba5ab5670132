#include "host/paint/SolidShapes.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>

#include "host/paint/PixelSpan.h"

namespace host {

namespace {

// From the surface to the light: screen axes right, up, to the viewer. Of unit length.
constexpr Vector3 toLight{-0.36, 0.48, 0.8};

// How a surface looks under the light, by the cosine of the angle between them.
class Shading {
 public:
  Shading() {
    for (std::size_t i = 0; i < steps; ++i) {
      const double cosine = static_cast<double>(i) / (steps - 1);
      m_bright.at(i) = static_cast<int>(std::lround(fullBright * (0.28 + 0.72 * cosine)));
      m_gloss.at(i) = static_cast<int>(std::lround(110.0 * std::pow(cosine, 40.0)));
    }
  }
  Rgb operator()(Rgb colour, float cosine) const {
    const auto step = static_cast<std::size_t>((std::max)(cosine, 0.0F) * (steps - 1));
    const std::size_t i = (std::min)(step, steps - 1);
    const auto lit = [&](std::uint8_t part) {
      return static_cast<std::uint8_t>((std::min)((part * m_bright[i]) / fullBright + m_gloss[i], 255));
    };
    return {lit(colour.red), lit(colour.green), lit(colour.blue)};
  }

 private:
  static constexpr std::size_t steps = 256;
  static constexpr int fullBright = 256;
  std::array<int, steps> m_bright{};
  std::array<int, steps> m_gloss{};
};

const Shading shading;

// The first and the last row that a shape from top to bottom can reach, cut to the picture.
struct Rows {
  int first = 0;
  int end = 0;
};
Rows rowsBetween(double top, double bottom, int height) {
  if (!(top <= bottom)) {
    return {};
  }
  return {static_cast<int>(std::ceil(std::clamp(top, 0.0, static_cast<double>(height)) - 0.5)),
          static_cast<int>(std::floor(std::clamp(bottom, 0.0, static_cast<double>(height)) - 0.5)) + 1};
}

ScreenPoint between(const ScreenPoint& a, const ScreenPoint& b, double part) {
  return {a.column + (b.column - a.column) * part, a.row + (b.row - a.row) * part,
          a.depth + (b.depth - a.depth) * part};
}

// Rows of no more pixels than this are drawn at once, without a look whether all of them are hidden.
constexpr int shortRow = 8;

// The box around a piece of a shaft or head is looked at before anything is drawn. radius: mm.
bool isHidden(const DepthPicture& picture, const ScreenPoint& a, const ScreenPoint& b, double radius,
              double scale) {
  const double around = radius * scale;
  return picture.hides((std::min)(a.column, b.column) - around, (std::min)(a.row, b.row) - around,
                       (std::max)(a.column, b.column) + around, (std::max)(a.row, b.row) + around,
                       (std::min)(a.depth, b.depth) - radius);
}

std::span<const float> part(const float* depths, int first, int end) {
  return {depths + first, static_cast<std::size_t>(end - first)};
}

// One end of a piece of a cylinder or a cone.
struct RoundEnd {
  ScreenPoint at;
  double radius = 0.0;  // pixels
};

// A cylinder or cone between two ends, seen from the side. `foreshortened`: its length in the picture by its
// true length, above 0.
void drawRound(DepthPicture& picture, const RoundEnd& a, const RoundEnd& b, double foreshortened,
               double scale, Rgb colour) {
  const double across = b.at.column - a.at.column;
  const double down = b.at.row - a.at.row;
  const double pixels = std::sqrt(across * across + down * down);
  const double ux = across / pixels;
  const double uy = down / pixels;
  const double depthSlope = (b.at.depth - a.at.depth) / pixels;
  const double radiusSlope = (b.radius - a.radius) / pixels;
  const double nearness = 1.0 / (foreshortened * scale);  // mm of depth per pixel of roundness
  const double widest = (std::max)(a.radius, b.radius);
  const double nearestEnd = (std::min)(a.at.depth, b.at.depth) - widest / scale;
  // The surface's direction runs from `beside`, at its border, to `facing`, along its middle.
  const double beside = -uy * toLight.x - ux * toLight.y;
  const double lean = depthSlope * scale * foreshortened;  // cosine between the axis and the line of sight
  const double facing = lean * (ux * toLight.x - uy * toLight.y) + foreshortened * toLight.z;

  const double depthStep = depthSlope * ux;
  const auto depthStepF = static_cast<float>(depthStep);
  const auto nearnessF = static_cast<float>(nearness);
  const auto nearestEndF = static_cast<float>(nearestEnd);
  const auto uyF = static_cast<float>(uy);
  const auto besideF = static_cast<float>(beside);
  const auto facingF = static_cast<float>(facing);

  const RowBorder beginning(ux);
  const RowBorder ending(-ux);
  const RowBorder oneSide(radiusSlope * ux + uy);
  const RowBorder otherSide(radiusSlope * ux - uy);
  const double top = (std::min)(a.at.row - a.radius, b.at.row - b.radius);
  const double bottom = (std::max)(a.at.row + a.radius, b.at.row + b.radius);
  const Rows rows = rowsBetween(top, bottom, picture.height());
  for (int row = rows.first; row < rows.end; ++row) {
    // Along and beside the axis, and the radius there, all linear in the column.
    const double y = row + 0.5 - a.at.row;
    const double along0 = uy * y - ux * a.at.column;
    const double beside0 = ux * y + uy * a.at.column;
    const double radius0 = a.radius + radiusSlope * along0;
    PixelSpan span(picture.width());
    span.keep(beginning, along0);
    span.keep(ending, pixels - along0);
    span.keep(oneSide, radius0 - beside0);
    span.keep(otherSide, radius0 + beside0);
    const int first = span.first();
    const int end = span.end();
    if (first >= end) {
      continue;
    }
    float* depths = picture.depths(row);
    const double depth0 = a.at.depth + depthSlope * along0;
    const double axisNearest = depth0 + (std::min)(depthStep * (first + 0.5), depthStep * (end - 0.5));
    const double nearest = (std::max)(axisNearest - widest * nearness, nearestEnd);
    if (end - first > shortRow && hidesAll(part(depths, first, end), static_cast<float>(nearest))) {
      continue;
    }
    Rgb* colours = picture.colours(row);
    // From here in single precision and from the row's first pixel: both are small numbers.
    const double x0 = first + 0.5;
    const auto radiusFirst = static_cast<float>(radius0 + radiusSlope * ux * x0);
    const auto radiusStep = static_cast<float>(radiusSlope * ux);
    const auto besideFirst = static_cast<float>(beside0 - uy * x0);
    const auto depthFirst = static_cast<float>(depth0 + depthStep * x0);
    for (int column = first; column < end; ++column) {
      const auto x = static_cast<float>(column - first);
      const float radius = radiusFirst + radiusStep * x;
      const float axis = depthFirst + depthStepF * x;
      if (axis - radius * nearnessF >= depths[column]) {
        continue;
      }
      const float s = besideFirst - uyF * x;
      const float round = std::sqrt((std::max)(radius * radius - s * s, 0.0F));
      const float depth = (std::max)(axis - round * nearnessF, nearestEndF);
      if (!(depth < depths[column])) {
        continue;
      }
      depths[column] = depth;
      const float inverse = radius > 1e-6F ? 1.0F / radius : 0.0F;
      colours[column] = shading(colour, (s * besideF + round * facingF) * inverse);
    }
  }
}

// A round flat disc. normal: its unit vector in screen axes (right, up, to the viewer), not seen edge-on.
void drawDisc(DepthPicture& picture, const ScreenPoint& at, double radius, const Vector3& normal,
              double scale, Rgb colour) {
  const Rgb lit = shading(colour, static_cast<float>(std::abs(dot(normal, toLight))));
  const double acrossSlope = normal.x / (normal.z * scale);  // mm of depth per pixel to the right
  const double downSlope = -normal.y / (normal.z * scale);
  // The tilt makes an ellipse of it: xx * x * x + 2 * xy * x * y + yy * y * y <= radius * radius.
  const double xx = 1.0 + normal.x * normal.x / (normal.z * normal.z);
  const double xy = -normal.x * normal.y / (normal.z * normal.z);
  const double yy = 1.0 + normal.y * normal.y / (normal.z * normal.z);
  const double tall = radius * std::sqrt((std::max)(1.0 - normal.y * normal.y, 0.0));
  const Rows rows = rowsBetween(at.row - tall, at.row + tall, picture.height());
  for (int row = rows.first; row < rows.end; ++row) {
    const double y = row + 0.5 - at.row;
    const double square = xy * xy * y * y - xx * (yy * y * y - radius * radius);
    const double half = std::sqrt((std::max)(square, 0.0)) / xx;
    const double middle = at.column - xy * y / xx;
    PixelSpan span(picture.width());
    span.keepBetween(middle - half, middle + half);
    float* depths = picture.depths(row);
    Rgb* colours = picture.colours(row);
    const int end = span.end();
    for (int column = span.first(); column < end; ++column) {
      const double x = column + 0.5 - at.column;
      const auto depth = static_cast<float>(at.depth + acrossSlope * x + downSlope * y);
      if (!(depth < depths[column])) {
        continue;
      }
      depths[column] = depth;
      colours[column] = lit;
    }
  }
}

// In pieces, because most of a shaft is often hidden.
void drawShaft(DepthPicture& picture, const ScreenPoint& start, const ScreenPoint& end, double radius,
               double foreshortened, double scale, Rgb colour) {
  constexpr double pieceLength = 24.0;  // pixels
  constexpr int mostPieces = 32;
  const double extent = (std::max)(std::abs(end.column - start.column), std::abs(end.row - start.row));
  const int pieces = 1 + static_cast<int>((std::min)(extent / pieceLength, mostPieces - 1.0));
  ScreenPoint from = start;
  for (int piece = 1; piece <= pieces; ++piece) {
    const ScreenPoint to = between(start, end, static_cast<double>(piece) / pieces);
    if (!isHidden(picture, from, to, radius, scale)) {
      drawRound(picture, {from, radius * scale}, {to, radius * scale}, foreshortened, scale, colour);
    }
    from = to;
  }
}

}  // namespace

void drawBall(DepthPicture& picture, const ScreenPoint& centre, double radiusPixels, double radiusMm,
              Rgb colour) {
  const double mmPerPixel = radiusMm / radiusPixels;
  if (picture.hides(centre.column - radiusPixels, centre.row - radiusPixels, centre.column + radiusPixels,
                    centre.row + radiusPixels, centre.depth - radiusMm)) {
    return;
  }
  const auto perRadius = static_cast<float>(1.0 / radiusPixels);
  const Rows rows = rowsBetween(centre.row - radiusPixels, centre.row + radiusPixels, picture.height());
  for (int row = rows.first; row < rows.end; ++row) {
    const double y = row + 0.5 - centre.row;
    const double halfSquare = radiusPixels * radiusPixels - y * y;
    if (halfSquare < 0.0) {
      continue;
    }
    const double half = std::sqrt(halfSquare);
    PixelSpan span(picture.width());
    span.keepBetween(centre.column - half, centre.column + half);
    const int first = span.first();
    const int end = span.end();
    if (first >= end) {
      continue;
    }
    float* depths = picture.depths(row);
    const auto nearest = static_cast<float>(centre.depth - half * mmPerPixel);
    if (end - first > shortRow && hidesAll(part(depths, first, end), nearest)) {
      continue;
    }
    Rgb* colours = picture.colours(row);
    const double lightOfRow = -y * toLight.y;
    for (int column = first; column < end; ++column) {
      const double x = column + 0.5 - centre.column;
      const double bulge = std::sqrt((std::max)(halfSquare - x * x, 0.0));
      const auto depth = static_cast<float>(centre.depth - bulge * mmPerPixel);
      if (!(depth < depths[column])) {
        continue;
      }
      depths[column] = depth;
      const auto light = static_cast<float>(x * toLight.x + lightOfRow + bulge * toLight.z);
      colours[column] = shading(colour, light * perRadius);
    }
  }
}

void drawArrow(DepthPicture& picture, const SceneCamera& camera, const Vector3& from, const Vector3& to,
               const ArrowShape& shape, Rgb colour) {
  const Vector3 vector = to - from;
  const double extent = length(vector);
  if (!(extent > 0.0)) {
    return;
  }
  const Vector3 direction = vector * (1.0 / extent);
  const Vector3 onScreen{dot(direction, camera.right()), dot(direction, camera.up()),
                         dot(direction, camera.toViewer())};
  const double scale = camera.scale();
  const Vector3 neck = to - direction * (std::min)(shape.headLength, extent * 0.5);
  const ScreenPoint start = camera.project(from);
  const ScreenPoint middle = camera.project(neck);
  const ScreenPoint tip = camera.project(to);
  // Closer to the line of sight than this, only the end that faces the viewer is seen.
  constexpr double leastForeshortened = 0.05;
  constexpr double leastFacing = 0.05;
  const double foreshortened = std::sqrt(onScreen.x * onScreen.x + onScreen.y * onScreen.y);
  const bool fromSide = foreshortened > leastForeshortened;
  if (fromSide) {
    drawShaft(picture, start, middle, shape.shaftRadius, foreshortened, scale, colour);
  }
  if (isHidden(picture, middle, tip, shape.headRadius, scale)) {
    return;
  }
  if (fromSide) {
    drawRound(picture, {middle, shape.headRadius * scale}, {tip, 0.0}, foreshortened, scale, colour);
  }
  if (std::abs(onScreen.z) > leastFacing) {
    drawDisc(picture, middle, shape.headRadius * scale, onScreen, scale, colour);
  }
}

}  // namespace host
