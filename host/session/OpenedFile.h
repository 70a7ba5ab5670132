// What opening a file does to the list of recent ones when it fails.
#pragma once

#include <filesystem>
#include <stdexcept>
#include <system_error>

#include "host/text/PathText.h"
#include "host/text/RecentFiles.h"

namespace host {

// Opens a file; one that cannot be opened because it is not there any more leaves the recent ones.
template <typename Open>
auto forgettingWhatIsGone(RecentFiles& recent, const CString& path, Open open) {
  try {
    return open();
  } catch (const std::runtime_error&) {
    std::error_code error;
    if (!std::filesystem::exists(pathOf(path), error) && !error) {
      recent.remove(path);
    }
    throw;
  }
}

}  // namespace host
