#include "platform/windows/DataExchange.h"

#include <cerrno>
#include <cfloat>
#include <climits>
#include <cmath>

#include "platform/LeastPromise.h"
#include "platform/portable/WinApp.h"
#include "platform/windows/WindowExceptions.h"
#include "platform/windows/Wnd.h"

namespace {

CString textOf(HWND control) {
  CString text;
  const int length = ::GetWindowTextLengthW(control);
  const int got = ::GetWindowTextW(control, text.GetBuffer(length), length + 1);
  text.ReleaseBuffer(got);
  return text;
}

// A control that shows the text already is left alone: its selection stays, and nothing flickers.
void show(HWND control, const CString& text) {
  if (textOf(control) != text || isLeastPromised()) {
    ::SetWindowTextW(control, text);
  }
}

[[noreturn]] void refuse(CDataExchange& exchange, const CString& sentence) {
  AfxMessageBox(sentence, MB_ICONEXCLAMATION);
  exchange.Fail();
}

// Only what a number is written with: no "nan", "inf" or hexadecimal digits. MFC does not say that it refuses
// them.
bool onlyUnits(const CString& text, LPCTSTR units) {
  if (isLeastPromised()) {
    return !text.IsEmpty();
  }
  for (int i = 0; i < text.GetLength(); ++i) {
    if (CString(units).Find(text[i]) < 0) {
      return false;
    }
  }
  return !text.IsEmpty();
}

bool parseReal(const CString& text, double& value) {
  CString number = text;
  number.Trim();
  if (!onlyUnits(number, _T("0123456789+-.,eE"))) {
    return false;
  }
  LPTSTR end = nullptr;
  const double parsed = std::wcstod(number, &end);
  if (*end != 0) {
    return false;
  }
  value = parsed;
  return true;
}

bool parseInteger(const CString& text, LONGLONG least, LONGLONG most, LONGLONG& value) {
  CString number = text;
  number.Trim();
  if (!onlyUnits(number, _T("0123456789+-"))) {
    return false;
  }
  LPTSTR end = nullptr;
  errno = 0;
  const LONGLONG parsed = std::wcstoll(number, &end, 10);
  if (*end != 0 || errno != 0 || parsed < least || parsed > most) {
    return false;
  }
  value = parsed;
  return true;
}

CString written(double value, int digits) {
  CString text;
  text.Format(_T("%.*g"), digits, value);
  return text;
}

double readReal(CDataExchange& exchange, HWND control, double most) {
  double value = 0;
  const bool isNumber = parseReal(textOf(control), value);
  if (!isNumber || (std::fabs(value) > most && !isLeastPromised())) {
    refuse(exchange, _T("Please enter a number."));
  }
  return value;
}

LONGLONG readInteger(CDataExchange& exchange, HWND control, LONGLONG least, LONGLONG most) {
  LONGLONG value = 0;
  if (!parseInteger(textOf(control), least, most, value)) {
    refuse(exchange, _T("Please enter an integer."));
  }
  return value;
}

void mustLie(CDataExchange& exchange, bool inside, LPCTSTR what, const CString& least, const CString& most) {
  if (inside || exchange.m_bSaveAndValidate == FALSE) {
    return;
  }
  CString sentence;
  sentence.Format(_T("Please enter %s between %s and %s."), what, least.GetString(), most.GetString());
  refuse(exchange, sentence);
}

CString decimal(int value) {
  CString text;
  text.Format(_T("%d"), value);
  return text;
}

}  // namespace

CDataExchange::CDataExchange(CWnd* dialog, BOOL saveAndValidate)
    : m_bSaveAndValidate(saveAndValidate), m_pDlgWnd(dialog), m_window(dialog->m_hWnd) {}

HWND CDataExchange::PrepareCtrl(int id) {
  const HWND control = ::GetDlgItem(m_window, id);
  if (control == nullptr) {
    AfxThrowNotSupportedException();
  }
  m_idLastControl = id;
  m_bEditLastControl = FALSE;
  return control;
}

HWND CDataExchange::PrepareEditCtrl(int id) {
  const HWND control = PrepareCtrl(id);
  m_bEditLastControl = TRUE;
  return control;
}

