// Which fields of a dialog the user has changed.
//
// A number may be shown with fewer digits than it has, so a field that the user left alone must not be read
// back: the number would change. The texts are remembered when the dialog has shown its numbers, and
// compared when it reads them.
#pragma once

#include <afxwin.h>

#include <map>
#include <variant>

#include "ui/NumberText.h"

class EditTexts {
 public:
  // Takes the texts of the exchanged fields as they are now, and the values that were last exchanged.
  void remember(const CWnd& dialog);

  // A field that was never remembered counts as changed.
  bool isChanged(const CWnd& dialog, int field) const;
  bool isAnyChanged(const CWnd& dialog) const;

  // DDX_Text, but that numbers are shown as numberText writes them, and that reading an unchanged field gives
  // the value it was remembered with, whatever it shows.
  template <typename Value>
  void exchange(CDataExchange* direction, int field, Value& value) {
    Field& known = m_fields[field];
    known.isEntered = direction->m_bSaveAndValidate != FALSE && isChanged(*direction->m_pDlgWnd, field);
    if (direction->m_bSaveAndValidate != FALSE && !known.isEntered) {
      direction->PrepareEditCtrl(field);  // a range check that follows belongs to this field
      value = std::get<Value>(known.shown);
    } else if (direction->m_bSaveAndValidate != FALSE) {
      DDX_Text(direction, field, value);
      mustBeDecimal(*direction, field, value);
    } else {
      CString text = textFor(value);
      DDX_Text(direction, field, text);
    }
    known.exchanged = value;
  }

  // What the last exchange has read goes to where it belongs, when its field was changed. Of memory it needs
  // what the value needs: none for a number.
  template <typename Value>
  void store(int field, const Value& entered, Value& target) const {
    const auto known = m_fields.find(field);
    if (known != m_fields.end() && known->second.isEntered) {
      target = entered;
    }
  }

 private:
  // The framework does not promise to refuse "nan", "inf", "0x10" and what overflows: what was read from them
  // ends the exchange after a message.
  static void mustBeDecimal(CDataExchange& direction, int field, double number);
  static void mustBeDecimal(CDataExchange& /*direction*/, int /*field*/, const CString& /*text*/) {}

  static CString textFor(const CString& text) { return text; }
  static CString textFor(double number) { return numberText(number); }

  using AnyValue = std::variant<double, float, CString>;

  struct Field {
    bool isRemembered = false;
    bool isEntered = false;  // changed when it was last read
    CString text;
    AnyValue shown;      // what the text stands for
    AnyValue exchanged;  // what was last read or written
  };

  std::map<int, Field> m_fields;  // by the control's number
};
