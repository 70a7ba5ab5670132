#include "host/head/ByteSource.h"

#include <algorithm>
#include <array>
#include <fstream>
#include <stdexcept>
#include <system_error>
#include <vector>
#include <zlib.h>

namespace host {

namespace {

constexpr std::size_t blockSize = 65536;

// Owns zlib's own memory.
class Inflater {
 public:
  Inflater() {
    constexpr int gzipOnly = 16 + MAX_WBITS;
    if (inflateInit2(&m_stream, gzipOnly) != Z_OK)
      throw std::runtime_error("the unpacker could not be started");
  }
  ~Inflater() { inflateEnd(&m_stream); }
  Inflater(const Inflater&) = delete;
  Inflater& operator=(const Inflater&) = delete;

  [[nodiscard]] z_stream& stream() { return m_stream; }

 private:
  z_stream m_stream{};
};

std::uint64_t sizeOf(std::ifstream& file) {
  file.seekg(0, std::ios::end);
  const std::streamoff end = file.tellg();
  file.seekg(0, std::ios::beg);
  if (!file || end < 0)
    throw std::runtime_error("the file cannot be read");
  return static_cast<std::uint64_t>(end);
}

std::ifstream open(const std::filesystem::path& path) {
  std::error_code error;
  const auto status = std::filesystem::status(path, error);
  if (status.type() == std::filesystem::file_type::not_found)
    throw std::runtime_error("there is no such file");
  if (std::filesystem::is_directory(status))
    throw std::runtime_error("this is a folder, not a file");
  std::ifstream file(path, std::ios::binary);
  if (!file)
    throw std::runtime_error("the file cannot be opened");
  return file;
}

}  // namespace

struct ByteSource::State {
  std::ifstream file;
  std::uint64_t size = 0;
  std::vector<std::byte> block = std::vector<std::byte>(blockSize);
  std::unique_ptr<Inflater> inflater;
  bool memberOpen = false;

  explicit State(const std::filesystem::path& path) : file(open(path)), size(sizeOf(file)) {
    std::array<std::byte, 2> magic{};
    readFile(magic);
    file.clear();
    file.seekg(0, std::ios::beg);
    if (magic == std::array{std::byte{0x1F}, std::byte{0x8B}}) {
      inflater = std::make_unique<Inflater>();
      memberOpen = true;
    }
  }

  std::size_t readFile(std::span<std::byte> target) {
    file.read(reinterpret_cast<char*>(target.data()), static_cast<std::streamsize>(target.size()));
    if (file.bad())
      throw std::runtime_error("the file cannot be read");
    return static_cast<std::size_t>(file.gcount());
  }

  // Gives the unpacker more to work on; false at the end of the file.
  bool refill() {
    z_stream& stream = inflater->stream();
    if (stream.avail_in > 0)
      return true;
    const std::size_t count = readFile(block);
    stream.next_in = reinterpret_cast<Bytef*>(block.data());
    stream.avail_in = static_cast<uInt>(count);
    return count > 0;
  }

  // Unpacks into the target as far as one member goes; false at the end of the last member.
  bool unpackSome() {
    z_stream& stream = inflater->stream();
    if (!refill()) {
      if (memberOpen)
        throw std::runtime_error("the packed data are cut off");
      return false;
    }
    if (!memberOpen) {
      // Some writers fill up the file with zeros behind the last member.
      if (*stream.next_in != 0x1F)
        return false;
      inflateReset(&stream);
      memberOpen = true;
    }
    const int result = inflate(&stream, Z_NO_FLUSH);
    if (result == Z_STREAM_END)
      memberOpen = false;
    else if (result != Z_OK && result != Z_BUF_ERROR)
      throw std::runtime_error("the packed data are damaged");
    return true;
  }

  std::size_t readPacked(std::span<std::byte> target) {
    z_stream& stream = inflater->stream();
    std::size_t filled = 0;
    bool more = true;
    while (more && filled < target.size()) {
      const std::size_t piece = (std::min)(target.size() - filled, blockSize);
      stream.next_out = reinterpret_cast<Bytef*>(target.data() + filled);
      stream.avail_out = static_cast<uInt>(piece);
      more = unpackSome();
      filled += piece - stream.avail_out;
    }
    return filled;
  }
};

ByteSource::ByteSource(const std::filesystem::path& path) : m_state(std::make_unique<State>(path)) {}
ByteSource::~ByteSource() = default;

std::size_t ByteSource::read(std::span<std::byte> target) {
  return m_state->inflater ? m_state->readPacked(target) : m_state->readFile(target);
}

std::uint64_t ByteSource::skip(std::uint64_t count) {
  std::vector<std::byte> sink(blockSize);
  std::uint64_t done = 0;
  while (done < count) {
    const auto piece = static_cast<std::size_t>((std::min<std::uint64_t>)(count - done, blockSize));
    const std::size_t got = read(std::span(sink).first(piece));
    done += got;
    if (got < piece)
      break;
  }
  return done;
}

std::optional<std::uint64_t> ByteSource::plainSize() const {
  if (m_state->inflater)
    return std::nullopt;
  return m_state->size;
}

}  // namespace host
