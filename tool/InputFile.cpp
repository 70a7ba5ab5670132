#include "tool/InputFile.h"

#include <algorithm>
#include <filesystem>

namespace tool {

std::string endingOf(const std::string& name) {
  std::string ending = std::filesystem::path(name).extension().string();
  std::transform(ending.begin(), ending.end(), ending.begin(),
                 [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
  return ending;
}

std::optional<InputFormat> inputFormatOf(const std::string& name) {
  const std::string ending = endingOf(name);
  if (ending == ".dip") {
    return InputFormat::ctf;
  }
  if (ending == ".txt") {
    return InputFormat::msi;
  }
  return ending == ".dipset" ? std::optional(InputFormat::dipset) : std::nullopt;
}

const char* patientKeyword(InputFormat format) {
  return format == InputFormat::msi ? "MRI/CT Patient:" : "PATIENT:";
}

const char* versionKeyword(InputFormat format) {
  return format == InputFormat::msi ? "Dipole File:" : "VERSION:";
}

}  // namespace tool
