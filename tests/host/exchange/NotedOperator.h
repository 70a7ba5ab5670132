// An operator whose answers are noted, as those of a program are.
#pragma once

#include "host/exchange/ModuleMessages.h"
#include "tests/support/ScriptedOperator.h"

class NotedOperator : public ScriptedOperator {
 public:
  int answerMessage(LPCTSTR text, UINT type) override {
    const int answer = ScriptedOperator::answerMessage(text, type);
    host::ModuleMessages::note(text, type, answer);
    return answer;
  }
};
