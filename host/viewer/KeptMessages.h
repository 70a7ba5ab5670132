// Many files, one message at their end.
#pragma once

#include <afx.h>

#include <vector>

namespace host {

// While one lives, messages that need no answer are kept in it instead of shown. Questions are asked as ever.
// One at a time.
class KeptMessages {
 public:
  KeptMessages();
  ~KeptMessages();
  KeptMessages(const KeptMessages&) = delete;
  KeptMessages& operator=(const KeptMessages&) = delete;

  // For the application object: whether the message (MB_ type) was kept.
  static bool keep(LPCTSTR text, UINT type);

  [[nodiscard]] const std::vector<CString>& texts() const { return m_texts; }

 private:
  std::vector<CString> m_texts;
};

}  // namespace host
