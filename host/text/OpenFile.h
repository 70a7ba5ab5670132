// Showing a file with the program that the user's desktop has for it.
#pragma once

#include <filesystem>

namespace host {

// Returns as soon as it is on its way, without waiting for the end of what shows it. Throws
// std::runtime_error with the cause and what to do.
void openOnDesktop(const std::filesystem::path& file);

}  // namespace host
