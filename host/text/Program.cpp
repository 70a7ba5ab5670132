#include "host/text/Program.h"

#include <algorithm>
#include <cstdlib>
#include <string_view>
#include <system_error>

namespace host {

namespace {

namespace fs = std::filesystem;

#ifdef _WIN32
constexpr wchar_t between = L';';
constexpr const char* ending = ".exe";

std::wstring searchPath() {
  const wchar_t* const path = ::_wgetenv(L"PATH");
  return path != nullptr ? path : L"";
}
#else
constexpr char between = ':';
constexpr const char* ending = "";

std::string searchPath() {
  const char* const path = std::getenv("PATH");
  return path != nullptr ? path : "";
}
#endif

}  // namespace

fs::path programNamed(const std::string& name) {
  const fs::path::string_type folders = searchPath();
  for (std::size_t at = 0; at <= folders.size();) {
    const std::size_t end = (std::min)(folders.find(between, at), folders.size());
    const fs::path folder = folders.substr(at, end - at);
    const fs::path file = folder / (name + ending);
    std::error_code error;
    if (folder.is_absolute() && fs::is_regular_file(file, error)) {
      return file;
    }
    at = end + 1;
  }
  return {};
}

}  // namespace host
