// All bytes of a file, of a size that memory has room for.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>

namespace host {

// Larger files of dipoles are refused; 30000 dipoles have a fiftieth of it.
inline constexpr std::uintmax_t mostFileBytes = std::uintmax_t{1} << 28U;

// No more than one byte beyond `most`, which tells that there are too many: a device has no size, and may
// have no end. Throws std::runtime_error with the system's reason alone: "No such file or directory".
std::string bytesOfFile(const std::filesystem::path& path, std::uintmax_t most = mostFileBytes);

}  // namespace host
