// The files that were opened last, for a menu: newest first, none twice.
#pragma once

#include <afx.h>

#include <cstddef>
#include <vector>

namespace host {

// Which spellings are one file on the system of the list.
enum class PathRule {
  exact,   // none but the same
  windows  // upper and lower case are alike (Latin, Greek and Cyrillic letters), as are slash and backslash
};

class RecentFiles {
 public:
  static constexpr std::size_t most = 8;

  explicit RecentFiles(PathRule rule) : m_rule(rule) {}

  // Puts a full path in front, as it is spelled now; the oldest one goes when there are too many. An empty
  // path is left out.
  void add(CString path);
  // For a file that is no longer there.
  void remove(const CString& path);

  const std::vector<CString>& paths() const { return m_paths; }

 private:
  PathRule m_rule;
  std::vector<CString> m_paths;
};

}  // namespace host
