#include "tool/InputFile.h"

#include <filesystem>
#include <fstream>
#include <iostream>
#include <stdexcept>
#include <system_error>
#include <vector>

#include "host/text/FileBytes.h"
#include "tool/FileNames.h"

namespace tool {
namespace {

constexpr const char* copyName = "input";

void copyAll(std::istream& from, std::ostream& to, const std::string& name) {
  std::vector<char> block(65536);
  std::uintmax_t count = 0;
  while (from) {
    from.read(block.data(), static_cast<std::streamsize>(block.size()));
    to.write(block.data(), from.gcount());
    count += static_cast<std::uintmax_t>(from.gcount());
    if (count > host::mostFileBytes) {
      throw std::runtime_error(name + ": there are more than 256 MiB of it");
    }
  }
  if (from.bad() || !to.flush()) {
    throw std::runtime_error(name + ": it could not be read");
  }
}

}  // namespace

std::filesystem::path InputFile::path() const {
  return copy ? copy->path() / copyName : pathOf(name);
}

void copyStream(InputFile& file) {
  std::error_code error;
  const std::filesystem::file_status status = std::filesystem::status(pathOf(file.name), error);
  const bool isInPlace = !std::filesystem::exists(status) || is_regular_file(status) || is_directory(status);
  if (file.name != "-" && isInPlace) {
    return;
  }
  const auto folder = std::make_shared<const host::TemporaryFolder>();
  std::ofstream copy(folder->path() / copyName, std::ios::binary);
  if (file.name == "-") {
    copyAll(std::cin, copy, "standard input");
  } else {
    std::ifstream stream(pathOf(file.name), std::ios::binary);
    copyAll(stream, copy, file.name);
  }
  file.copy = folder;
}

}  // namespace tool
