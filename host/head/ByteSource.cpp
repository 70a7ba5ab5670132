#include "host/head/ByteSource.h"

#include <algorithm>
#include <cerrno>
#include <stdexcept>
#include <system_error>
#include <vector>
#include <zlib.h>

#include "host/text/FileBytes.h"

namespace host {

namespace {

struct Closer {
  void operator()(gzFile file) const { ::gzclose_r(file); }
};
using File = std::unique_ptr<gzFile_s, Closer>;

// One of these two is the system's way.
[[maybe_unused]] gzFile opened(const char* path) {
  return ::gzopen(path, "rb");
}

#ifdef _WIN32
gzFile opened(const wchar_t* path) {
  return ::gzopen_w(path, "rb");
}
#endif

File open(const std::filesystem::path& path) {
  std::error_code error;
  const auto status = std::filesystem::status(path, error);
  if (!std::filesystem::exists(status)) {
    throw std::runtime_error(error.message());  // as the system tells it
  }
  if (std::filesystem::is_directory(status)) {
    throw std::runtime_error("this is a folder, not a file");
  }
  if (!std::filesystem::is_regular_file(status)) {
    throw std::runtime_error("this is not a regular file");
  }
  File file(opened(path.c_str()));
  if (!file) {
    throw std::runtime_error(std::generic_category().message(errno));
  }
  constexpr unsigned bufferSize = 131072;
  ::gzbuffer(file.get(), bufferSize);
  return file;
}

}  // namespace

struct ByteSource::State {
  File file;
  std::optional<std::uint64_t> plainSize;
  std::uint64_t most;       // bytes
  std::uint64_t given = 0;  // bytes

  State(const std::filesystem::path& path, std::uint64_t mostBytes) : file(open(path)), most(mostBytes) {
    if (::gzdirect(file.get()) != 0) {
      std::error_code error;
      plainSize = std::filesystem::file_size(path, error);
      if (error) {
        throw std::runtime_error("the file cannot be read");
      }
    }
    if (plainSize.value_or(0) > most) {
      throwTooLarge();
    }
  }

  [[noreturn]] void throwTooLarge() const {
    throw std::runtime_error("the file holds more than " + std::to_string(most >> 20U) + " MiB");
  }

  std::size_t read(std::span<std::byte> target) {
    std::size_t filled = 0;
    while (filled < target.size()) {
      constexpr std::size_t largest = std::size_t{1} << 30U;
      const std::size_t piece = (std::min)(target.size() - filled, largest);
      const int count = ::gzread(file.get(), target.data() + filled, static_cast<unsigned>(piece));
      filled += static_cast<std::size_t>((std::max)(count, 0));
      if (count != static_cast<int>(piece)) {
        checkEnd();
        break;
      }
    }
    given += filled;
    if (given > most) {
      throwTooLarge();
    }
    return filled;
  }

  // Behind a read that gave less than was asked for.
  void checkEnd() const {
    int code = Z_OK;
    (void)::gzerror(file.get(), &code);
    if (code == Z_BUF_ERROR) {
      throw std::runtime_error("the packed data are cut off");
    }
    if (code == Z_DATA_ERROR) {
      throw std::runtime_error("the packed data are damaged");
    }
    if (code != Z_OK && code != Z_STREAM_END) {
      throw std::runtime_error("the file cannot be read");
    }
  }
};

ByteSource::ByteSource(const std::filesystem::path& path, std::uint64_t mostBytes)
    : m_state(std::make_unique<State>(path, mostBytes)) {}
ByteSource::~ByteSource() = default;

std::size_t ByteSource::read(std::span<std::byte> target) {
  return m_state->read(target);
}

std::uint64_t ByteSource::skip(std::uint64_t count) {
  constexpr std::size_t blockSize = 65536;
  std::vector<std::byte> sink(blockSize);
  std::uint64_t done = 0;
  while (done < count) {
    const auto piece = static_cast<std::size_t>((std::min<std::uint64_t>)(count - done, blockSize));
    const std::size_t got = read(std::span(sink).first(piece));
    done += got;
    if (got < piece) {
      break;
    }
  }
  return done;
}

void ByteSource::finish() {
  constexpr std::uint64_t longestTail = std::uint64_t{1} << 24U;
  if (!plainSize()) {
    skip(longestTail);
  }
}

std::optional<std::uint64_t> ByteSource::plainSize() const {
  return m_state->plainSize;
}

std::string unpackedBytesOf(const std::filesystem::path& path, std::size_t most) {
  std::string bytes = bytesOfFile(path, most);
  if (!bytes.starts_with("\x1F\x8B")) {
    return bytes;
  }
  ByteSource source(path);
  bytes.resize(most + 1);
  bytes.resize(source.read(std::as_writable_bytes(std::span(bytes))));
  return bytes;
}

}  // namespace host
