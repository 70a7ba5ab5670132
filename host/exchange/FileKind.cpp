#include "host/exchange/FileKind.h"

#include <array>
#include <filesystem>
#include <system_error>
#include <utility>

#include "host/exchange/DipContent.h"
#include "host/head/HeadFile.h"
#include "host/head/HeadReader.h"
#include "host/text/PathText.h"

namespace host {

FileKind kindOf(const CString& path) {
  std::error_code error;
  if (isNamedAsHead(path) || std::filesystem::is_directory(pathOf(path), error)) {  // of DICOM files
    return FileKind::mri;
  }
  if (hasEnding(path, ".dipset")) {
    return FileKind::set;
  }
  return !dipoleFormatOf(path) && isHead(pathOf(path)) ? FileKind::mri : FileKind::dipoles;
}

std::optional<DipoleFormat> dipoleFormatOf(const CString& path) {
  constexpr std::array<std::pair<const char*, DipoleFormat>, 7> endings{{{".dip", DipoleFormat::ctf},
                                                                         {".bdip", DipoleFormat::bdip},
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

std::optional<DipoleFormat> dipoleFormatOfFile(const CString& path) {
  const std::optional<DipoleFormat> byEnding = dipoleFormatOf(path);
  return byEnding == DipoleFormat::ctf && isNeuromag(dipContentOfFile(path)) ? DipoleFormat::neuromag
                                                                             : byEnding;
}

}  // namespace host
