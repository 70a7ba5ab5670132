#include "host/exchange/FileKind.h"

#include <array>
#include <utility>

#include "host/text/PathText.h"

namespace host {

FileKind kindOf(const CString& path) {
  if (hasEnding(path, ".nii") || hasEnding(path, ".nii.gz")) {
    return FileKind::mri;
  }
  return hasEnding(path, ".dipset") ? FileKind::set : FileKind::dipoles;
}

std::optional<DipoleFormat> dipoleFormatOf(const CString& path) {
  constexpr std::array<std::pair<const char*, DipoleFormat>, 6> endings{{{".dip", DipoleFormat::ctf},
                                                                         {".txt", DipoleFormat::msi},
                                                                         {".dipset", DipoleFormat::set},
                                                                         {".csv", DipoleFormat::csv},
                                                                         {".tsv", DipoleFormat::tsv},
                                                                         {".json", DipoleFormat::json}}};
  for (const auto& [ending, format] : endings) {
    if (hasEnding(path, ending)) {
      return format;
    }
  }
  return std::nullopt;
}

}  // namespace host
