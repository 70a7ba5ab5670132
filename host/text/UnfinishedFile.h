// A file that is being written under a name of its own, until it takes the name that it is meant for.
#pragma once

#include <filesystem>
#include <string>

namespace host {

// One at a time. Without `become` the file is removed at the end, on systems with signals also when SIGINT,
// SIGTERM or SIGHUP end the program meanwhile; one that the program was started to ignore stays ignored. All
// operations throw std::filesystem::filesystem_error.
class UnfinishedFile {
 public:
  // Where the system knows owners of files, an empty file is made at once that nobody else may read.
  explicit UnfinishedFile(std::filesystem::path path);
  ~UnfinishedFile();
  UnfinishedFile(const UnfinishedFile&) = delete;
  UnfinishedFile& operator=(const UnfinishedFile&) = delete;

  const std::filesystem::path& path() const { return m_path; }

  // Gives the file the name of the target, in place of what is there, with the permissions of that or the
  // usual ones of a new file. The new name reaches the disk too, where the system lets it.
  void become(const std::filesystem::path& target);

 private:
  std::filesystem::path m_path;
  bool m_isKept = false;
};

// Why the system's rules keep this user from writing a file that is there, such as "Permission denied"; empty
// when they do not, or when the file's own permissions tell all.
std::string whyReadOnly(const std::filesystem::path& path);

// What a name of an unfinished file begins with: where a point hides files, a point.
std::string unfinishedPrefix();

}  // namespace host
