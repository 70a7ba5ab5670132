// Follows the lines of a CTF file as the import does, and fills a CtfReading.
#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

#include "host/audit/CtfReading.h"

namespace host {

inline bool contains(std::string_view line, std::string_view words) {
  return line.find(words) != std::string_view::npos;
}

class CtfWalk {
 public:
  CtfWalk(CtfReading& reading, const ImportedText& file, const TextEncoding& encoding);

  void take(const TextLine& line);
  void finish();

 private:
  void takeOutside(const TextLine& line);
  void enter(CtfKind kind, const TextLine& line, bool isRead);
  void enterMoving(CtfSection& moving);
  void leave(const TextLine& line);

  void takeDipoleLine(const TextLine& line);
  void takeOtherLine(const TextLine& line);
  void takeUnits(const TextLine& line);
  void takeHeading(const TextLine& line);
  void takeRow(const TextLine& line, const NumberedRow& numbered, const RowFields& fields);
  bool arrives(CtfRow& row, const RowFields& fields, bool hasGap);
  void place(CtfRow& row);
  bool isDeclined(const CtfRow& row);
  void lose(const TextLine& line, RowFate fate);

  void takeBodyLine(const TextLine& line);
  void takeFitHeading(const TextLine& line);
  void takeFollower(const TextLine& line);
  void takeHeader(const TextLine& line);
  void takeSphere(const TextLine& line);
  void takeFiducial(const TextLine& line, CtfPoints& points);
  void report(CtfProblemKind kind, const TextLine& line, std::string_view text);

  CtfSection& section() { return m_reading.sections.back(); }
  int sectionIndex() const { return static_cast<int>(m_reading.sections.size()) - 1; }
  bool isOfDipoles() const;

  CtfReading& m_reading;
  const ImportedText& m_file;
  const TextEncoding& m_encoding;
  std::size_t m_nextMoving = 0;
  std::size_t m_nextFar = 0;
  std::string_view m_lastOutside;  // the comment right before a section
  bool m_isFirstLine = true;
  bool m_isInside = false;   // as the module sees it, or of a section that only this reading sees
  bool m_isStopped = false;  // the module reads no further
  bool m_loses = false;      // rows that come now are behind the end of their section
  RowFate m_lossFate = RowFate::behindEnd;
  bool m_isForeign = false;     // the beginning of another section was swallowed
  bool m_isCentimetre = false;  // as the module has seen until now in this section
  bool m_isSecond = false;
};

}  // namespace host
