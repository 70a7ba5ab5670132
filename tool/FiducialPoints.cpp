#include "tool/FiducialPoints.h"

#include <array>
#include <cerrno>
#include <charconv>
#include <cmath>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <optional>
#include <sstream>
#include <stdexcept>
#include <string_view>
#include <utility>
#include <vector>

namespace tool {
namespace {

constexpr std::array<const char*, 3> names = {"nasion", "left", "right"};

std::vector<std::string> words(const std::string& text) {
  std::istringstream stream(text);
  std::vector<std::string> result;
  for (std::string word; stream >> word;) {
    result.push_back(word);
  }
  return result;
}

std::optional<double> number(std::string_view text) {
  double value = 0.0;
  if (text.starts_with('+')) {
    text.remove_prefix(1);
  }
  const auto result = std::from_chars(text.data(), text.data() + text.size(), value);
  const bool isWhole = result.ec == std::errc() && result.ptr == text.data() + text.size();
  return isWhole && std::isfinite(value) ? std::optional(value) : std::nullopt;
}

std::optional<host::Vector3> point(const std::vector<std::string>& values) {
  host::Vector3 result;
  if (values.size() != 3) {
    return std::nullopt;
  }
  for (int axis = 0; axis < 3; ++axis) {
    const std::optional<double> value = number(values[static_cast<std::size_t>(axis)]);
    if (!value) {
      return std::nullopt;
    }
    result[axis] = *value;
  }
  return result;
}

std::vector<std::string> splitAtCommas(std::string_view text) {
  std::vector<std::string> parts(1);
  for (const char c : text) {
    if (c == ',') {
      parts.emplace_back();
    } else {
      parts.back() += c;
    }
  }
  return parts;
}

std::optional<host::Fiducials> triples(const std::string& argument) {
  const std::vector<std::string> given = words(argument);
  if (given.size() != names.size()) {
    return std::nullopt;
  }
  const auto nasion = point(splitAtCommas(given[0]));
  const auto left = point(splitAtCommas(given[1]));
  const auto right = point(splitAtCommas(given[2]));
  if (!nasion || !left || !right) {
    return std::nullopt;
  }
  return host::Fiducials{*nasion, *left, *right};
}

class FileReader {
 public:
  explicit FileReader(std::string file) : m_file(std::move(file)) {}

  void take(const std::string& line) {
    ++m_line;
    std::vector<std::string> parts = words(line.substr(0, line.find('#')));
    if (parts.empty()) {
      return;
    }
    const std::string name = parts.front();
    parts.erase(parts.begin());
    for (std::size_t i = 0; i < names.size(); ++i) {
      if (name == names.at(i)) {
        return set(i, parts);
      }
    }
    fail("line " + std::to_string(m_line) + " begins with neither nasion, left nor right");
  }

  host::Fiducials result() const {
    for (std::size_t i = 0; i < names.size(); ++i) {
      if (!m_points.at(i)) {
        fail(std::string("no line gives the point ") + names.at(i));
      }
    }
    return {*m_points[0], *m_points[1], *m_points[2]};
  }

  [[noreturn]] void fail(const std::string& cause) const {
    throw std::runtime_error("fiducial points " + m_file + ": " + cause);
  }

 private:
  void set(std::size_t index, const std::vector<std::string>& values) {
    const std::string where = "line " + std::to_string(m_line) + " ";
    if (m_points.at(index)) {
      fail(where + "gives the point " + names.at(index) + " a second time");
    }
    m_points.at(index) = point(values);
    if (!m_points.at(index)) {
      fail(where + "needs three numbers after " + names.at(index));
    }
  }

  std::string m_file;
  int m_line = 0;
  std::array<std::optional<host::Vector3>, 3> m_points;
};

}  // namespace

host::Fiducials readFiducials(const std::string& argument) {
  if (const auto given = triples(argument)) {
    return *given;
  }
  FileReader reader(argument);
  std::error_code error;
  if (std::filesystem::is_directory(argument, error)) {
    reader.fail("a folder, not a file");
  }
  std::ifstream file(argument);
  if (!file) {
    reader.fail(std::string("cannot be opened (") + std::strerror(errno) +
                "), and is not three triples nx,ny,nz lx,ly,lz rx,ry,rz either");
  }
  for (std::string line; std::getline(file, line);) {
    reader.take(line);
  }
  return reader.result();
}

}  // namespace tool
