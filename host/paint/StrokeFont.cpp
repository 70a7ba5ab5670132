#include "host/paint/StrokeFont.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstddef>

#include "host/paint/StrokeGlyphs.h"
#include "host/text/Utf8.h"

namespace host {

namespace {

struct Point {
  double x = 0.0;
  double y = 0.0;
};

struct Segment {
  Point from;
  Point to;
};

// The next character of a UTF-8 text; a byte that begins none stands for itself.
char32_t nextCharacter(std::string_view& text) {
  const Utf8Character next = firstCharacter(text);
  const auto first = static_cast<unsigned char>(text.front());
  text.remove_prefix((std::max)(next.length, std::size_t{1}));
  return next.length == 0 ? first : next.point;
}

enum class Mark : unsigned char { none, grave, acute, circumflex, tilde, diaeresis, ring, cedilla, stroke };

struct Letter {
  char32_t base;
  Mark mark = Mark::none;
};

constexpr char32_t firstAccented = U'\u00C0';
// The letters of U+00C0 to U+00FF as base and mark; a blank base means that there is none.
constexpr std::string_view accentedBases = "AAAAAA CEEEEIIII NOOOOO OUUUUY  aaaaaa ceeeeiiii nooooo ouuuuy y";
constexpr std::string_view accentedMarks = "`'^~:o ,`'^:`'^: ~`'^~: /`'^:'  `'^~:o ,`'^:`'^: ~`'^~: /`'^:' :";
static_assert(accentedBases.size() == 64 && accentedMarks.size() == 64);

Mark markOf(char sign) {
  constexpr std::string_view signs = " `'^~:o,/";
  return static_cast<Mark>(signs.find(sign));
}

Letter takeApart(char32_t character) {
  if (character < firstAccented || character >= firstAccented + accentedBases.size()) {
    return {character};
  }
  const std::size_t index = character - firstAccented;
  if (accentedBases[index] == ' ') {
    return {character};
  }
  const char base = accentedBases[index];
  return {static_cast<char32_t>(base), markOf(accentedMarks[index])};
}

// Marks are drawn around x = 0, above small letters; capitals are lowered to make room below.
std::string_view strokesOf(Mark mark) {
  switch (mark) {
    case Mark::grave:
      return "M-3 21L1 17";
    case Mark::acute:
      return "M-1 17L3 21";
    case Mark::circumflex:
      return "M-4 17L0 21L4 17";
    case Mark::tilde:
      return "M-5 18Q-3 21 0 19Q3 17 5 20";
    case Mark::diaeresis:
      return "M-3 19L-3 20M3 19L3 20";
    case Mark::ring:
      return "M0 22Q3 22 3 19Q3 17 0 17Q-3 17 -3 19Q-3 22 0 22";
    case Mark::cedilla:
      return "M0 0Q4 -2 2 -4Q0 -5 -2 -4";
    case Mark::stroke:
      return "M-6 -1L6 15";
    case Mark::none:
      break;
  }
  return {};
}

// Reads the commands of one drawing and hands out straight pieces in the drawing's units.
class Drawing {
 public:
  explicit Drawing(std::string_view commands) : m_rest(commands) {}

  template <typename Taker>
  void eachSegment(Taker take) {
    Point pen;
    while (!m_rest.empty()) {
      const char command = m_rest.front();
      m_rest.remove_prefix(1);
      const Point first = point();
      if (command == 'L') {
        take(Segment{pen, first});
      }
      const Point end = command == 'Q' ? point() : first;
      if (command == 'Q') {
        curve(pen, first, end, take);
      }
      pen = end;
    }
  }

 private:
  template <typename Taker>
  static void curve(Point from, Point control, Point to, Taker take) {
    constexpr int pieces = 8;
    Point previous = from;
    for (int i = 1; i <= pieces; ++i) {
      const double t = static_cast<double>(i) / pieces;
      const double s = 1.0 - t;
      const Point next{s * s * from.x + 2 * s * t * control.x + t * t * to.x,
                       s * s * from.y + 2 * s * t * control.y + t * t * to.y};
      take(Segment{previous, next});
      previous = next;
    }
  }

  Point point() {
    const int x = number();
    const int y = number();
    return {static_cast<double>(x), static_cast<double>(y)};
  }

  int number() {
    while (!m_rest.empty() && m_rest.front() == ' ') {
      m_rest.remove_prefix(1);
    }
    int value = 0;
    const auto result = std::from_chars(m_rest.data(), m_rest.data() + m_rest.size(), value);
    m_rest.remove_prefix(static_cast<std::size_t>(result.ptr - m_rest.data()));
    return value;
  }

  std::string_view m_rest;
};

// How far places are from a segment.
class Distance {
 public:
  explicit Distance(const Segment& segment)
      : m_from(segment.from), m_dx(segment.to.x - segment.from.x), m_dy(segment.to.y - segment.from.y) {
    const double square = m_dx * m_dx + m_dy * m_dy;
    m_inverse = square > 0.0 ? 1.0 / square : 0.0;
  }

  double operator()(Point point) const {
    const double px = point.x - m_from.x;
    const double py = point.y - m_from.y;
    const double along = std::clamp((px * m_dx + py * m_dy) * m_inverse, 0.0, 1.0);
    const double besideX = px - along * m_dx;
    const double besideY = py - along * m_dy;
    return std::sqrt(besideX * besideX + besideY * besideY);
  }

