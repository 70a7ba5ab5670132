#include "host/text/SafeFile.h"

#include <array>
#include <cstdint>
#include <filesystem>
#include <random>
#include <string>
#include <system_error>
#include <utility>

#include "host/text/Failure.h"
#include "host/text/PathText.h"

namespace host {

namespace {

namespace fs = std::filesystem;

std::string randomName() {
  constexpr std::array<char, 17> digits{"0123456789abcdef"};
  constexpr int length = 16;
  std::random_device random;
  std::string name = "dipole-";
  for (int i = 0; i < length; ++i)
    name += digits.at(random() % 16U);
  return name + ".tmp";
}

// The file that a name stands for: behind a link, also one to a file that is not there yet.
fs::path behindLinks(const fs::path& path) {
  constexpr int mostLinks = 40;
  fs::path target = path;
  std::error_code error;
  for (int i = 0; i < mostLinks && fs::is_symlink(target, error); ++i)
    target = target.parent_path() / fs::read_symlink(target);
  return target;
}

// A new file beside the target, until it takes its place.
class NewFile {
 public:
  explicit NewFile(const CString& name) : m_name(name), m_target(behindLinks(fs::absolute(pathOf(name)))) {
    refuseWhatMustStay();
    m_path = m_target.parent_path() / randomName();
  }
  ~NewFile() {
    std::error_code error;
    if (!m_isKept)
      fs::remove(m_path, error);
  }
  NewFile(const NewFile&) = delete;
  NewFile& operator=(const NewFile&) = delete;

  [[nodiscard]] CString path() const { return textOf(m_path); }

  void takePlace() {
    if (m_isThere)
      fs::permissions(m_path, m_permissions);
    fs::rename(m_path, m_target);
    m_isKept = true;
  }

 private:
  void refuseWhatMustStay() {
    const fs::file_status status = fs::status(m_target);
    m_isThere = fs::exists(status);
    m_permissions = status.permissions();
    if (m_target.filename().empty())
      refuse("the name of a file is missing");
    if (fs::is_directory(status))
      refuse("it is a folder");
    if (m_isThere && !fs::is_regular_file(status))
      refuse("it is not a regular file");
    if (m_isThere && (m_permissions & fs::perms::owner_write) == fs::perms::none)
      refuse("it is write-protected");
  }

  [[noreturn]] void refuse(const char* cause) const { throwFileFailure("write", m_name, cause); }

  CString m_name;
  fs::path m_target;
  fs::path m_path;
  fs::perms m_permissions = fs::perms::unknown;
  bool m_isThere = false;
  bool m_isKept = false;
};

// The content has to be on the disk before the name points to it.
void flush(const CString& path) {
  CFile file(path, CFile::modeReadWrite | CFile::shareExclusive);
  file.Flush();
  file.Close();
}

}  // namespace

void writeSafelyByName(const CString& path, const std::function<void(const CString&)>& write) {
  withFile("write", path, [&] {
    try {
      NewFile file(path);
      write(file.path());
      flush(file.path());
      file.takePlace();
    } catch (const fs::filesystem_error& error) {
      throwFileFailure("write", path, error.code().message());
    }
  });
}

void writeSafely(const CString& path, const std::function<void(CFile&)>& write) {
  writeSafelyByName(path, [&](const CString& name) {
    CFile file(name, CFile::modeCreate | CFile::modeWrite | CFile::shareExclusive);
    write(file);
    file.Close();
  });
}

}  // namespace host
