// A head that was read and takes the place of the one that is open when nothing can fail any more; and what
// is asked about heads.
#pragma once

#include <string>

#include "host/session/Session.h"

namespace host {

struct Session::NextHead {
  CString path;  // empty: the phantom
  Head head;
  std::string notice;
  Answers answers;
  RecentFiles recent;
};

// Neither is empty, and they are the same file.
bool isSameFile(const CString& one, const CString& other);

// Whether dipoles shall be shown on a head that, as `others` says with its numbers, is not theirs.
std::string otherHeadQuestion(const std::string& others);

}  // namespace host
