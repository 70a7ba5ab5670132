#include "host/dipoles/NamedMri.h"

#include <string>
#include <system_error>

#include "host/dipoles/HeaderText.h"
#include "host/text/Letters.h"
#include "host/text/PathText.h"
#include "host/text/Utf8.h"

namespace host {

namespace {

namespace fs = std::filesystem;

bool isFile(const fs::path& path) {
  std::error_code error;
  return fs::is_regular_file(path, error);
}

}  // namespace

CString lastPartOf(const CString& name) {
  const std::string whole = headerText(name, "MRI_FILE:");
  CString part = fromUtf8(whole.substr(whole.find_last_of("/\\") + 1));
  part.Trim();
  // On Windows a drive's letter leads out of the folder.
  const bool isNone = part == _T(".") || part == _T("..") || pathOf(part).has_root_name();
  return isNone ? CString() : part;
}

fs::path findNamedMri(const fs::path& dipoleFile, const CString& name) {
  const CString part = lastPartOf(name);
  if (part.IsEmpty()) {
    return {};
  }
  const fs::path folder = dipoleFile.parent_path();
  if (isFile(folder / pathOf(part))) {
    return folder / pathOf(part);
  }
  const std::string wanted = utf8Of(part);
  fs::path found;
  std::error_code error;
  for (fs::directory_iterator entry(folder.empty() ? fs::path(".") : folder, error), end;
       !error && entry != end; entry.increment(error)) {
    if (isSameButLetters(utf8Of(textOf(entry->path().filename())), wanted) && isFile(entry->path())) {
      if (!found.empty()) {
        return {};
      }
      found = folder / entry->path().filename();
    }
  }
  return found;
}

}  // namespace host
