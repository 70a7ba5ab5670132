#include "tests/support/ScriptedOperator.h"

#include <gtest/gtest.h>

#include "platform/Utf.h"
#include "tests/support/FailingNew.h"

namespace {

template <class Value>
Value takeFirst(std::deque<Value>& queue) {
  Value first = std::move(queue.front());
  queue.pop_front();
  return first;
}

}  // namespace

ScriptedOperator::ScriptedOperator() : m_previous(installOperator(this)) {}

ScriptedOperator::~ScriptedOperator() {
  installOperator(m_previous);
}

void ScriptedOperator::answerFilesUtf8(const std::vector<std::string>& paths) {
  std::vector<CString> wide;
  wide.reserve(paths.size());
  for (const std::string& path : paths) {
    wide.push_back(fromUtf8(path));
  }
  answerFiles(std::move(wide));
}

std::vector<std::string> ScriptedOperator::texts() const {
  std::vector<std::string> all;
  all.reserve(messages.size());
  for (const Message& message : messages) {
    all.push_back(message.text);
  }
  return all;
}

int ScriptedOperator::answerMessage(LPCTSTR text, UINT type) {
  const MemoryTruce truce;
  messages.push_back({toUtf8(text), type});
  if ((type & MB_TYPEMASK) == MB_OK) {
    return IDOK;
  }
  if (m_answers.empty()) {
    ADD_FAILURE() << "a question without an answer: " << messages.back().text;
    return carefulAnswer(type);
  }
  return takeFirst(m_answers);
}

bool ScriptedOperator::chooseFiles(const FileQuestion& question, std::vector<CString>& paths) {
  const MemoryTruce truce;
  fileQuestions.push_back(question);
  if (m_files.empty()) {
    ADD_FAILURE() << "a file dialog without an answer: " << toUtf8(question.title);
    return false;
  }
  paths = takeFirst(m_files);
  return !paths.empty();
}

bool ScriptedOperator::chooseColor(COLORREF initial, COLORREF& chosen) {
  const MemoryTruce truce;
  colorQuestions.push_back(initial);
  if (m_colors.empty()) {
    ADD_FAILURE() << "a colour dialog without an answer";
    return false;
  }
  const ColorAnswer answer = takeFirst(m_colors);
  chosen = answer.color;
  return answer.chosen;
}
