#include "host/text/TemporaryFolder.h"

#include <random>
#include <stdexcept>
#include <string>
#include <system_error>

#include "host/text/PathText.h"

namespace host {

namespace fs = std::filesystem;

TemporaryFolder::TemporaryFolder() {
  std::error_code error;
  const fs::path all = fs::temp_directory_path(error);
  if (error) {
    throw std::runtime_error(
        "there is no folder for temporary files: the one that is named (TMPDIR, TMP, TEMP) "
        "does not exist or is no folder");
  }
  std::random_device random;
  do {
    m_path = all / ("dipole-" + std::to_string(random()) + std::to_string(random()));
  } while (!fs::create_directory(m_path, error) && !error);
  if (error) {
    throw std::runtime_error("the folder for temporary files, " + utf8Of(textOf(all)) +
                             ", takes none: " + error.message());
  }
  fs::permissions(m_path, fs::perms::owner_all, error);
  if (error) {
    std::error_code ignored;  // it is empty
    fs::remove(m_path, ignored);
    throw std::runtime_error("the temporary folder " + utf8Of(textOf(m_path)) +
                             " cannot be kept from others: " + error.message());
  }
}

TemporaryFolder::~TemporaryFolder() {
  std::error_code error;
  fs::remove_all(m_path, error);
}

}  // namespace host
