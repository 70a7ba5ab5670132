#include <afx.h>

#include <cstdint>
#include <shellapi.h>
#include <stdexcept>

#include "host/text/OpenFile.h"

namespace host {

void openOnDesktop(const std::filesystem::path& file) {
  constexpr std::intptr_t mostFailure = 32;  // what is greater tells that it was opened
  const HINSTANCE opened = ::ShellExecuteW(nullptr, L"open", std::filesystem::absolute(file).c_str(), nullptr,
                                           nullptr, SW_SHOWNORMAL);
  if (reinterpret_cast<std::intptr_t>(opened) <= mostFailure) {
    throw std::runtime_error("Windows has no program that shows the page");
  }
}

}  // namespace host
