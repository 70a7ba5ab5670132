#include "host/head/FiducialFile.h"

#include <array>
#include <cstddef>
#include <sstream>
#include <stdexcept>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

#include "host/head/ByteSource.h"
#include "host/head/FifFile.h"
#include "host/text/Blanks.h"
#include "host/text/Numbers.h"
#include "host/text/PathText.h"

namespace host {

namespace {

constexpr std::array<std::string_view, 3> names = {"nasion", "left", "right"};
constexpr std::size_t mostBytes = 65536;
constexpr std::string_view spaceMark = "# millimetres: ";
constexpr int unknownSpace = -1;
constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";  // some editors begin a file with it

std::vector<std::string_view> split(std::string_view text, char separator) {
  std::vector<std::string_view> parts;
  if (separator != ' ') {
    for (std::size_t end = 0; (end = text.find(separator)) != std::string_view::npos;) {
      parts.push_back(text.substr(0, end));
      text.remove_prefix(end + 1);
    }
    parts.push_back(text);
    return parts;
  }
  for (text = withoutBlanks(text); !text.empty(); text = withoutBlanks(text)) {
    parts.push_back(firstWord(text));
    text.remove_prefix(parts.back().size());
  }
  return parts;
}

class Reader {
 public:
  explicit Reader(std::string file) : m_file(std::move(file)) {}

  std::string contentOf(const std::filesystem::path& path) const {
    try {
      std::string text = unpackedBytesOf(path, mostBytes);
      if (text.size() <= mostBytes) {
        return text;
      }
    } catch (const std::runtime_error& error) {
      fail(std::string("cannot be opened (") + error.what() + ")");
    }
    fail("there are more than 64 KiB of it");
  }

  void take(std::string_view line) {
    ++m_line;
    if (m_line == 1 && line.starts_with(byteOrderMark)) {
      line.remove_prefix(byteOrderMark.size());
    }
    takeSpace(line);
    line = withoutBlanks(line.substr(0, line.find('#')));
    if (line.empty()) {
      return;
    }
    const std::string_view name = firstWord(line);
    for (std::size_t i = 0; i < names.size(); ++i) {
      if (name == names.at(i)) {
        return set(i, line.substr(name.size()));
      }
    }
    fail(where() + "begins with neither nasion, left nor right");
  }

  FramedPoints result() const {
    for (std::size_t i = 0; i < names.size(); ++i) {
      if (!m_points.at(i)) {
        fail("no line gives the point " + std::string(names.at(i)));
      }
    }
    return {{*m_points[0], *m_points[1], *m_points[2]}, PointFrame::scanner, m_space};
  }

  [[noreturn]] void fail(const std::string& cause) const {
    throw std::runtime_error("fiducial points " + m_file + ": " + cause);
  }

 private:
  std::string where() const { return "line " + std::to_string(m_line) + " "; }

  // A remark like any other, unless it tells what the millimetres are.
  void takeSpace(std::string_view line) {
    if (!line.starts_with(spaceMark)) {
      return;
    }
    const std::string_view text = withoutBlanks(line.substr(spaceMark.size()));
    for (int code = unknownSpace; code <= static_cast<int>(MriSpace::mni); ++code) {
      if (text == textOf(static_cast<MriSpace>(code))) {
        m_space = static_cast<MriSpace>(code);
      }
    }
  }

  void set(std::size_t index, std::string_view values) {
    const std::string name(names.at(index));
    if (m_points.at(index)) {
      fail(where() + "gives the point " + name + " a second time");
    }
    m_points.at(index) = readCoordinates(values, ' ');
    if (!m_points.at(index)) {
      fail(where() + "needs three numbers after " + name);
    }
  }

  std::string m_file;
  int m_line = 0;
  std::array<std::optional<Vector3>, 3> m_points;
  std::optional<MriSpace> m_space;
};

}  // namespace

std::optional<Vector3> readCoordinates(std::string_view text, char separator) {
  const std::vector<std::string_view> parts = split(text, separator);
  if (parts.size() != 3) {
    return std::nullopt;
  }
  Vector3 result;
  for (int axis = 0; axis < 3; ++axis) {
    const std::optional<double> value = numberOf(parts[static_cast<std::size_t>(axis)]);
    if (!value) {
      return std::nullopt;
    }
    result[axis] = *value;
  }
  return result;
}

std::string fiducialText(const Fiducials& points, MriSpace space) {
  const std::array<Vector3, 3> all = {points.nasion, points.leftEar, points.rightEar};
  std::string text = "# fiducial points of a head, mm of its MRI: right, front and up are positive\n";
  text += std::string(spaceMark) + textOf(space) + "\n";
  for (std::size_t i = 0; i < names.size(); ++i) {
    text += names.at(i);
    for (int axis = 0; axis < 3; ++axis) {
      text += " " + fixed(all.at(i)[axis], 3);
    }
    text += "\n";
  }
  return text;
}

FramedPoints readFiducialFile(const std::filesystem::path& path) {
  Reader reader(utf8Of(textOf(path)));
  std::error_code error;
  if (std::filesystem::is_directory(path, error)) {
    reader.fail("a folder, not a file");
  }
  const std::string text = reader.contentOf(path);
  if (isFif(text)) {
    try {
      return fifPoints(text);
    } catch (const std::invalid_argument& cause) {
      reader.fail(cause.what());
    }
  }
  std::istringstream lines(text);
  for (std::string line; std::getline(lines, line);) {
    reader.take(line);
  }
  return reader.result();
}

}  // namespace host
