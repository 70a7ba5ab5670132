#include "host/exchange/NeuromagText.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <optional>
#include <system_error>

#include "host/exchange/DelimitedText.h"
#include "host/text/Blanks.h"
#include "host/text/Letters.h"
#include "host/text/Numbers.h"

namespace host {

namespace {

constexpr std::size_t fewestCells = 10;  // the columns that every program writes

bool isComment(std::string_view line) {
  return line.starts_with('#') || line.starts_with('%');
}

std::string_view cutWord(std::string_view& text) {
  while (!text.empty() && isBlank(text.front())) {
    text.remove_prefix(1);
  }
  const std::string_view word = firstWord(text);
  text.remove_prefix(word.size());
  return word;
}

// A whole word is a number: nan and inf too, a plus in front, no decimal comma.
std::optional<double> cellOf(std::string_view word) {
  if (word.starts_with('+') && !word.starts_with("+-")) {
    word.remove_prefix(1);
  }
  double value = 0.0;
  const auto [behind, error] = std::from_chars(word.data(), word.data() + word.size(), value);
  const bool isWhole = !word.empty() && behind == word.data() + word.size();
  return isWhole && error == std::errc() ? std::optional(value) : std::nullopt;
}

// The columns' names in small letters, their units joined to them: "X (mm)" and "X/mm" are x/mm.
std::vector<std::string> titlesOf(std::string_view line) {
  line.remove_prefix((std::min)(line.find_first_not_of("#%"), line.size()));
  std::vector<std::string> titles;
  for (std::string_view word = cutWord(line); !word.empty(); word = cutWord(line)) {
    std::string title = lowered(word);
    const std::size_t bracket = title.find('(');
    if (bracket != std::string::npos && title.ends_with(')')) {
      title[bracket] = '/';
      title.pop_back();
    }
    if (title.starts_with('/') && !titles.empty()) {
      titles.back() += title;
    } else {
      titles.push_back(std::move(title));
    }
  }
  return titles;
}

// What stands between the first two quotes behind a word of a comment; nothing without that word.
std::optional<std::string_view> quotedBehind(std::string_view line, std::string_view word) {
  const std::size_t at = lowered(line).find(word);
  if (at == std::string::npos) {
    return std::nullopt;
  }
  const std::string_view rest = line.substr(at + word.size());
  const std::size_t open = rest.find('"');
  const std::size_t close = open == std::string_view::npos ? open : rest.find('"', open + 1);
  return close == std::string_view::npos ? std::optional<std::string_view>()
                                         : rest.substr(open + 1, close - open - 1);
}

enum Column { begin, end, x, y, z, amplitude, momentX, momentY, momentZ, goodness, columnCount };
constexpr std::array<const char*, columnCount> columnNames = {"begin", "end",    "x/mm",   "y/mm",   "z/mm",
                                                              "q/nam", "qx/nam", "qy/nam", "qz/nam", "g/%"};

// Behind as many blanks as make it so wide; at least one stands between two cells.
void addCell(std::string& text, double value, std::size_t width, int decimals) {
  const std::string digits = fixed(value, decimals);
  const bool isFirst = text.ends_with("\n  ");
  const std::size_t least = isFirst ? 0 : 1;
  text.append((std::max)(least, width - (std::min)(width, digits.size())), ' ');
  text += digits;
}

class Reader {
 public:
  explicit Reader(std::string_view text) : m_rows(text) {}

  NeuromagDipoles read() {
    for (std::string_view line; m_rows.next(line);) {
      if (isComment(line)) {
        takeComment(line);
      } else if (!line.empty()) {
        takeRow(line);
      }
    }
    if (m_file.dipoles.empty()) {
      throw TableFault(0, 0, "it holds no dipoles");
    }
    takeLeftOut();
    return std::move(m_file);
  }

 private:
  [[noreturn]] void fail(std::size_t column, const std::string& what) const {
    throw TableFault(m_rows.number(), column, what);
  }

  void takeComment(std::string_view line) {
    if (line.starts_with("##") || line.starts_with("%%")) {
      if (const auto name = quotedBehind(line, "name")) {
        m_file.name = *name;
        if (m_file.name.ends_with(" dipoles")) {
          m_file.name.resize(m_file.name.size() - std::string_view(" dipoles").size());
        }
      }
      return;
    }
    if (isNeuromagSystem(line)) {
      const auto system = quotedBehind(line, "coordinatesystem");
      if (!system || lowered(*system) != "head") {
        fail(0, "the positions are in the coordinate system \"" + std::string(system.value_or("")) +
                    "\"; only \"Head\" is known");
      }
      m_hasSystem = true;
    } else if (isNeuromagHeading(line)) {
      if (!m_file.dipoles.empty()) {
        fail(0, "a second heading follows rows of dipoles");
      }
      takeHeading(titlesOf(line));
    }
  }

