// An operator that answers from a script, and fails the test when something unscripted is asked.
//
// It is the operator from its first line to its last; the one before is then again. What the script holds and
// nobody asked for is not an error: compare `messages` and the remaining counts. What it notes down is not
// touched by FailingNew.
#pragma once

#include <deque>
#include <string>
#include <vector>

#include "platform/Operator.h"

class ScriptedOperator : public Operator {
 public:
  struct Message {
    std::string text;  // UTF-8
    UINT type = 0;     // MB_...
    bool operator==(const Message&) const = default;
  };

  ScriptedOperator();
  ~ScriptedOperator() override;

  // The answer to the next message box that has none yet. A message with nothing but an OK button needs no
  // script: it is answered by OK and takes no answer from the queue.
  void answer(int id) { m_answers.push_back(id); }
  void answerFiles(std::vector<CString> paths) { m_files.push_back(std::move(paths)); }
  void answerFilesUtf8(const std::vector<std::string>& paths);
  void cancelFiles() { m_files.emplace_back(); }
  void answerColor(COLORREF color) { m_colors.push_back({true, color}); }
  void cancelColor() { m_colors.push_back({false, 0}); }

  // Everything shown or asked so far, in order.
  std::vector<Message> messages;
  std::vector<std::string> texts() const;  // of the messages alone
  std::vector<FileQuestion> fileQuestions;
  std::vector<COLORREF> colorQuestions;  // the initial colours

  // What of the script has not been used yet.
  std::size_t answersLeft() const { return m_answers.size() + m_files.size() + m_colors.size(); }

  int answerMessage(LPCTSTR text, UINT type) override;
  bool chooseFiles(const FileQuestion& question, std::vector<CString>& paths) override;
  bool chooseColor(COLORREF initial, COLORREF& chosen) override;

 private:
  struct ColorAnswer {
    bool chosen;
    COLORREF color;
  };

  Operator* m_previous;
  std::deque<int> m_answers;
  std::deque<std::vector<CString>> m_files;
  std::deque<ColorAnswer> m_colors;
};
