// The addresses that operator delete is given while the object lives: proves when an object is released, and
// that it is released once. For one thread; the last one made does the logging.
#pragma once

#include <array>
#include <cstddef>

class FreeLog {
 public:
  FreeLog();
  ~FreeLog();
  FreeLog(const FreeLog&) = delete;
  FreeLog& operator=(const FreeLog&) = delete;

  int timesFreed(const void* address) const;
  bool overflowed() const { return m_overflowed; }  // addresses were dropped: believe nothing
  void clear();

  void add(const void* address);  // for operator delete

 private:
  std::array<const void*, 4096> m_addresses;
  std::size_t m_count = 0;
  bool m_overflowed = false;
  FreeLog* m_previous;
};
