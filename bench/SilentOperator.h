// A user who agrees to everything, and the file of a benchmark.
#pragma once

#include <afxwin.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <utility>
#include <vector>

#include "platform/Operator.h"
#include "platform/Utf.h"

// Chooses the benchmark's file, says yes to every question and drops every message.
class SilentOperator : public Operator {
 public:
  explicit SilentOperator(CString path) : m_path(std::move(path)), m_previous(installOperator(this)) {}
  SilentOperator(const SilentOperator&) = delete;
  SilentOperator& operator=(const SilentOperator&) = delete;
  ~SilentOperator() override { installOperator(m_previous); }

  int answerMessage(LPCTSTR /*text*/, UINT type) override { return (type & MB_YESNO) != 0 ? IDYES : IDOK; }
  bool chooseFiles(const FileQuestion& /*question*/, std::vector<CString>& paths) override {
    paths = {m_path};
    return true;
  }
  bool chooseColor(COLORREF /*initial*/, COLORREF& /*chosen*/) override { return false; }

 private:
  CString m_path;
  Operator* m_previous;
};

// A file of the benchmark's own.
class TemporaryFile {
 public:
  TemporaryFile(const char* name, const std::string& text)
      : m_path(std::filesystem::temp_directory_path() / name) {
    std::ofstream(m_path, std::ios::binary) << text;
  }
  TemporaryFile(const TemporaryFile&) = delete;
  TemporaryFile& operator=(const TemporaryFile&) = delete;
  ~TemporaryFile() { std::filesystem::remove(m_path); }

  CString path() const { return fromUtf8(m_path.string()); }

 private:
  std::filesystem::path m_path;
};
