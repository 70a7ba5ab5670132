// The bytes of a file from its first to its last, unpacked on the way when the file is packed with gzip
// (known by its first two bytes, not by its name). One file may hold several gzip members, one after the
// other.
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <span>
#include <string>

namespace host {

class ByteSource {
 public:
  // What a file may hold, unpacked; one that holds more is refused.
  static constexpr std::uint64_t most = std::uint64_t{1} << 32U;

  // Throws std::runtime_error when the path is no regular file that can be read, or one that is not packed
  // and holds more than that.
  explicit ByteSource(const std::filesystem::path& path, std::uint64_t mostBytes = most);
  ~ByteSource();
  ByteSource(const ByteSource&) = delete;
  ByteSource& operator=(const ByteSource&) = delete;

  // Fills the target and returns how many bytes it took; fewer only at the end. Throws std::runtime_error
  // when the file cannot be read, or the packed data are cut off or damaged, or there are more of them than
  // it may hold.
  std::size_t read(std::span<std::byte> target);
  // Reads over bytes; returns how many there were, fewer only at the end.
  std::uint64_t skip(std::uint64_t count);
  // Behind the last byte that matters: the check sum of packed data stands at their end, so this reads on to
  // it, unless more than 16 MiB follow.
  void finish();
  // How many bytes a file that is not packed holds; nothing for a packed one, which may say anything.
  std::optional<std::uint64_t> plainSize() const;

 private:
  struct State;
  std::unique_ptr<State> m_state;
};

// All bytes of a small file, unpacked; at most one byte beyond `most`, which tells that there are too many.
// Throws what bytesOfFile and ByteSource throw.
std::string unpackedBytesOf(const std::filesystem::path& path, std::size_t most);

}  // namespace host
