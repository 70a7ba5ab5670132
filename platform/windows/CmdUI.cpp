#include "platform/windows/CmdUI.h"

#include "platform/windows/CmdTarget.h"
#include "platform/windows/Menu.h"
#include "platform/windows/Wnd.h"

namespace {

// Whether a command has a handler: it is looked for, not run.
struct Commands : CCmdTarget {
  static bool handles(const CCmdTarget& target, UINT id) {
    return (target.*(&Commands::findEntry))(WM_COMMAND, 0, id) != nullptr;
  }
};

}  // namespace

CCmdUI::~CCmdUI() = default;

void CCmdUI::Enable(BOOL on) {
  m_bEnableChanged = TRUE;
  if (m_pMenu != nullptr) {
    if (m_pSubMenu == nullptr) {
      m_pMenu->EnableMenuItem(m_nIndex, MF_BYPOSITION | (on != FALSE ? MF_ENABLED : MF_GRAYED));
    }
  } else if (m_pOther != nullptr) {
    m_pOther->EnableWindow(on);
  }
}

void CCmdUI::SetCheck(int check) {
  if (m_pMenu != nullptr) {
    if (m_pSubMenu == nullptr) {
      m_pMenu->CheckMenuItem(m_nIndex, MF_BYPOSITION | (check != 0 ? MF_CHECKED : MF_UNCHECKED));
    }
  } else if (m_pOther != nullptr) {
    m_pOther->SendMessage(BM_SETCHECK, static_cast<WPARAM>(check));
  }
}

void CCmdUI::SetRadio(BOOL on) {
  if (m_pMenu == nullptr || on == FALSE) {
    SetCheck(on != FALSE ? 1 : 0);
  } else if (m_pSubMenu == nullptr) {
    ::CheckMenuRadioItem(m_pMenu->m_hMenu, m_nIndex, m_nIndex, m_nIndex, MF_BYPOSITION);
  }
}

void CCmdUI::SetText(LPCTSTR text) {
  if (m_pMenu == nullptr) {
    if (m_pOther != nullptr) {
      m_pOther->SetWindowText(text);
    }
  } else if (m_pSubMenu == nullptr) {
    MENUITEMINFO item = {};
    item.cbSize = sizeof item;
    item.fMask = MIIM_STRING;
    item.dwTypeData = const_cast<LPTSTR>(text);
    ::SetMenuItemInfoW(m_pMenu->m_hMenu, m_nIndex, TRUE, &item);
  }
}

BOOL CCmdUI::DoUpdate(CCmdTarget* target, BOOL disableIfNoHandler) {
  m_bEnableChanged = FALSE;
  m_continueRouting = false;
  const bool found = target->OnCmdMsg(m_nID, CN_UPDATE_COMMAND_UI, this, nullptr) != FALSE;
  if (disableIfNoHandler != FALSE && m_bEnableChanged == FALSE) {
    if (!found) {
      Enable(Commands::handles(*target, m_nID) ? TRUE : FALSE);
    }
  }
  return found && !m_continueRouting ? TRUE : FALSE;
}
