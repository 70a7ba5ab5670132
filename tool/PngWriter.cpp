#include "tool/PngWriter.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <png.h>
#include <stdexcept>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>
#include <vector>

namespace tool {
namespace {

[[noreturn]] void fail(const std::string& target, const std::string& cause) {
  throw std::runtime_error("cannot write the picture " + target + ": " + cause);
}

std::string systemCause() {
  return std::strerror(errno);
}

// The permissions that a program gives a file it creates.
mode_t usualPermissions() {
  const mode_t mask = ::umask(0);
  ::umask(mask);
  return 0666 & ~mask;
}

// A file of its own name beside the target, removed unless it takes the target's place.
class FileBeside {
 public:
  explicit FileBeside(std::string target) : m_target(std::move(target)), m_path(m_target + ".XXXXXX") {
    m_descriptor = ::mkstemp(m_path.data());
    if (m_descriptor < 0) {
      fail(m_target, systemCause());
    }
  }
  ~FileBeside() {
    close();
    if (!m_isKept) {
      ::unlink(m_path.c_str());
    }
  }
  FileBeside(const FileBeside&) = delete;
  FileBeside& operator=(const FileBeside&) = delete;

  void write(const std::vector<unsigned char>& bytes) const {
    for (std::size_t done = 0; done < bytes.size();) {
      const ssize_t count = ::write(m_descriptor, bytes.data() + done, bytes.size() - done);
      if (count < 0 && errno != EINTR) {
        fail(m_target, systemCause());
      }
      done += count > 0 ? static_cast<std::size_t>(count) : 0;
    }
  }

  void takePlace() {
    if (::fchmod(m_descriptor, usualPermissions()) != 0 || ::fsync(m_descriptor) != 0 ||
        std::rename(m_path.c_str(), m_target.c_str()) != 0) {
      fail(m_target, systemCause());
    }
    m_isKept = true;
  }

 private:
  void close() { ::close(m_descriptor); }

  std::string m_target;
  std::string m_path;
  int m_descriptor = -1;
  bool m_isKept = false;
};

std::vector<unsigned char> pngBytes(const host::Image& image, const std::string& target) {
  static_assert(sizeof(host::Rgb) == 3, "the pixels are handed over as they lie in memory");
  png_image header{};
  header.version = PNG_IMAGE_VERSION;
  header.width = static_cast<png_uint_32>(image.width());
  header.height = static_cast<png_uint_32>(image.height());
  header.format = PNG_FORMAT_RGB;
  png_alloc_size_t size = 0;
  const void* pixels = image.pixels().data();
  if (png_image_write_to_memory(&header, nullptr, &size, 0, pixels, 0, nullptr) == 0) {
    fail(target, header.message);
  }
  std::vector<unsigned char> bytes(size);
  if (png_image_write_to_memory(&header, bytes.data(), &size, 0, pixels, 0, nullptr) == 0) {
    fail(target, header.message);
  }
  bytes.resize(size);
  return bytes;
}

}  // namespace

void writePng(const host::Image& image, const std::string& target) {
  const std::vector<unsigned char> bytes = pngBytes(image, target);
  FileBeside file(target);
  file.write(bytes);
  file.takePlace();
}

}  // namespace tool
