#include "host/dipoles/NamedMri.h"

#include <algorithm>
#include <string>
#include <system_error>

#include "host/text/PathText.h"

namespace host {

namespace {

namespace fs = std::filesystem;

bool isFile(const fs::path& path) {
  std::error_code error;
  return fs::is_regular_file(path, error);
}

bool isSameButLetters(const std::string& a, const std::string& b) {
  const auto small = [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; };
  return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                    [&](char one, char other) { return small(one) == small(other); });
}

}  // namespace

CString lastPartOf(const CString& name) {
  constexpr LPCTSTR nobody = _T("non");  // what a set has before any file has named one
  const int last = (std::max)(name.ReverseFind(_T('/')), name.ReverseFind(_T('\\')));
  CString part = name.Mid(last + 1);
  part.Trim();
  return part == nobody || part == _T(".") || part == _T("..") ? CString() : part;
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
