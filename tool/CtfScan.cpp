#include "tool/CtfScan.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <strings.h>

#include "host/text/Blanks.h"
#include "tool/RawLines.h"

namespace tool {
namespace {

constexpr std::array sectionNames = {"File_Info",   "Model",        "MEG_Sphere",     "Dipoles",
                                     "Fit_Results", "Dipole_Flags", "Dipole_FitInfo", "Fid_Points"};

bool isNumberedRow(std::string_view text) {
  if (!text.empty() && (text.front() == '+' || text.front() == '-')) {
    text.remove_prefix(1);
  }
  const std::size_t digits = text.find_first_not_of("0123456789");
  if (digits == 0 || digits == std::string_view::npos) {
    return false;
  }
  const std::string_view rest = host::withoutBlanks(text.substr(digits));
  return !rest.empty() && rest.front() == ':';
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
  LineTaker(CtfScan& scan, const std::vector<MovingAnswer>& answers) : m_scan(scan), m_answers(answers) {}

  bool isInside() const { return m_isInside; }

  void take(const std::string& line) {
    const std::string_view text = host::withoutBlanks(line);
    const bool isRow = isNumberedRow(text);
    if (isRow && m_countsRows) {
      ++m_scan.sections.back().rows;
    }
    const char* name = sectionOf(line);
    if (name != nullptr && m_isInside) {
      m_scan.swallowed.emplace_back(name);
      m_countsRows = false;
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
    m_isInside = false;
    m_countsRows = m_countsRows && byRow;
  }

  CtfScan& m_scan;
  const std::vector<MovingAnswer>& m_answers;
  std::size_t m_next = 0;
  bool m_isInside = false;  // the importer is in a section
  bool m_countsRows = false;
};

}  // namespace

CtfScan::CtfScan(const std::string& path, const std::vector<MovingAnswer>& answers) {
  LineTaker lines(*this, answers);
  const auto rest = takeLines(path, [&](const std::string& line) { lines.take(line); });
  isReadable = rest.has_value();
  // The importer drops a last line without an end, which matters only where it is a row.
  if (lines.isInside()) {
    lines.take(*rest);
  }
  endsInside = lines.isInside();
}

int expectedDipoles(const CtfScan& file, int declinedAfter) {
  int expected = 0;
  int declined = 0;
  for (const DipoleSection& section : file.sections) {
    declined += section.answer.declinedBefore;
    if (!section.isMoving) {
      expected += section.rows;
    } else if (section.answer.isYes) {
      declined = 0;
      expected = section.rows;
    }
  }
  return expected - declined - declinedAfter;
}

}  // namespace tool
