// Answers the module where a window would: messages go to standard error, questions to the person at the
// terminal or, without one, to the answer given on the command line. Standard output stays the result's.
#pragma once

#include <afx.h>

#include <string>
#include <vector>

#include "platform/Operator.h"

namespace tool {

enum class Answers { ask, yes, no };

// One message box of the module.
struct Message {
  std::string text;         // UTF-8, without the line end that some texts carry
  bool isQuestion = false;  // a yes/no question
  bool isYes = false;       // how it was answered
};

class TerminalOperator : public Operator {
 public:
  // The files are absolute paths, the answer to the next file dialog. With Answers::ask a question goes to
  // the terminal; where there is none (standard input or standard error is something else) it is No.
  TerminalOperator(std::vector<CString> files, Answers answers);

  int answerMessage(LPCTSTR text, UINT type) override;
  bool chooseFiles(const FileQuestion& question, std::vector<CString>& paths) override;
  bool chooseColor(COLORREF initial, COLORREF& chosen) override;

  // Every message so far, in order.
  const std::vector<Message>& messages() const { return m_messages; }

 private:
  bool answerQuestion(const std::string& text) const;

  std::vector<CString> m_files;
  Answers m_answers;
  std::vector<Message> m_messages;
};

// Puts an operator in charge for a scope.
class OperatorInCharge {
 public:
  explicit OperatorInCharge(Operator& op) : m_previous(installOperator(&op)) {}
  ~OperatorInCharge() { installOperator(m_previous); }
  OperatorInCharge(const OperatorInCharge&) = delete;
  OperatorInCharge& operator=(const OperatorInCharge&) = delete;

 private:
  Operator* m_previous;
};

// A line of the program's own on standard error, made printable.
void tell(const std::string& text);

// Tells a warning and returns it as a message, to be kept with those of the module.
Message warningOf(const std::string& text);

}  // namespace tool
