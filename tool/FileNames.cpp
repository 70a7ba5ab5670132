#include "tool/FileNames.h"

#include "host/text/PathText.h"

namespace tool {

// What the standard library takes for UTF-8 on every system; one of bytes takes any bytes.
std::filesystem::path pathOf(const std::string& name) {
  return std::u8string(name.begin(), name.end());
}

CString pathTextOf(const std::string& name) {
  return host::textOf(pathOf(name));
}

}  // namespace tool
