// The user at a fuzzer: acknowledges messages that are known, answers questions by the bits of a number.
#pragma once

#include <afxwin.h>

#include <algorithm>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "fuzz/Check.h"
#include "platform/Operator.h"
#include "platform/Utf.h"

class FuzzUser : public Operator {
 public:
  // Beginnings of everything that the reader may say or ask.
  FuzzUser(std::span<const std::string_view> messages, std::span<const std::string_view> questions)
      : m_knownMessages(messages), m_knownQuestions(questions) {
    installOperator(this);
  }

  // Forgets what was said. Bits 0 to 3 of `answers` answer the questions in turn, 1 for yes.
  void start(unsigned answers) {
    m_answers = answers;
    messages.clear();
    questions.clear();
    accepted.clear();
  }

  bool hasAccepted(std::string_view beginning) const {
    return std::any_of(accepted.begin(), accepted.end(),
                       [&](const std::string& text) { return text.starts_with(beginning); });
  }

  int answerMessage(LPCTSTR text, UINT type) override {
    const std::string shown = toUtf8(text);
    if ((type & MB_TYPEMASK) != MB_YESNO) {
      check(isKnown(shown, m_knownMessages), "every message is one of the reader's");
      messages.push_back(shown);
      return IDOK;
    }
    check(isKnown(shown, m_knownQuestions), "every question is one of the reader's");
    const bool yes = isYes(m_answers, questions.size());
    questions.push_back(shown);
    if (yes) {
      accepted.push_back(shown);
    }
    return yes ? IDYES : IDNO;
  }
  bool chooseFiles(const FileQuestion& /*question*/, std::vector<CString>& chosen) override {
    check(!paths.empty(), "no question for files");
    chosen = paths;
    return true;
  }
  bool chooseColor(COLORREF /*initial*/, COLORREF& /*chosen*/) override {
    check(false, "no question for a colour");
    return false;
  }

  static bool isYes(unsigned answers, std::size_t question) { return (answers >> (question % 4) & 1U) != 0; }

  std::vector<CString> paths;  // the answer to a file dialog; without any, none may come
  std::vector<std::string> messages;
  std::vector<std::string> questions;
  std::vector<std::string> accepted;  // the questions that were answered with yes

 private:
  static bool isKnown(const std::string& text, std::span<const std::string_view> known) {
    return std::any_of(known.begin(), known.end(),
                       [&](std::string_view beginning) { return text.starts_with(beginning); });
  }

  std::span<const std::string_view> m_knownMessages;
  std::span<const std::string_view> m_knownQuestions;
  unsigned m_answers = 0;
};
