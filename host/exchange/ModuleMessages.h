// What the module shows while something is done with it.
#pragma once

#include <afx.h>

#include <string>
#include <vector>

namespace host {

// One message box.
struct ModuleMessage {
  std::string text;         // UTF-8, without the line end that some texts carry
  bool isQuestion = false;  // a yes/no question
  bool isYes = false;       // how it was answered

  bool operator==(const ModuleMessage&) const = default;
};

// While one lives, every message box is noted in it, the inner one of two. Whoever answers message boxes, the
// viewer's application object or the program's operator, tells it.
class ModuleMessages {
 public:
  ModuleMessages();
  ~ModuleMessages();
  ModuleMessages(const ModuleMessages&) = delete;
  ModuleMessages& operator=(const ModuleMessages&) = delete;

  static bool isNoting();
  // A box of MB_ `type` and the answer that it got (IDOK, IDYES, ...). Nobody may listen.
  static void note(LPCTSTR text, UINT type, int answer);

  const std::vector<ModuleMessage>& all() const { return m_all; }

 private:
  ModuleMessages* m_outer;
  std::vector<ModuleMessage> m_all;
};

// Whether a box of MB_ `type` asks a yes/no question.
bool isQuestion(UINT type);

}  // namespace host
