#include "tool/FileScan.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <string_view>
#include <strings.h>
#include <system_error>

namespace tool {
namespace {

constexpr std::string_view blanks = " \t\v\f\r";
constexpr std::string_view patientKeyword = "PATIENT:";
constexpr std::size_t longestLine = 2048;  // longer ones are read in pieces, as the importer does
constexpr std::array sectionNames = {"File_Info",   "Model",        "MEG_Sphere",     "Dipoles",
                                     "Fit_Results", "Dipole_Flags", "Dipole_FitInfo", "Fid_Points"};

std::string_view withoutBlanks(std::string_view line) {
  const std::size_t first = line.find_first_not_of(blanks);
  return first == std::string_view::npos ? std::string_view()
                                         : line.substr(first, line.find_last_not_of(blanks) + 1 - first);
}

bool isNumberedRow(std::string_view text) {
  if (!text.empty() && (text.front() == '+' || text.front() == '-')) {
    text.remove_prefix(1);
  }
  const std::size_t digits = text.find_first_not_of("0123456789");
  if (digits == 0 || digits == std::string_view::npos) {
    return false;
  }
  const std::string_view rest = withoutBlanks(text.substr(digits));
  return !rest.empty() && rest.front() == ':';
}

bool contains(std::string_view line, std::string_view words) {
  return line.find(words) != std::string_view::npos;
}

// Inside a section the importer passes over a line with one of these marks, even with a "}".
bool isPassedOver(std::string_view line) {
  return contains(line, "{") || contains(line, "//");
}

// The name of the section that a line opens, null for any other line.
const char* sectionOf(const std::string& line) {
  const auto* const name = std::find_if(sectionNames.begin(), sectionNames.end(), [&](const char* known) {
    return ::strcasecmp(line.c_str(), known) == 0;
  });
  return name != sectionNames.end() ? *name : nullptr;
}

// Follows the lines of a file from section to section.
class LineTaker {
 public:
  LineTaker(FileScan& scan, const std::vector<MovingAnswer>& answers, std::size_t& next)
      : m_scan(scan), m_answers(answers), m_next(next) {}

  bool isInside() const { return m_isInside; }

  void take(const std::string& line) {
    const std::string_view text = withoutBlanks(line);
    const bool isRow = isNumberedRow(text);
    if (isRow && m_countsRows) {
      ++m_scan.sections.back().rows;
    }
    if (m_isFileInfo && text.starts_with(patientKeyword)) {
      m_scan.patient = withoutBlanks(text.substr(patientKeyword.size()));
    }
    const char* name = sectionOf(line);
    if (name != nullptr && m_isInside) {
      m_scan.swallowed.emplace_back(name);
      m_countsRows = m_isFileInfo = false;
    } else if (name != nullptr) {
      enter(name);
    } else if (m_isInside && contains(line, "}") && !isPassedOver(line)) {
      leave(isRow);
    } else if (!m_isInside && text == "}") {
      m_countsRows = false;
    }
  }

 private:
  void enter(const std::string_view name) {
    m_isInside = true;
    m_isFileInfo = name == "File_Info";
    m_countsRows = name == "Dipoles";
    if (m_countsRows) {
      m_scan.sections.emplace_back();
    } else if (name == "Fit_Results") {
      const MovingAnswer answer = m_next < m_answers.size() ? m_answers[m_next++] : MovingAnswer();
      m_scan.sections.push_back({true, 0, answer});
      m_isInside = m_countsRows = answer.isYes;  // the importer walks on through a declined one
    }
  }

  // A "}" in a dipole's label ends the section for the importer; the rows behind it are lost, so they count.
  void leave(bool byRow) {
    m_isInside = m_isFileInfo = false;
    m_countsRows = m_countsRows && byRow;
  }

  FileScan& m_scan;
  const std::vector<MovingAnswer>& m_answers;
  std::size_t& m_next;
  bool m_isInside = false;  // the importer is in a section
  bool m_isFileInfo = false;
  bool m_countsRows = false;
};

}  // namespace

FileScan::FileScan(const std::string& path, const std::vector<MovingAnswer>& answers, std::size_t& next) {
  std::error_code error;
  if (!std::filesystem::is_regular_file(path, error)) {
    return;
  }
  std::ifstream file(path, std::ios::binary);
  isReadable = file.is_open();
  LineTaker lines(*this, answers, next);
  std::string line;
  for (char c = 0; file.get(c);) {
    const bool isEnd = c == '\n' || c == '\r';
    if (!isEnd) {
      line += c;
    }
    if (isEnd || line.size() == longestLine) {
      line.resize(std::strlen(line.c_str()));  // a zero byte ends the text of a line
      lines.take(line);
      line.clear();
    }
  }
  // The importer drops a last line without an end, which matters only where it is a row.
  if (lines.isInside()) {
    lines.take(line);
  }
  endsInside = lines.isInside();
}

int expectedDipoles(const FileScan& file, int& declined) {
  int expected = 0;
  for (const DipoleSection& section : file.sections) {
    declined += section.answer.declinedBefore;
    if (!section.isMoving) {
      expected += section.rows;
    } else if (section.answer.isYes) {
      // Which file a row was declined in is not known: that of the replaced ones, so that no loss is hidden.
      declined -= (std::min)(declined, expected);
      expected = section.rows;
    }
  }
  return expected;
}

}  // namespace tool
