#include "host/text/TemporaryFolder.h"

#include <random>
#include <string>
#include <system_error>

namespace host {

namespace fs = std::filesystem;

TemporaryFolder::TemporaryFolder() {
  std::random_device random;
  do {
    m_path = fs::temp_directory_path() / ("dipole-" + std::to_string(random()) + std::to_string(random()));
  } while (!fs::create_directory(m_path));
  fs::permissions(m_path, fs::perms::owner_all);
}

TemporaryFolder::~TemporaryFolder() {
  std::error_code error;
  fs::remove_all(m_path, error);
}

}  // namespace host
