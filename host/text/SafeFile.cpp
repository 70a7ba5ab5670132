#include "host/text/SafeFile.h"

#include <array>
#include <filesystem>
#include <random>
#include <string>
#include <system_error>

#include "host/text/Failure.h"
#include "host/text/PathText.h"
#include "host/text/UnfinishedFile.h"

namespace host {

namespace {

namespace fs = std::filesystem;

std::string randomName() {
  constexpr std::array<char, 17> digits{"0123456789abcdef"};
  constexpr int length = 16;
  std::random_device random;
  std::string name = unfinishedPrefix();
  for (int i = 0; i < length; ++i) {
    name += digits.at(random() % 16U);
  }
  return name + ".tmp";
}

// The file that a name stands for: behind a link, also one to a file that is not there yet.
fs::path behindLinks(const fs::path& path) {
  constexpr int mostLinks = 40;
  fs::path target = path;
  std::error_code error;
  for (int i = 0; i < mostLinks && fs::is_symlink(target, error); ++i) {
    target = target.parent_path() / fs::read_symlink(target);
  }
  return target;
}

void refuseWhatMustStay(const CString& name, const fs::path& target) {
  const auto refuseIf = [&](bool isSo, const std::string& cause) {
    if (isSo) {
      throwFileFailure("write", name, cause);
    }
  };
  const fs::file_status status = fs::status(target);
  refuseIf(target.filename().empty(), "the name of a file is missing");
  refuseIf(fs::is_directory(status), "it is a folder");
  if (!fs::exists(status)) {
    return;
  }
  refuseIf(!fs::is_regular_file(status), "it is not a regular file");
  const std::string cause = whyReadOnly(target);
  refuseIf(!cause.empty(), cause);
  refuseIf((status.permissions() & fs::perms::owner_write) == fs::perms::none, "it is write-protected");
}

// The content has to be on the disk before the name points to it.
void flush(const CString& target, const CString& path) {
  CFile file(path, CFile::modeReadWrite | CFile::shareExclusive);
  if (file.GetLength() == 0) {
    throwFileFailure("write", target, "nothing was written");
  }
  file.Flush();
  file.Close();
}

}  // namespace

void writeSafelyByName(const CString& path, const std::function<void(const CString&)>& write) {
  withFile("write", path, [&] {
    try {
      const fs::path target = behindLinks(fs::absolute(pathOf(path)));
      refuseWhatMustStay(path, target);
      UnfinishedFile file(target.parent_path() / randomName());
      write(textOf(file.path()));
      flush(path, textOf(file.path()));
      file.become(target);
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
