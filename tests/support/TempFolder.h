// A folder of its own for one test, removed with all it holds.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "platform/portable/String.h"

class TempFolder {
 public:
  TempFolder();
  ~TempFolder();
  TempFolder(const TempFolder&) = delete;
  TempFolder& operator=(const TempFolder&) = delete;

  // The folder itself, absolute, without a separator at its end.
  CString path() const;
  std::string pathUtf8() const { return m_path; }

  // A file or folder in it, which need not exist. Names are UTF-8.
  CString path(std::string_view name) const;
  std::string pathUtf8(std::string_view name) const;

  // Makes a file of exactly these bytes; returns its path. Replaces what is there.
  CString write(std::string_view name, std::string_view bytes) const;
  CString write(std::string_view name, std::span<const unsigned char> bytes) const;
  // Makes a folder in it; returns its path.
  CString makeFolder(std::string_view name) const;

  bool has(std::string_view name) const;
  // The bytes of a file; fails the test and gives none when it cannot be read.
  std::string read(std::string_view name) const;
  // The names of all that it holds, in order.
  std::vector<std::string> names() const;

 private:
  std::string m_path;
};
