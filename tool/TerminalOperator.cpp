#include "tool/TerminalOperator.h"

#include <iostream>
#include <unistd.h>
#include <utility>

#include "platform/Utf.h"
#include "tool/Text.h"

namespace tool {
namespace {

std::string withoutLineEnd(std::string text) {
  text.erase(text.find_last_not_of("\r\n") + 1);
  return text;
}

bool isAtTerminal() {
  return ::isatty(STDIN_FILENO) != 0 && ::isatty(STDERR_FILENO) != 0;
}

// Asks until the answer is understood; Return and the end of input mean No.
bool askTerminal(const std::string& text) {
  for (;;) {
    std::cerr << printable(text) << " [y/N] " << std::flush;
    std::string answer;
    if (!std::getline(std::cin, answer) || answer.empty() || answer == "n" || answer == "N" ||
        answer == "no") {
      return false;
    }
    if (answer == "y" || answer == "Y" || answer == "yes") {
      return true;
    }
  }
}

}  // namespace

void tell(const std::string& text) {
  std::cerr << "dipole: " << printable(text) << '\n';
}

Message warningOf(const std::string& text) {
  Message message{"warning: " + text, false, false};
  tell(message.text);
  return message;
}

TerminalOperator::TerminalOperator(std::vector<CString> files, Answers answers)
    : m_files(std::move(files)), m_answers(answers) {}

bool TerminalOperator::answerQuestion(const std::string& text) const {
  if (m_answers == Answers::ask && isAtTerminal()) {
    return askTerminal(text);
  }
  const bool isYes = m_answers == Answers::yes;
  tell(text + (isYes                      ? " Answered: yes (--yes)"
               : m_answers == Answers::no ? " Answered: no (--no)"
                                          : " Answered: no (--yes accepts)"));
  return isYes;
}

int TerminalOperator::answerMessage(LPCTSTR text, UINT type) {
  Message message{withoutLineEnd(toUtf8(CString(text))), false, false};
  const UINT buttons = type & MB_TYPEMASK;
  int result = IDOK;
  if (buttons == MB_YESNO || buttons == MB_YESNOCANCEL) {
    message.isQuestion = true;
    message.isYes = answerQuestion(message.text);
    result = message.isYes ? IDYES : IDNO;
  } else {
    tell(message.text);
    result = buttons == MB_OK ? IDOK : IDCANCEL;
  }
  m_messages.push_back(std::move(message));
  return result;
}

bool TerminalOperator::chooseFiles(const FileQuestion& /*question*/, std::vector<CString>& paths) {
  paths = std::exchange(m_files, {});
  return !paths.empty();
}

bool TerminalOperator::chooseColor(COLORREF /*initial*/, COLORREF& /*chosen*/) {
  return false;
}

}  // namespace tool