void CDataExchange::Fail() {
  const HWND control = ::GetDlgItem(m_window, m_idLastControl);
  if (m_bSaveAndValidate != FALSE && m_idLastControl != 0 && control != nullptr) {
    ::SetFocus(control);
    if (m_bEditLastControl != FALSE) {
      ::SendMessageW(control, EM_SETSEL, 0, -1);
    }
  }
  AfxThrowUserException();
}

void DDX_Text(CDataExchange* exchange, int id, CString& value) {
  const HWND control = exchange->PrepareEditCtrl(id);
  if (exchange->m_bSaveAndValidate != FALSE) {
    value = textOf(control);
  } else {
    show(control, value);
  }
}

void DDX_Text(CDataExchange* exchange, int id, int& value) {
  const HWND control = exchange->PrepareEditCtrl(id);
  if (exchange->m_bSaveAndValidate != FALSE) {
    value = static_cast<int>(readInteger(*exchange, control, INT_MIN, INT_MAX));
  } else {
    show(control, decimal(value));
  }
}

void DDX_Text(CDataExchange* exchange, int id, UINT& value) {
  const HWND control = exchange->PrepareEditCtrl(id);
  if (exchange->m_bSaveAndValidate != FALSE) {
    value = static_cast<UINT>(readInteger(*exchange, control, 0, UINT_MAX));
  } else {
    CString text;
    text.Format(_T("%u"), value);
    show(control, text);
  }
}

void DDX_Text(CDataExchange* exchange, int id, float& value) {
  const HWND control = exchange->PrepareEditCtrl(id);
  if (exchange->m_bSaveAndValidate != FALSE) {
    value = static_cast<float>(readReal(*exchange, control, FLT_MAX));
  } else {
    show(control, written(value, FLT_DIG));
  }
}

void DDX_Text(CDataExchange* exchange, int id, double& value) {
  const HWND control = exchange->PrepareEditCtrl(id);
  if (exchange->m_bSaveAndValidate != FALSE) {
    value = readReal(*exchange, control, DBL_MAX);
  } else {
    show(control, written(value, DBL_DIG));
  }
}

void DDX_Check(CDataExchange* exchange, int id, int& value) {
  const HWND control = exchange->PrepareCtrl(id);
  if (exchange->m_bSaveAndValidate != FALSE) {
    value = static_cast<int>(::SendMessageW(control, BM_GETCHECK, 0, 0));
    return;
  }
  if (value < BST_UNCHECKED || value > BST_INDETERMINATE) {
    value = BST_UNCHECKED;
  }
  ::SendMessageW(control, BM_SETCHECK, static_cast<WPARAM>(value), 0);
}

void DDX_Control(CDataExchange* exchange, int id, CWnd& control) {
  if (control.m_hWnd != nullptr) {
    return;
  }
  if (!control.SubclassWindow(exchange->PrepareCtrl(id))) {
    AfxThrowNotSupportedException();
  }
}

void DDV_MinMaxInt(CDataExchange* exchange, int value, int least, int most) {
  mustLie(*exchange, value >= least && value <= most, _T("an integer"), decimal(least), decimal(most));
}

void DDV_MinMaxFloat(CDataExchange* exchange, const float& value, float least, float most) {
  mustLie(*exchange, value >= least && value <= most, _T("a number"), written(least, FLT_DIG),
          written(most, FLT_DIG));
}

void DDV_MinMaxDouble(CDataExchange* exchange, const double& value, double least, double most) {
  mustLie(*exchange, value >= least && value <= most, _T("a number"), written(least, DBL_DIG),
          written(most, DBL_DIG));
}

void DDV_MaxChars(CDataExchange* exchange, const CString& value, int most) {
  if (exchange->m_bSaveAndValidate == FALSE) {
    const HWND control = ::GetDlgItem(exchange->m_pDlgWnd->m_hWnd, exchange->m_idLastControl);
    ::SendMessageW(control, EM_LIMITTEXT, static_cast<WPARAM>(most), 0);
  } else if (value.GetLength() > most) {
    CString sentence;
    sentence.Format(_T("Please enter no more than %d characters."), most);
    refuse(*exchange, sentence);
  }
}
