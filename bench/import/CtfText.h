// CTF dipole files with many rows, and the numbers that an import converts in them.
#pragma once

#include <string>
#include <string_view>
#include <vector>

struct CtfText {
  std::string text;
  std::vector<std::string_view> integers;  // where the converted numbers stand in the text
  std::vector<std::string_view> reals;

  CtfText() = default;
  CtfText(const CtfText&) = delete;  // the views point into the text
  CtfText& operator=(const CtfText&) = delete;
};

// Rows as the fitting program writes them: number, location (cm), orientation, moment (nAm), label.
void makeDipolesFile(int rows, CtfText& file);

// Rows of 27 fields behind the index, of which the import converts the first twelve.
void makeFitResultsFile(int rows, CtfText& file);
