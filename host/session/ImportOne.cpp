#include "host/session/ImportOne.h"

#include <filesystem>
#include <memory>
#include <system_error>
#include <utility>

#include "host/text/Failure.h"
#include "host/text/PathText.h"
#include "host/undo/SetBackup.h"

namespace host {

namespace {

constexpr int unreached = -1;

// An import makes the file's folder the current one; it is what it was after a scope.
class CurrentFolderKept {
 public:
  CurrentFolderKept() {
    std::error_code error;
    m_folder = std::filesystem::current_path(error);
  }
  ~CurrentFolderKept() {
    std::error_code error;
    std::filesystem::current_path(m_folder, error);
  }
  CurrentFolderKept(const CurrentFolderKept&) = delete;
  CurrentFolderKept& operator=(const CurrentFolderKept&) = delete;

 private:
  std::filesystem::path m_folder;
};

// What has come, or -1 when the import did not reach its end: the module then leaves the bounds of the import
// as they are.
int importCounted(CDipoleFace9File& set, const CString& path) {
  const CurrentFolderKept folder;
  const int before = set.m_totalDipoles;
  set.m_importEnd = unreached;
  CString name = path;
  const int result = set.importDipoleX(name, false);
  const bool isWhole = result != 0 && set.m_importEnd == set.m_totalDipoles;
  return isWhole ? set.m_totalDipoles - before : unreached;
}

bool isOfDipoles(const CString& path) {
  const CString ending = path.Right(4);
  return ending == _T(".dip") || ending == _T(".DIP") || ending == _T(".txt") || ending == _T(".TXT");
}

// The module tells it in message boxes only, if at all.
std::string causeOfFailure(const CString& path, int come) {
  if (!isOfDipoles(path))
    return "its name ends neither in .dip nor in .txt";
  std::error_code error;
  const std::filesystem::file_status status = std::filesystem::status(pathOf(path), error);
  if (status.type() == std::filesystem::file_type::not_found)
    return "it is not there";
  if (std::filesystem::is_directory(status))
    return "it is a folder";
  CFile file;
  CFileException fault;
  if (file.Open(path, CFile::modeRead | CFile::shareDenyNone, &fault) == FALSE)
    return causeOf(fault);
  return come == unreached ? "it could not be read to its end" : "it holds no dipoles";
}

}  // namespace

ImportedFile importOne(CDipoleFace9File& set, const CString& path) {
  SetBackup before(set);
  int come = unreached;
  std::string cause;
  try {
    come = importCounted(set, path);
  } catch (CException* exception) {
    const std::unique_ptr<CException, ExceptionDeleter> caught(exception);
    cause = causeOf(*caught);
  }
  if (come > 0)
    return {come, {}};
  before.restore();
  return {0, cause.empty() ? causeOfFailure(path, come) : std::move(cause)};
}

}  // namespace host
