#include "tests/support/TempFolder.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <random>
#include <sstream>

#include "platform/Utf.h"

namespace {

namespace fs = std::filesystem;

fs::path toPath(const std::string& utf8) {
  return fs::path(std::u8string(utf8.begin(), utf8.end()));
}

std::string toText(const fs::path& path) {
  const std::u8string text = path.u8string();
  return std::string(text.begin(), text.end());
}

fs::path newFolder() {
  std::random_device random;
  for (;;) {
    std::ostringstream name;
    name << "dipole-test-" << std::hex << random() << random();
    fs::path path = fs::weakly_canonical(fs::temp_directory_path()) / name.str();
    if (fs::create_directory(path)) {
      return path;
    }
  }
}

}  // namespace

TempFolder::TempFolder() : m_path(toText(newFolder())) {}

TempFolder::~TempFolder() {
  std::error_code ignored;
  fs::remove_all(toPath(m_path), ignored);
}

CString TempFolder::path() const {
  return fromUtf8(m_path);
}

std::string TempFolder::pathUtf8(std::string_view name) const {
  return m_path + static_cast<char>(fs::path::preferred_separator) + std::string(name);
}

CString TempFolder::path(std::string_view name) const {
  return fromUtf8(pathUtf8(name));
}

CString TempFolder::write(std::string_view name, std::string_view bytes) const {
  std::ofstream file(toPath(pathUtf8(name)), std::ios::binary | std::ios::trunc);
  file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  file.close();
  EXPECT_TRUE(file.good()) << "cannot write " << pathUtf8(name);
  return path(name);
}

CString TempFolder::write(std::string_view name, std::span<const unsigned char> bytes) const {
  return write(name, std::string(bytes.begin(), bytes.end()));
}

CString TempFolder::makeFolder(std::string_view name) const {
  fs::create_directory(toPath(pathUtf8(name)));
  return path(name);
}

bool TempFolder::has(std::string_view name) const {
  return fs::exists(toPath(pathUtf8(name)));
}

std::string TempFolder::read(std::string_view name) const {
  std::ifstream file(toPath(pathUtf8(name)), std::ios::binary);
  EXPECT_TRUE(file.is_open()) << "cannot read " << pathUtf8(name);
  return std::string(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
}

std::vector<std::string> TempFolder::names() const {
  std::vector<std::string> all;
  for (const fs::directory_entry& entry : fs::directory_iterator(toPath(m_path))) {
    all.push_back(toText(entry.path().filename()));
  }
  std::ranges::sort(all);
  return all;
}