 private:
  Point m_from;
  double m_dx;
  double m_dy;
  double m_inverse;
};

// How far each pixel of a line of text is covered by strokes: the most of any stroke, so that strokes which
// meet do not darken each other.
class CoverageMap {
 public:
  CoverageMap(int width, int height)
      : m_width(width),
        m_height(height),
        m_values(static_cast<std::size_t>(width) * static_cast<std::size_t>(height), 0.0) {}

  void add(const Segment& segment, double halfWidth) {
    const double reach = halfWidth + 1.0;
    const int left = bound((std::min)(segment.from.x, segment.to.x) - reach, m_width);
    const int right = bound((std::max)(segment.from.x, segment.to.x) + reach + 1, m_width);
    const int top = bound((std::min)(segment.from.y, segment.to.y) - reach, m_height);
    const int bottom = bound((std::max)(segment.from.y, segment.to.y) + reach + 1, m_height);
    const Distance distance(segment);
    for (int row = top; row < bottom; ++row) {
      for (int column = left; column < right; ++column) {
        const double away = distance({column + 0.5, row + 0.5});
        double& value = m_values[offset(column, row)];
        value = (std::max)(value, std::clamp(halfWidth + 0.5 - away, 0.0, 1.0));
      }
    }
  }

  void blend(Image& image, int left, int top, Rgb colour) const {
    for (int row = 0; row < m_height; ++row) {
      for (int column = 0; column < m_width; ++column) {
        image.blendPixel(left + column, top + row, colour, m_values[offset(column, row)]);
      }
    }
  }

 private:
  static int bound(double value, int extent) {
    return static_cast<int>(std::clamp(value, 0.0, static_cast<double>(extent)));
  }
  std::size_t offset(int column, int row) const {
    return static_cast<std::size_t>(row) * static_cast<std::size_t>(m_width) +
           static_cast<std::size_t>(column);
  }

  int m_width;
  int m_height;
  std::vector<double> m_values;
};

// Units from the left end of the text to the right end of its last gap.
int unitsWide(std::string_view text) {
  int units = 0;
  while (!text.empty()) {
    units += strokeGlyph(takeApart(nextCharacter(text)).base).width + glyphGap;
  }
  return units;
}

}  // namespace

StrokeFont::StrokeFont(int lineHeight)
    : m_lineHeight((std::max)(lineHeight, 8)),
      m_halfWidth((std::max)(0.55, m_lineHeight * 0.042)),
      // Strokes are blurred by half a pixel: with a little more room, none is cut off at the top or the
      // bottom.
      m_margin(m_halfWidth + 0.75),
      m_scale((m_lineHeight - 2.0 * m_margin) / (glyphAscent + glyphDescent)) {}

int StrokeFont::width(std::string_view text) const {
  return static_cast<int>(std::ceil(unitsWide(text) * m_scale));
}

void StrokeFont::draw(Image& image, int left, int top, std::string_view text, Rgb colour) const {
  CoverageMap coverage(width(text), m_lineHeight);
  const double baseLine = m_margin + glyphAscent * m_scale;
  int at = 0;
  while (!text.empty()) {
    const Letter letter = takeApart(nextCharacter(text));
    const StrokeGlyph glyph = strokeGlyph(letter.base);
    const bool squeeze = letter.mark != Mark::none && letter.mark < Mark::cedilla && letter.base < U'a';
    const double heightScale = squeeze ? 0.78 : 1.0;
    // Half of the gap stands on either side, so that a text is centred by its width.
    const double originX = (at + glyphGap * 0.5) * m_scale;
    const auto place = [&](Point p, double shift, double squash) {
      return Point{originX + (p.x + shift) * m_scale, baseLine - p.y * squash * m_scale};
    };
    const auto adder = [&](double shift, double squash) {
      return [&, shift, squash](const Segment& s) {
        coverage.add({place(s.from, shift, squash), place(s.to, shift, squash)}, m_halfWidth);
      };
    };
    Drawing(glyph.strokes).eachSegment(adder(0.0, heightScale));
    Drawing(strokesOf(letter.mark)).eachSegment(adder(glyph.width * 0.5, 1.0));
    at += glyph.width + glyphGap;
  }
  coverage.blend(image, left, top, colour);
}

std::vector<std::string> StrokeFont::wrap(std::string_view text, int widest) const {
  std::vector<std::string> lines;
  while (!text.empty()) {
    std::string_view rest = text;
    std::size_t end = 0;    // of what fits
    std::size_t space = 0;  // the last place to break
    while (!rest.empty()) {
      const std::size_t start = text.size() - rest.size();
      const char32_t character = nextCharacter(rest);
      const std::size_t next = text.size() - rest.size();
      if (character == U' ') {
        space = start;
      }
      if (end > 0 && character != U' ' && width(text.substr(0, next)) > widest) {
        break;
      }
      end = next;
    }
    const bool all = end == text.size();
    const std::size_t cut = all || space == 0 ? end : space;
    lines.emplace_back(text.substr(0, cut));
    text.remove_prefix(cut);
    while (!text.empty() && text.front() == ' ') {
      text.remove_prefix(1);
    }
  }
  return lines;
}

}  // namespace host
