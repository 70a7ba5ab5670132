#include "host/exchange/ModuleMessages.h"

#include <afxwin.h>

#include <utility>

#include "host/text/PathText.h"

namespace host {

namespace {

ModuleMessages* listening = nullptr;

}  // namespace

ModuleMessages::ModuleMessages() : m_outer(std::exchange(listening, this)) {}

ModuleMessages::~ModuleMessages() {
  listening = m_outer;
}

bool ModuleMessages::isNoting() {
  return listening != nullptr;
}

void ModuleMessages::note(LPCTSTR text, UINT type, int answer) {
  if (listening == nullptr) {
    return;
  }
  std::string said = utf8Of(text);
  said.erase(said.find_last_not_of("\r\n") + 1);
  listening->m_all.push_back({std::move(said), isQuestion(type), isQuestion(type) && answer == IDYES});
}

bool isQuestion(UINT type) {
  const UINT buttons = type & MB_TYPEMASK;
  return buttons == MB_YESNO || buttons == MB_YESNOCANCEL;
}

}  // namespace host
