// Dialog data exchange and validation: the DDX_ and DDV_ functions that DoDataExchange calls.
//
// A DDV_ call follows the DDX_ call of its control at once. When a control's content is not valid, one
// message box says so, the focus returns to the control with its text selected, and CUserException* is
// thrown, so that UpdateData returns FALSE. Members read before that keep what they were given.
#pragma once

#include "platform/portable/String.h"

class CWnd;

class CDataExchange {
 public:
  CDataExchange(CWnd* dialog, BOOL saveAndValidate);

  // The control that the next exchange is about; an edit control gets the focus when it fails. Throws
  // CNotSupportedException* when the dialog has no such control.
  HWND PrepareCtrl(int id);
  HWND PrepareEditCtrl(int id);
  // Ends the exchange: throws CUserException*. While reading, the last control gets the focus before.
  [[noreturn]] void Fail();

  BOOL m_bSaveAndValidate;  // TRUE: from the controls to the members
  CWnd* m_pDlgWnd;
  int m_idLastControl = 0;
  BOOL m_bEditLastControl = FALSE;

 private:
  HWND m_window;  // the dialog's object may be gone when a mistake has been told
};

// The text of a control and a member. A double is written with 15 significant digits, a float with 6, as %g
// does. Read back, a number is decimal digits with an optional sign, point and exponent, white space around
// it; what is none, or does not fit, is answered by "Please enter a number." or "Please enter an integer.".
void DDX_Text(CDataExchange* exchange, int id, CString& value);
void DDX_Text(CDataExchange* exchange, int id, int& value);
void DDX_Text(CDataExchange* exchange, int id, UINT& value);
void DDX_Text(CDataExchange* exchange, int id, float& value);
void DDX_Text(CDataExchange* exchange, int id, double& value);
// 0 off, 1 on, 2 undetermined; another value counts as off.
void DDX_Check(CDataExchange* exchange, int id, int& value);
// Attaches `control` to the dialog's control, once. Throws CNotSupportedException* when there is none.
void DDX_Control(CDataExchange* exchange, int id, CWnd& control);

// The value must lie in the range, both ends included; else "Please enter a number between ... and ....".
void DDV_MinMaxInt(CDataExchange* exchange, int value, int least, int most);
void DDV_MinMaxFloat(CDataExchange* exchange, const float& value, float least, float most);
void DDV_MinMaxDouble(CDataExchange* exchange, const double& value, double least, double most);
// No more units than this; an edit control is told, so that more cannot be typed.
void DDV_MaxChars(CDataExchange* exchange, const CString& value, int most);
