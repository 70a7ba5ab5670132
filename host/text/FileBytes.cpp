#include "host/text/FileBytes.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <fstream>
#include <stdexcept>
#include <system_error>

namespace host {

namespace {

[[noreturn]] void throwReason() {
  throw std::runtime_error(errno == 0 ? "it cannot be read" : std::generic_category().message(errno));
}

}  // namespace

std::string bytesOfFile(const std::filesystem::path& path, std::uintmax_t most) {
  errno = 0;
  std::ifstream file(path, std::ios::binary);
  if (!file) {
    throwReason();
  }
  std::string bytes;
  std::array<char, 65536> piece{};
  while (file && bytes.size() <= most) {
    const std::uintmax_t wanted = (std::min)(std::uintmax_t{piece.size()}, most + 1 - bytes.size());
    file.read(piece.data(), static_cast<std::streamsize>(wanted));
    bytes.append(piece.data(), static_cast<std::size_t>(file.gcount()));
  }
  if (file.bad()) {
    throwReason();
  }
  return bytes;
}

}  // namespace host
