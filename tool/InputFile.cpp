#include "tool/InputFile.h"

#include <algorithm>
#include <filesystem>
#include <iterator>
#include <string_view>
#include <utility>

namespace tool {

std::string endingOf(const std::string& name) {
  std::string ending = std::filesystem::path(name).extension().string();
  std::transform(ending.begin(), ending.end(), ending.begin(),
                 [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
  return ending;
}

std::optional<InputFormat> inputFormatOf(const std::string& name) {
  const std::string ending = endingOf(name);
  constexpr std::pair<std::string_view, InputFormat> formats[] = {
      {".dip", InputFormat::ctf}, {".txt", InputFormat::msi}, {".dipset", InputFormat::dipset},
      {".csv", InputFormat::csv}, {".tsv", InputFormat::tsv}, {".json", InputFormat::json}};
  const auto* const found = std::find_if(std::begin(formats), std::end(formats),
                                         [&](const auto& one) { return one.first == ending; });
  return found != std::end(formats) ? std::optional(found->second) : std::nullopt;
}

const char* patientKeyword(InputFormat format) {
  return format == InputFormat::msi ? "MRI/CT Patient:" : "PATIENT:";
}

const char* versionKeyword(InputFormat format) {
  return format == InputFormat::msi ? "Dipole File:" : "VERSION:";
}

}  // namespace tool
