// Files of dipoles as Neuromag's programs (Xfit) and MNE write them as text (.dip): lines that begin with #
// or % tell the coordinate system, the columns and a name, all others are rows of numbers.
//
// Read tolerantly: byte order mark, any line ends, blank lines, comments anywhere and indented, columns in
// any order and by either of their names, small or large letters, with any blanks between them, and no
// heading at all when the rows have ten numbers. Written as MNE writes them, byte for byte.
#pragma once

#include <cstddef>
#include <limits>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "host/head/Vector3.h"

namespace host {

// A dipole as Neuromag's files have it: ms, mm in the Neuromag head frame (host/head/NeuromagFrame.h), nAm,
// percent. What a file does not give is no number.
struct NeuromagDipole {
  static constexpr double none = std::numeric_limits<double>::quiet_NaN();

  double begin = none;
  double end = none;
  Vector3 place;
  double amplitude = none;
  Vector3 moment = {none, none, none};
  double goodness = none;  // goodness of fit, not the fit error
  int index = 0;           // of .bdip alone: which one of a set of several dipoles at a time
};

struct NeuromagDipoles {
  std::vector<NeuromagDipole> dipoles;
  std::string name;        // of all of them, without the word "dipoles" behind it; bytes of the file
  bool isBinary = false;   // .bdip: there an end of 0 is none
  bool hasHeading = true;  // columns are named
  bool hasSystem = true;   // the coordinate system is named
  // Columns that a dipole here has no room for, and in how many rows they say something.
  std::vector<std::pair<std::string, int>> leftOut;
};

// Throws TableFault (host/exchange/DelimitedText.h) with the line, and the column counted in cells: a row
// that has other cells than the heading, a cell that is no number, no heading and rows that do not have ten,
// a coordinate system other than "Head", no dipoles at all.
NeuromagDipoles readNeuromagText(std::string_view text);

// What is not known stands there as nan. An empty name has no line.
std::string neuromagText(const NeuromagDipoles& dipoles);

// The lines of a text without blanks around them, one after the other; a byte order mark is no part of it.
class TextRows {
 public:
  explicit TextRows(std::string_view text);
  bool next(std::string_view& line);
  std::size_t number() const { return m_number; }  // of the last one, from 1

 private:
  std::string_view m_rest;
  char m_end = '\n';  // of a line; a carriage return where a text has nothing else
  std::size_t m_number = 0;
};

// What a line without blanks around it is.
bool isNeuromagSystem(std::string_view line);   // # CoordinateSystem "..."
bool isNeuromagHeading(std::string_view line);  // names the columns
bool isNeuromagRow(std::string_view line);      // ten plain numbers or more

}  // namespace host
