// Answers the module where a window would: messages go to standard error, questions to the person at the
// terminal or, without one, to the answer given on the command line. Standard output stays the result's.
#pragma once

#include <afx.h>

#include <string>
#include <vector>

#include "host/exchange/ModuleMessages.h"
#include "platform/Operator.h"

namespace tool {

// lookOnly: yes, because what is imported is looked at and not kept.
enum class Answers { ask, yes, no, lookOnly };

using Message = host::ModuleMessage;

class TerminalOperator : public Operator {
 public:
  // With Answers::ask a question goes to the terminal; where there is none (standard input or standard error
  // is something else) it is No. Every message is noted, see host/exchange/ModuleMessages.h.
  explicit TerminalOperator(Answers answers) : m_answers(answers) {}

  // Of which the module speaks from now on.
  void nameFile(const std::string& name) { m_file = name; }

  int answerMessage(LPCTSTR text, UINT type) override;
  bool chooseFiles(const FileQuestion& question, std::vector<CString>& paths) override;
  bool chooseColor(COLORREF initial, COLORREF& chosen) override;

 private:
  bool answerQuestion(const std::string& text) const;

  Answers m_answers;
  std::string m_file;
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

// The same for what is neither a warning nor a failure: left out once quiet is set.
void tellNote(const std::string& text);
void setQuiet(bool isQuiet);

// Tells a warning and returns it as a message, to be kept with those of the module.
Message warningOf(const std::string& text);

}  // namespace tool
