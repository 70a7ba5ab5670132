#include "host/session/ImportOne.h"

#include <system_error>

#include "host/SetBackup.h"

namespace host {

namespace {

// What has come, or -1 when the import did not reach its end: the module then leaves the bounds of the import
// as they are.
int importCounted(CDipoleFace9File& set, const CString& path) {
  constexpr int unreached = -1;
  const int before = set.m_totalDipoles;
  set.m_importEnd = unreached;
  CString name = path;
  const int result = set.importDipoleX(name, false);
  const bool isWhole = result != 0 && set.m_importEnd == set.m_totalDipoles;
  return isWhole ? set.m_totalDipoles - before : unreached;
}

}  // namespace

int importOne(CDipoleFace9File& set, const CString& path) {
  SetBackup before(set);
  int come = 0;
  try {
    come = importCounted(set, path);
  } catch (CException* exception) {
    exception->Delete();
  }
  if (come <= 0)
    before.restore();
  return come > 0 ? come : 0;
}

CurrentFolderKept::CurrentFolderKept() {
  std::error_code error;
  m_folder = std::filesystem::current_path(error);
}

CurrentFolderKept::~CurrentFolderKept() {
  std::error_code error;
  std::filesystem::current_path(m_folder, error);
}

}  // namespace host
