#include "tool/TerminalOperator.h"

#include <iostream>

#include "host/text/PathText.h"
#include "tool/Console.h"
#include "tool/Text.h"

namespace tool {
namespace {

bool isQuietSet = false;

std::string withoutLineEnd(std::string text) {
  text.erase(text.find_last_not_of("\r\n") + 1);
  return text;
}

bool isAtTerminal() {
  return isTerminal(Stream::input) && isTerminal(Stream::error);
}

// Asks until the answer is understood; Return and the end of input mean No.
bool askTerminal(const std::string& text) {
  for (;;) {
    std::cerr << printable(text) << " [y/N] " << std::flush;
    std::string answer;
    if (!std::getline(std::cin, answer)) {
      return false;
    }
    answer = withoutLineEnd(answer);
    if (answer.empty() || answer == "n" || answer == "N" || answer == "no") {
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

void tellNote(const std::string& text) {
  if (!isQuietSet) {
    tell(text);
  }
}

void setQuiet(bool isQuiet) {
  isQuietSet = isQuiet;
}

Message warningOf(const std::string& text) {
  Message message{"warning: " + text, false, false};
  tell(message.text);
  return message;
}

bool TerminalOperator::answerQuestion(const std::string& text) const {
  if (m_answers == Answers::ask && isAtTerminal()) {
    return askTerminal(text);
  }
  switch (m_answers) {
    case Answers::yes:
      tell(text + " Answered: yes (--yes)");
      return true;
    case Answers::lookOnly:
      tellNote(text + " Answered: yes (to look at it; --no refuses)");
      return true;
    case Answers::no:
      tell(text + " Answered: no (--no)");
      return false;
    default:
      tell(text + " Answered: no (--yes accepts)");
      return false;
  }
}

int TerminalOperator::answerMessage(LPCTSTR text, UINT type) {
  const std::string message = withoutLineEnd(host::utf8Of(text));
  const std::string said = (m_file.empty() ? "" : m_file + ": ") + message;
  int answer = (type & MB_TYPEMASK) == MB_OK ? IDOK : IDCANCEL;
  if (host::isQuestion(type)) {
    answer = answerQuestion(said) ? IDYES : IDNO;
  } else if (message.starts_with("Total imported dipoles:")) {
    tellNote(said);
  } else {
    tell(said);
  }
  host::ModuleMessages::note(text, type, answer);
  return answer;
}

bool TerminalOperator::chooseFiles(const FileQuestion& /*question*/, std::vector<CString>& /*paths*/) {
  return false;
}

bool TerminalOperator::chooseColor(COLORREF /*initial*/, COLORREF& /*chosen*/) {
  return false;
}

}  // namespace tool
