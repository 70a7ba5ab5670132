#include "host/picture/ColorLegend.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <string>
#include <variant>
#include <vector>

#include "host/paint/StrokeFont.h"
#include "host/picture/NiceTicks.h"

namespace host {

namespace {

constexpr Rgb ground{0, 0, 0};
constexpr Rgb ink{255, 255, 255};
constexpr const char* noValueText = "no value";
constexpr int leastLines = 8;
constexpr int linesPerTick = 2;

class Legend {
 public:
  Legend(const ValueColors& colors, int height, int lineHeight)
      : m_colors(colors),
        m_font(lineHeight),
        m_line(m_font.lineHeight()),
        m_height((std::max)(height, leastLines * m_line)) {
    // Title, the scale between two half lines, "no value".
    m_top = gap() + m_line + m_line;
    m_bottom = m_height - gap() - m_line - m_line;
    if (const auto& range = colors.range()) {
      m_ticks =
          niceTicks(range->low, range->high, (std::max)((m_bottom - m_top) / (linesPerTick * m_line), 2));
    }
  }

  Image draw() const {
    Image image(width(), m_height, ground);
    m_font.draw(image, gap(), gap(), m_colors.title(), ink);
    if (m_colors.range()) {
      drawScale(image, *m_colors.range());
      for (const Tick& tick : m_ticks) {
        drawTick(image, tick, *m_colors.range());
      }
    }
    const int top = m_height - gap() - m_line;
    image.fill({gap(), top, gap() + barWidth(), top + m_line}, noValueColor);
    m_font.draw(image, gap() + barWidth() + gap(), top, noValueText, ink);
    return image;
  }

 private:
  int gap() const { return m_line / 2; }
  int barWidth() const { return m_line; }
  int textLeft() const { return gap() + barWidth() + gap() + gap(); }

  int width() const {
    int right = (std::max)(gap() + m_font.width(m_colors.title()),
                           gap() + barWidth() + gap() + m_font.width(noValueText));
    for (const Tick& tick : m_ticks) {
      right = (std::max)(right, textLeft() + m_font.width(tick.text));
    }
    return right + gap();
  }

  double valueAt(int row, const ValueRange& range) const {
    const double part = (m_bottom - 1 - row) / static_cast<double>(m_bottom - 1 - m_top);
    return std::lerp(range.low, range.high, part);
  }

  int rowOf(double value, const ValueRange& range) const {
    if (range.low == range.high) {
      return (m_top + m_bottom - 1) / 2;
    }
    const double part = (value - range.low) / (range.high - range.low);
    return m_bottom - 1 - static_cast<int>(std::lround(part * (m_bottom - 1 - m_top)));
  }

  void drawScale(Image& image, const ValueRange& range) const {
    const int left = gap();
    for (int row = m_top; row < m_bottom; ++row) {
      image.fill({left, row, left + barWidth(), row + 1}, m_colors.colorOf(valueAt(row, range)));
    }
    for (int step = 0; step < barWidth() / 2; ++step) {
      const PixelBox above{left + step + 1, m_top - step - 1, left + barWidth() - step - 1, m_top - step};
      const PixelBox below{above.left, m_bottom + step, above.right, m_bottom + step + 1};
      if (range.isCutHigh) {
        image.fill(above, m_colors.colorOf(range.high));
      }
      if (range.isCutLow) {
        image.fill(below, m_colors.colorOf(range.low));
      }
    }
  }

  void drawTick(Image& image, const Tick& tick, const ValueRange& range) const {
    const int row = rowOf(tick.value, range);
    const int left = gap() + barWidth();
    image.fill({left, row, left + gap(), row + 1}, ink);
    m_font.draw(image, textLeft(), row - m_line / 2, tick.text, ink);
  }

  const ValueColors& m_colors;
  StrokeFont m_font;
  int m_line;
  int m_height;
  int m_top = 0;     // of the scale
  int m_bottom = 0;  // one row behind it
  std::vector<Tick> m_ticks;
};

// Title, rule, and a square with a text for each colour, one below the other.
class ClusterLegend {
 public:
  ClusterLegend(const ClusterColors& colors, int lineHeight)
      : m_colors(colors), m_font(lineHeight), m_line(m_font.lineHeight()), m_head(linesOf(colors.rule())) {
    m_head.insert(m_head.begin(), "cluster (dipoles)");
  }

  Image draw() const {
    Image image(width(), height(), ground);
    int top = gap();
    for (const std::string& text : m_head) {
      m_font.draw(image, gap(), top, text, ink);
      top += m_line;
    }
    top += gap();
    for (const ClusterColors::Line& line : m_colors.lines()) {
      image.fill({gap(), top + 1, gap() + m_line, top + m_line - 1}, line.color);
      m_font.draw(image, textLeft(), top, line.text, ink);
      top += m_line;
    }
    return image;
  }

 private:
  int gap() const { return m_line / 2; }
  int textLeft() const { return gap() + m_line + gap(); }

  // Broken before its measures, for legends are narrow.
  static std::vector<std::string> linesOf(std::string rule) {
    std::vector<std::string> lines;
    for (const char* const word : {" within ", " and "}) {
      if (const std::size_t at = rule.find(word); at != std::string::npos) {
        lines.push_back(rule.substr(0, at));
        rule.erase(0, at + 1);
      }
    }
    lines.push_back(rule);
    return lines;
  }

  int width() const {
    int right = 0;
    for (const std::string& text : m_head) {
      right = (std::max)(right, gap() + m_font.width(text));
    }
    for (const ClusterColors::Line& line : m_colors.lines()) {
      right = (std::max)(right, textLeft() + m_font.width(line.text));
    }
    return right + gap();
  }
  int height() const {
    return 3 * gap() + static_cast<int>(m_head.size() + m_colors.lines().size()) * m_line;
  }

  const ClusterColors& m_colors;
  StrokeFont m_font;
  int m_line;
  std::vector<std::string> m_head;
};

}  // namespace

Image legendPicture(const ValueColors& colors, int height, int lineHeight) {
  return Legend(colors, height, lineHeight).draw();
}

Image legendPicture(const ClusterColors& colors, int lineHeight) {
  return ClusterLegend(colors, lineHeight).draw();
}

Image legendPicture(const DipoleColors& colors, int height, int lineHeight) {
  const ValueColors* const byValue = std::get_if<ValueColors>(&colors);
  return byValue != nullptr ? legendPicture(*byValue, height, lineHeight)
                            : legendPicture(std::get<ClusterColors>(colors), lineHeight);
}

}  // namespace host
