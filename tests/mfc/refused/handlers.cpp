// Handlers whose result or parameters are not the documented ones, and maps that are none.
#include <afxcmn.h>

class Handlers : public CDialog {
 public:
  int OnSize(UINT type, int width, int height);
  void OnTimer(UINT event, int more);
  void OnContextMenu(CWnd* window, POINT point);
  void OnKeyDown(UINT key, UINT repeat, UINT flags) const;
  void OnRow(NMHDR* header, LRESULT* result);
  void OnCommandWith(UINT command);
  BOOL OnClick();
  void OnMessage(WPARAM first, LPARAM second);
  void OnUpdate(CCmdUI& item);
  void OnFine();
  LRESULT OnActivation(WPARAM state, LPARAM other);
  BOOL OnOwn(NMHDR* header, LRESULT* result);
  DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(Handlers, CDialog)
ON_WM_SIZE()         // refused: static_cast from
ON_WM_TIMER()        // refused: static_cast from
ON_WM_CONTEXTMENU()  // refused: static_cast from
ON_WM_KEYDOWN()      // refused: static_cast from
ON_WM_DESTROY()
ON_WM_NOTHING()  // refused: undeclared identifier 'ON_WM_NOTHING'
ON_NOTIFY_REFLECT(NM_CLICK, &Handlers::OnRow)
ON_NOTIFY_REFLECT(NM_CLICK, &Handlers::OnOwn)  // refused: static_cast from
ON_NOTIFY_REFLECT_EX(NM_CLICK, &Handlers::OnOwn)
ON_NOTIFY_REFLECT_EX(NM_CLICK, &Handlers::OnRow)  // refused: static_cast from
ON_NOTIFY(NM_CLICK, 1, &Handlers::OnRow)
ON_NOTIFY(NM_CLICK, 1, &Handlers::OnFine)  // refused: static_cast from
ON_COMMAND(1, &Handlers::OnFine)
ON_COMMAND(1, &Handlers::OnCommandWith)  // refused: static_cast from
ON_COMMAND(nullptr, &Handlers::OnFine)   // refused: not allowed
ON_BN_CLICKED(1, &Handlers::OnFine)
ON_BN_CLICKED(1, &Handlers::OnClick)       // refused: static_cast from
ON_EN_CHANGE(1, &Handlers::OnCommandWith)  // refused: static_cast from
ON_MESSAGE(WM_ACTIVATE, &Handlers::OnActivation)
ON_MESSAGE(WM_ACTIVATE, &Handlers::OnMessage)  // refused: static_cast from
ON_UPDATE_COMMAND_UI(1, &Handlers::OnUpdate)   // refused: static_cast from
END_MESSAGE_MAP()

class Twice : public CDialog {
 public:
  void OnFine();
  void OnToo();
  DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(Twice, CDialog)
ON_COMMAND(1, &Twice::OnFine)
ON_COMMAND(2, &Twice::OnFine)
ON_BN_CLICKED(1, &Twice::OnFine)
ON_COMMAND(1, &Twice::OnToo)  // refused: a second entry of the message map
ON_WM_DESTROY()
ON_WM_DESTROY()  // refused: a second entry of the message map
END_MESSAGE_MAP()

class Unrelated : public CWnd {
  DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(Unrelated, CDialog)  // refused: static_assert
END_MESSAGE_MAP()

class Undeclared : public CWnd {};

BEGIN_MESSAGE_MAP(Undeclared, CWnd)  // refused: out-of-line definition
END_MESSAGE_MAP()

class Behind : public CWnd {
  DECLARE_MESSAGE_MAP() int m_member;  // refused: needs an access specifier
};
