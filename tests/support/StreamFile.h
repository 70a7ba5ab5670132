// A file that is read once from front to back, as a pipe is: it has no length, no position, and cannot seek.
#pragma once

#include <afx.h>

#include <algorithm>
#include <cstring>
#include <string>
#include <utility>

class StreamFile : public CFile {
 public:
  explicit StreamFile(std::string bytes) : m_bytes(std::move(bytes)) {}

  UINT Read(void* buffer, UINT count) override {
    const auto part = (std::min)(static_cast<std::size_t>(count), m_bytes.size() - m_next);
    std::memcpy(buffer, m_bytes.data() + m_next, part);
    m_next += part;
    return static_cast<UINT>(part);
  }

  ULONGLONG Seek(LONGLONG /*offset*/, UINT /*from*/) override { refuse(); }
  ULONGLONG GetPosition() const override { refuse(); }
  ULONGLONG GetLength() const override { refuse(); }

 private:
  [[noreturn]] static void refuse() { AfxThrowFileException(CFileException::badSeek); }

  std::string m_bytes;
  std::size_t m_next = 0;
};