  void takeHeading(const std::vector<std::string>& titles) {
    m_titles = titles;
    m_said.assign(titles.size(), 0);
    m_places.clear();
    m_has.fill(false);
    for (const std::string& title : titles) {
      const auto* const found = std::find(columnNames.begin(), columnNames.end(), title);
      const auto place = static_cast<std::size_t>(found - columnNames.begin());
      if (place < columnCount && m_has.at(place)) {
        fail(m_places.size() + 1, "the column " + title + " is there twice");
      }
      m_places.push_back(place);
      if (place < columnCount) {
        m_has.at(place) = true;
      }
    }
    for (const Column needed : {begin, x, y, z, momentX, momentY, momentZ}) {
      if (!m_has.at(needed)) {
        fail(0, std::string("the heading has no column ") + columnNames.at(needed));
      }
    }
  }

  void takeRow(std::string_view line) {
    if (m_titles.empty()) {
      takeHeading({columnNames.begin(), columnNames.end()});
      m_file.hasHeading = false;
    }
    std::array<double, columnCount> values{};
    values.fill(NeuromagDipole::none);
    std::size_t cells = 0;
    for (std::string_view word = cutWord(line); !word.empty(); word = cutWord(line)) {
      const std::optional<double> value = cellOf(word);
      if (!value) {
        fail(cells + 1, "\"" + std::string(word.substr(0, 40)) + "\" is no number");
      }
      if (cells < m_places.size()) {
        takeCell(cells, *value, values);
      }
      ++cells;
    }
    if (cells != m_places.size()) {
      fail(0, "this line has " + std::to_string(cells) + " cells, the heading names " +
                  std::to_string(m_places.size()));
    }
    addDipole(values);
  }

  void takeCell(std::size_t cell, double value, std::array<double, columnCount>& values) {
    const std::size_t place = m_places[cell];
    if (place < columnCount) {
      values[place] = value;
    } else if (!std::isnan(value)) {
      ++m_said[cell];
    }
  }

  void addDipole(const std::array<double, columnCount>& values) {
    m_file.dipoles.push_back({values[begin],
                              values[end],
                              {values[x], values[y], values[z]},
                              values[amplitude],
                              {values[momentX], values[momentY], values[momentZ]},
                              values[goodness]});
  }

  void takeLeftOut() {
    m_file.hasSystem = m_hasSystem;
    for (std::size_t cell = 0; cell < m_titles.size(); ++cell) {
      if (m_said[cell] > 0) {
        m_file.leftOut.emplace_back(m_titles[cell], m_said[cell]);
      }
    }
  }

  TextRows m_rows;
  NeuromagDipoles m_file;
  bool m_hasSystem = false;
  std::vector<std::string> m_titles;
  std::vector<std::size_t> m_places;  // columnCount: a column that nobody asks for
  std::vector<int> m_said;
  std::array<bool, columnCount> m_has{};
};

}  // namespace

TextRows::TextRows(std::string_view text) : m_rest(text) {
  constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
  if (m_rest.starts_with(byteOrderMark)) {
    m_rest.remove_prefix(byteOrderMark.size());
  }
  if (m_rest.find(m_end) == std::string_view::npos) {
    m_end = '\r';
  }
}

bool TextRows::next(std::string_view& line) {
  if (m_rest.empty()) {
    return false;
  }
  const std::size_t end = m_rest.find(m_end);
  line = withoutBlanks(m_rest.substr(0, end));
  m_rest.remove_prefix(end == std::string_view::npos ? m_rest.size() : end + 1);
  ++m_number;
  return true;
}

bool isNeuromagSystem(std::string_view line) {
  return isComment(line) && lowered(line).find("coordinatesystem") != std::string::npos;
}

bool isNeuromagHeading(std::string_view line) {
  if (!isComment(line) || line.starts_with("##") || line.starts_with("%%")) {
    return false;
  }
  const std::vector<std::string> titles = titlesOf(line);
  const auto has = [&](const char* title) {
    return std::find(titles.begin(), titles.end(), title) != titles.end();
  };
  return has("begin") && (has("q/nam") || has("qx/nam") || has("g/%"));
}

bool isNeuromagRow(std::string_view line) {
  std::size_t cells = 0;
  for (std::string_view word = cutWord(line); !word.empty(); word = cutWord(line)) {
    if (!cellOf(word)) {
      return false;
    }
    ++cells;
  }
  return cells >= fewestCells;
}

NeuromagDipoles readNeuromagText(std::string_view text) {
  return Reader(text).read();
}

std::string neuromagText(const NeuromagDipoles& dipoles) {
  std::string text =
      "# CoordinateSystem \"Head\"\n"
      "#   begin     end   X (mm)   Y (mm)   Z (mm)   Q(nAm)  Qx(nAm)  Qy(nAm)  Qz(nAm)    g/%\n";
  text.reserve(text.size() + dipoles.dipoles.size() * 96);
  for (const NeuromagDipole& d : dipoles.dipoles) {
    text += "  ";
    addCell(text, d.begin, 7, 1);
    addCell(text, d.end, 8, 1);
    for (const double coordinate : {d.place.x, d.place.y, d.place.z}) {
      addCell(text, coordinate, 9, 2);
    }
    for (const double value : {d.amplitude, d.moment.x, d.moment.y, d.moment.z}) {
      addCell(text, value, 9, 3);
    }
    addCell(text, d.goodness, 7, 2);
    text += '\n';
  }
  if (!dipoles.name.empty()) {
    text += "## Name \"" + dipoles.name + " dipoles\" Style \"Dipoles\"";
  }
  return text;
}

}  // namespace host
