// A plain model of the 4D/MSI reader: what a file's bytes say, line by line, with the C library's scanning.
//
// It follows the description of the format and shares nothing with the reader. Works in the "C" locale only.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <string>
#include <vector>

#include "fuzz/FuzzUser.h"
#include "fuzz/import/LineModel.h"
#include "tests/import/ScanfOracle.h"

struct MsiModelDipole {
  float columns[12] = {};
  std::string label = "Non";
};

class MsiModel {
 public:
  // Reads a file into a collection that has room for `room` dipoles, with the user's answers.
  MsiModel(const std::uint8_t* data, std::size_t size, int room, unsigned answers)
      : m_data(data), m_size(size) {
    std::string line;
    while (next(line)) {
      if (isBlank(line) || isLegend(line)) {
        continue;
      }
      if (holds(line, "Disk Media:")) {
        if (!readInfo()) {
          return;
        }
      } else if (holds(line, "Latency")) {
        hasTable = true;
        readTable(room, answers);
        return;
      }
    }
  }

  std::vector<MsiModelDipole> dipoles;
  std::vector<std::string> questions;
  bool hasTable = false;
  bool isCut = false;           // the table was longer than the room
  std::string patient = "non";  // bytes, as fileVersion
  std::string fileVersion = "non";

 private:
  // The text of a line ends at its first zero.
  bool next(std::string& line) {
    const bool isLine = modelLine(m_data, m_size, m_at, line);
    line.resize(std::min(line.size(), line.find('\0')));
    return isLine;
  }

  static bool holds(const std::string& line, const char* words) {
    return line.find(words) != std::string::npos;
  }
  static bool isBlank(const std::string& line) { return line.empty() || line == " "; }
  static bool isLegend(const std::string& line) {
    const char* legend[] = {"Code", "Circle", "Square", "Triangle", "Dot", "Shape"};
    return std::any_of(std::begin(legend), std::end(legend),
                       [&](const char* word) { return holds(line, word); });
  }

  static bool take(std::string& line, const std::string& key, std::string& value) {
    if (!holds(line, key.c_str())) {
      return false;
    }
    line.erase(0, key.size());
    value = line;
    return true;
  }

  bool readInfo() {
    std::string line;
    while (next(line)) {
      if (holds(line, "Date of File:")) {
        return true;
      }
      const bool isPatient = take(line, "MRI/CT Patient:", patient);
      if (!take(line, "Dipole File:", fileVersion) && !isPatient) {
        return true;
      }
    }
    return false;
  }

  // Sixteen values, the label the last, of which the three texts in between are not counted.
  static bool scan(const std::string& line, MsiModelDipole& dipole) {
    static char word[2049];
    int unused[2];
    int starts[12];
    int* at = starts;
    float* c = dipole.columns;
    const int fields =
        std::sscanf(line.c_str(),
                    "%n%f %n%f %n%f %n%f %n%f %n%f %n%f %n%f %n%f %n%f %n%f %n%f %d %*s %*s %*s %d %s",  //
                    at, c, at + 1, c + 1, at + 2, c + 2, at + 3, c + 3, at + 4, c + 4, at + 5, c + 5, at + 6,
                    c + 6, at + 7, c + 7, at + 8, c + 8, at + 9, c + 9, at + 10, c + 10, at + 11, c + 11,
                    unused, unused + 1, word);
    if (fields < 14) {
      return false;
    }
    if (fields == 15) {
      dipole.label = word;
    }
    const bool hasHex = line.find_first_of("xX") != std::string::npos;
    for (int column = 0; hasHex && column < 12; ++column) {
      if (std::fabs(c[column]) < 0x1p-126F) {
        mendDeepHex(std::wstring(line.begin() + starts[column], line.end()).c_str(), c[column]);
      }
    }
    return true;
  }

  void readTable(int room, unsigned answers) {
    std::string line;
    while (next(line)) {
      MsiModelDipole dipole;
      if (isBlank(line) || !scan(line, dipole)) {
        continue;
      }
      if (room == 0) {
        isCut = true;
        return;
      }
      if (dipole.columns[1] > 300.0F || dipole.columns[2] > 300.0F || dipole.columns[3] > 300.0F) {
        char text[300];
        std::snprintf(text, sizeof text, "(%.3f x %.3f x %.3f)", static_cast<double>(dipole.columns[1]),
                      static_cast<double>(dipole.columns[2]), static_cast<double>(dipole.columns[3]));
        questions.push_back(std::string("It seems the dipole location is wrong ") + text +
                            ", do you like to import?");
        if (!FuzzUser::isYes(answers, questions.size() - 1)) {
          continue;
        }
      }
      dipoles.push_back(dipole);
      --room;
    }
  }

  const std::uint8_t* m_data;
  std::size_t m_size;
  std::size_t m_at = 0;
};
