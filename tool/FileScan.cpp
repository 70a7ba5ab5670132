#include "tool/FileScan.h"

#include <filesystem>
#include <fstream>
#include <string_view>
#include <strings.h>
#include <system_error>

namespace tool {
namespace {

constexpr std::string_view blanks = " \t\r";
constexpr std::string_view patientKeyword = "PATIENT:";
constexpr std::size_t longestLine = 2048;  // longer ones are read in pieces, as the importer does

std::string_view withoutBlanks(std::string_view line) {
  const std::size_t first = line.find_first_not_of(blanks);
  return first == std::string_view::npos ? std::string_view()
                                         : line.substr(first, line.find_last_not_of(blanks) + 1 - first);
}

bool isNumberedRow(std::string_view text) {
  const std::size_t digits = text.find_first_not_of("0123456789");
  if (digits == 0 || digits == std::string_view::npos) {
    return false;
  }
  const std::string_view rest = withoutBlanks(text.substr(digits));
  return !rest.empty() && rest.front() == ':';
}

bool isNamed(const std::string& line, const char* section) {
  return ::strcasecmp(line.c_str(), section) == 0;
}

// Follows the lines of a file from section to section.
class LineTaker {
 public:
  explicit LineTaker(FileScan& scan) : m_scan(scan) {}

  void take(const std::string& line) {
    const std::string_view text = withoutBlanks(line);
    if (text == "}") {
      m_inside = Section::none;
    } else if (isNamed(line, "File_Info")) {
      m_inside = Section::fileInfo;
    } else if (isNamed(line, "Dipoles") || isNamed(line, "Fit_Results")) {
      m_inside = Section::dipoles;
      m_scan.sections.push_back({isNamed(line, "Fit_Results"), 0});
    } else if (m_inside == Section::dipoles && isNumberedRow(text)) {
      ++m_scan.sections.back().rows;
    } else if (m_inside == Section::fileInfo && text.starts_with(patientKeyword)) {
      m_scan.patient = withoutBlanks(text.substr(patientKeyword.size()));
    }
  }

 private:
  enum class Section { none, fileInfo, dipoles };

  FileScan& m_scan;
  Section m_inside = Section::none;
};

}  // namespace

FileScan::FileScan(const std::string& path) {
  std::error_code error;
  if (!std::filesystem::is_regular_file(path, error)) {
    return;
  }
  std::ifstream file(path, std::ios::binary);
  isReadable = file.is_open();
  LineTaker lines(*this);
  std::string line;
  for (char c = 0; file.get(c);) {
    const bool isEnd = c == '\n' || c == '\r';
    if (!isEnd) {
      line += c;
    }
    if (isEnd || line.size() == longestLine) {
      lines.take(line);
      line.clear();
    }
  }
}

int expectedDipoles(const FileScan& file, const std::vector<bool>& answers, std::size_t& next) {
  int expected = 0;
  for (const DipoleSection& section : file.sections) {
    if (!section.isMoving) {
      expected += section.rows;
    } else if (next < answers.size() && answers[next++]) {
      expected = section.rows;
    }
  }
  return expected;
}

}  // namespace tool
