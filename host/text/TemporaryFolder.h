// A folder for files that a program needs while it runs.
#pragma once

#include <filesystem>

namespace host {

// Where the system keeps such files; nobody else may look into it. It goes with all that is in it.
class TemporaryFolder {
 public:
  // Throws std::runtime_error with the cause.
  TemporaryFolder();
  ~TemporaryFolder();
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;

  const std::filesystem::path& path() const { return m_path; }

 private:
  std::filesystem::path m_path;
};

}  // namespace host
