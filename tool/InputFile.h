// A dipole file that a user named, and the format it is read as.
#pragma once

#include <optional>
#include <string>

namespace tool {

enum class InputFormat { ctf, msi, dipset, csv, tsv, json };

struct InputFile {
  std::string name;  // as the user wrote it
  InputFormat format = InputFormat::ctf;
};

// The ending of a name's last part from its last point on (".dip"), ASCII letters in lower case; empty
// without one.
std::string endingOf(const std::string& name);

// By the ending, whatever its case: .dip, .txt, .dipset, .csv, .tsv, .json.
std::optional<InputFormat> inputFormatOf(const std::string& name);

// The words that stand in front of the values that the module keeps from a header of this format; it may
// leave their ends there (see headerText in host/dipoles/HeaderText.h).
const char* patientKeyword(InputFormat format);
const char* versionKeyword(InputFormat format);

}  // namespace tool
