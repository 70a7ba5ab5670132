// CTF and 4D/MSI dipole files with many rows, and the numbers that an import converts in them.
#pragma once

#include <string>
#include <string_view>
#include <vector>

struct DipoleText {
  std::string text;
  std::vector<std::string_view> integers;  // where the converted numbers stand in the text
  std::vector<std::string_view> reals;

  DipoleText() = default;
  DipoleText(const DipoleText&) = delete;  // the views point into the text
  DipoleText& operator=(const DipoleText&) = delete;
};

// Rows as the fitting program writes them: number, location (cm), orientation, moment (nAm), label.
void makeDipolesFile(int rows, DipoleText& file);

// Rows of 27 fields behind the index, of which the import converts the first twelve.
void makeFitResultsFile(int rows, DipoleText& file);

// A 4D/MSI table: latency (ms), location (cm), orientation, moment (nAm), nine columns about the fit, label.
void makeMsiFile(int rows, DipoleText& file);
