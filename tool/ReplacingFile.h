// A file that takes another one's place only when all of it is on the disk.
#pragma once

#include <string>
#include <string_view>

namespace tool {

// Written beside its target under a name of its own and renamed at the end, so that the target is either the
// whole new file or what it was before. Without takePlace the new file is removed, also when SIGINT, SIGTERM
// or SIGHUP end the program. One at a time.
//
// A target that is a symbolic link stays one: what it points to is replaced. The new file has the permissions
// of the old one, or the usual ones of a new file. Locks that other programs hold on the old file are not
// asked for: they are advice, and their holders keep the old file.
//
// All operations throw std::runtime_error that names the target and the cause.
class ReplacingFile {
 public:
  // Refuses a target that is there and is not a regular file, or that the user may not write.
  explicit ReplacingFile(std::string target);
  ~ReplacingFile();
  ReplacingFile(const ReplacingFile&) = delete;
  ReplacingFile& operator=(const ReplacingFile&) = delete;

  // The name until takePlace, for those who write the file themselves.
  const std::string& path() const { return m_path; }

  void write(std::string_view bytes) const;
  void takePlace();

 private:
  void setUsualMode() const;
  void syncFolder() const;
  [[noreturn]] void fail() const;

  std::string m_name;    // as the user wrote it
  std::string m_target;  // behind every symbolic link
  std::string m_path;
  int m_descriptor = -1;
  bool m_isKept = false;
};

}  // namespace tool
