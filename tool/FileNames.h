// Names of files as a user writes them: UTF-8, or, where the system's names are bytes, any bytes.
#pragma once

#include <afx.h>

#include <filesystem>
#include <string>

namespace tool {

std::filesystem::path pathOf(const std::string& name);

// The framework's text of it.
CString pathTextOf(const std::string& name);

}  // namespace tool
