// Which fields of a dialog the user has changed.
//
// A number is shown with fewer digits than it has, so a field that the user left alone must not be read
// back: the number would change. The texts are remembered when the dialog has shown its numbers, and
// compared when it reads them.
#pragma once

#include <afxwin.h>

#include <map>
#include <variant>

class EditTexts {
 public:
  // Takes the texts of all edit fields as they are now, and the values that were last exchanged with them.
  void remember(const CWnd& dialog);

  // A field that was never remembered counts as changed.
  bool isChanged(const CWnd& dialog, int field) const;

  // DDX_Text, but that reading an unchanged field gives the value it was remembered with, whatever it shows.
  template <typename Value>
  void exchange(CDataExchange* exchange, int field, Value& value) {
    if (exchange->m_bSaveAndValidate && !isChanged(*exchange->m_pDlgWnd, field)) {
      exchange->PrepareEditCtrl(field);  // a range check that follows belongs to this field
      value = std::get<Value>(m_values[field]);
    } else {
      DDX_Text(exchange, field, value);
    }
    m_exchanged[field] = value;
  }

 private:
  using AnyValue = std::variant<double, float, CString>;

  std::map<int, CString> m_texts;  // by the field's number, as all of these
  std::map<int, AnyValue> m_values;
  std::map<int, AnyValue> m_exchanged;
};
