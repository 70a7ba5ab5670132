#include "platform/windows/CmdTarget.h"

namespace {

bool fits(const MessageEntry& entry, UINT message, UINT code, UINT id) {
  return entry.message == message && entry.code == code && id >= entry.firstId && id <= entry.lastId;
}

}  // namespace

const MessageMap* CCmdTarget::GetMessageMap() const {
  return GetThisMessageMap();
}

const MessageMap* CCmdTarget::GetThisMessageMap() {
  static constexpr MessageEntry none = {};
  static constexpr MessageMap map = {nullptr, &none};
  return &map;
}

const MessageEntry* CCmdTarget::findEntry(UINT message, UINT code, UINT id) const {
  for (const MessageMap* map = GetMessageMap(); map != nullptr; map = map->base) {
    for (const MessageEntry* entry = map->entries; entry->handle != nullptr; ++entry) {
      if (fits(*entry, message, code, id)) {
        return entry;
      }
    }
  }
  return nullptr;
}

bool CCmdTarget::handle(UINT message, UINT code, HandlerCall& call) {
  const MessageEntry* const entry = findEntry(message, code, call.id);
  return entry != nullptr && entry->handle(this, call);
}

BOOL CCmdTarget::OnCmdMsg(UINT id, int code, void* extra, AFX_CMDHANDLERINFO* /*handlerInfo*/) {
  HandlerCall call;
  call.id = id;
  call.extra = extra;
  if (code == CN_UPDATE_COMMAND_UI) {
    return handle(updateMessage, 0, call) ? TRUE : FALSE;
  }
  if (HIWORD(code) != WM_NOTIFY) {
    return handle(WM_COMMAND, static_cast<UINT>(code), call) ? TRUE : FALSE;
  }
  auto* const notification = static_cast<NotifyExtra*>(extra);
  call.extra = notification->header;
  const bool handled = handle(WM_NOTIFY, notification->header->code, call);
  *notification->result = call.result;
  return handled ? TRUE : FALSE;
}
