// One file in memory that keeps its path and changes its bytes, for readers that take a path.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <sys/mman.h>
#include <unistd.h>

class FuzzFile {
 public:
  explicit FuzzFile(const char* name) : m_file(memfd_create(name, 0)) {
    if (m_file < 0) {
      std::abort();
    }
  }
  ~FuzzFile() { close(m_file); }
  FuzzFile(const FuzzFile&) = delete;
  FuzzFile& operator=(const FuzzFile&) = delete;

  std::string path() const { return "/proc/self/fd/" + std::to_string(m_file); }

  void write(const std::uint8_t* bytes, std::size_t count) const {
    if (ftruncate(m_file, static_cast<off_t>(count)) != 0 ||
        pwrite(m_file, bytes, count, 0) != static_cast<ssize_t>(count)) {
      std::abort();
    }
  }

 private:
  int m_file;
};
