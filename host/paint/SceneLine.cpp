#include "host/paint/SceneLine.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <optional>

#include "host/paint/Rounding.h"

namespace host {

namespace {

// From and to as parts of the segment, 0 to 1.
struct Piece {
  double from = 0.0;
  double to = 1.0;

  // Keeps where low <= start + step * t <= high.
  void keep(double start, double step, double low, double high) {
    if (step == 0.0) {
      if (!(start >= low && start <= high)) {
        to = from - 1.0;
      }
      return;
    }
    const double a = (low - start) / step;
    const double b = (high - start) / step;
    from = (std::max)(from, (std::min)(a, b));
    to = (std::min)(to, (std::max)(a, b));
  }
};

ScreenPoint between(const ScreenPoint& a, const ScreenPoint& b, double part) {
  return {std::lerp(a.column, b.column, part), std::lerp(a.row, b.row, part),
          std::lerp(a.depth, b.depth, part)};
}

// The part of a segment that can touch the picture.
std::optional<Piece> inside(const Image& picture, const ScreenPoint& from, const ScreenPoint& to,
                            double margin) {
  Piece piece;
  piece.keep(from.column, to.column - from.column, -margin, picture.width() + margin);
  piece.keep(from.row, to.row - from.row, -margin, picture.height() + margin);
  if (!(piece.from <= piece.to)) {
    return std::nullopt;
  }
  return piece;
}

// isHidden(column, row, depth) says whether something hides the line there.
template <typename IsHidden>
void stroke(Image& picture, const ScreenPoint& from, const ScreenPoint& to, const LineStyle& style,
            const IsHidden& isHidden) {
  const double reach = style.width * 0.5 + 0.5;  // the last half pixel fades
  const std::optional<Piece> piece = inside(picture, from, to, reach);
  if (!piece) {
    return;
  }
  const ScreenPoint a = between(from, to, piece->from);
  const ScreenPoint b = between(from, to, piece->to);
  const double across = b.column - a.column;
  const double down = b.row - a.row;
  const double square = across * across + down * down;
  const auto first = [](double low) { return (std::max)(roundedDown(low), 0); };
  const auto last = [](double high, int size) { return (std::min)(roundedDown(high), size - 1); };
  const int lastRow = last((std::max)(a.row, b.row) + reach, picture.height());
  for (int row = first((std::min)(a.row, b.row) - reach); row <= lastRow; ++row) {
    // Where the row's height lies between the ends, the line leaves only few columns to look at.
    double left = (std::min)(a.column, b.column);
    double right = (std::max)(a.column, b.column);
    if (std::abs(down) > 1e-9) {
      const double slope = across / down;
      const double one = a.column + (row - reach - a.row) * slope;
      const double other = a.column + (row + 1.0 + reach - a.row) * slope;
      left = (std::max)(left, (std::min)(one, other));
      right = (std::min)(right, (std::max)(one, other));
    }
    const int lastColumn = last(right + reach, picture.width());
    for (int column = first(left - reach); column <= lastColumn; ++column) {
      const double x = column + 0.5 - a.column;
      const double y = row + 0.5 - a.row;
      const double part = square > 0.0 ? std::clamp((x * across + y * down) / square, 0.0, 1.0) : 0.0;
      const double beside = x - part * across;
      const double above = y - part * down;
      const double cover = reach - std::sqrt(beside * beside + above * above);
      if (cover <= 0.0) {
        continue;
      }
      const bool hidden = isHidden(column, row, std::lerp(a.depth, b.depth, part));
      const double strength = hidden ? style.hidden : style.visible;
      picture.blendPixel(column, row, style.colour, (std::min)(cover, 1.0) * strength);
    }
  }
}

}  // namespace

void drawLine(DepthPicture& picture, const ScreenPoint& from, const ScreenPoint& to, const LineStyle& style) {
  stroke(picture.image(), from, to, style, [&](int column, int row, double depth) {
    return static_cast<double>(picture.depth(column, row)) < depth;
  });
}

void drawLine(Image& image, const ScreenPoint& from, const ScreenPoint& to, const LineStyle& style) {
  stroke(image, from, to, style, [](int, int, double) { return false; });
}

void drawRing(Image& image, const ScreenPoint& centre, double radius, const LineStyle& style) {
  constexpr int corners = 48;
  const auto corner = [&](int i) -> ScreenPoint {
    const double angle = 2.0 * std::numbers::pi * i / corners;
    return {centre.column + radius * std::cos(angle), centre.row + radius * std::sin(angle), 0.0};
  };
  for (int i = 0; i < corners; ++i) {
    drawLine(image, corner(i), corner(i + 1), style);
  }
}

}  // namespace host
