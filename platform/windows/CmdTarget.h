// CCmdTarget: an object that commands and notifications can reach through its message map.
#pragma once

#include "platform/portable/Object.h"
#include "platform/portable/Types.h"

class CCmdTarget;

// What a handler is called with, and what it leaves. Not an MFC name.
struct HandlerCall {
  WPARAM wParam = 0;
  LPARAM lParam = 0;
  UINT id = 0;
  void* extra = nullptr;  // the CCmdUI of an update, the NMHDR of a notification
  LRESULT result = 0;
};

// One line of a message map. Its handler returns false when the message is to go on. Not an MFC name.
struct MessageEntry {
  UINT message;  // WM_..., updateMessage, or a reflected one
  UINT code;     // of a command or notification
  UINT firstId;
  UINT lastId;
  bool (*handle)(CCmdTarget* target, HandlerCall& call);  // null closes the map
};

// The lines of one class, and the map of its base class (null: the end). Not an MFC name.
struct MessageMap {
  const MessageMap* base;
  const MessageEntry* entries;
};

// Not window messages, so they stand beyond those that windows get: ON_UPDATE_COMMAND_UI, and what is added
// to WM_COMMAND and WM_NOTIFY when they come back to the control that sent them.
constexpr UINT updateMessage = 0x10000;
constexpr UINT reflectedMessages = 0x20000;

// Codes of OnCmdMsg.
constexpr int CN_COMMAND = 0;
constexpr int CN_UPDATE_COMMAND_UI = -1;

// Opaque here: callers pass null.
struct AFX_CMDHANDLERINFO;

class CCmdTarget : public CObject {
 public:
  // Runs the handler for a command (`code` CN_COMMAND or a control's code), an update (CN_UPDATE_COMMAND_UI,
  // `extra` its CCmdUI) or a notification (`code` MAKELONG(its code, WM_NOTIFY), `extra` its NotifyExtra).
  // Returns FALSE when there is none, or it passes the message on.
  virtual BOOL OnCmdMsg(UINT id, int code, void* extra, AFX_CMDHANDLERINFO* handlerInfo);

 protected:
  CCmdTarget() = default;

  virtual const MessageMap* GetMessageMap() const;
  static const MessageMap* GetThisMessageMap();

  // Not MFC names.
  const MessageEntry* findEntry(UINT message, UINT code, UINT id) const;
  bool handle(UINT message, UINT code, HandlerCall& call);
};

// What OnCmdMsg gets of a notification. Not an MFC name.
struct NotifyExtra {
  NMHDR* header;
  LRESULT* result;
};
