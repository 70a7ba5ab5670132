// The operator: who answers message boxes and common dialogs. Not an MFC name: for programs and tests only.
//
// A command line program answers on the terminal, a test from a script.
#pragma once

#include <vector>

#include "platform/portable/String.h"

// What a file dialog asks for.
struct FileQuestion {
  bool open = true;       // false: a file to save
  bool multiple = false;  // several files may be chosen
  CString title;          // empty: none was given
  CString name;           // the name offered, may be empty
  CString folder;         // where to start looking, may be empty
  CString extension;      // appended to names without one, without its point; may be empty
  CString filter;         // "Text (*.txt)|*.txt|All files|*.*||", may be empty
  DWORD filterIndex = 0;  // the filter offered, counted from 1; 0: the first
  DWORD flags = 0;        // OFN_...
};

class Operator {
 public:
  Operator() = default;
  Operator(const Operator&) = delete;
  Operator& operator=(const Operator&) = delete;
  virtual ~Operator();

  // The answer (IDOK, IDYES, ...) to a message box of `type` (MB_...).
  virtual int answerMessage(LPCTSTR text, UINT type) = 0;
  // Absolute paths into `paths`, at least one; false: cancelled.
  virtual bool chooseFiles(const FileQuestion& question, std::vector<CString>& paths) = 0;
  // A colour into `chosen`; false: cancelled.
  virtual bool chooseColor(COLORREF initial, COLORREF& chosen) = 0;
};

// Makes `next` (or nobody, when null) the operator and returns the one before. The caller keeps both alive.
Operator* installOperator(Operator* next);

// The operator, or null.
Operator* installedOperator();

// The answer that changes nothing: OK where there is no other, No where there is one, else Abort or Cancel.
int carefulAnswer(UINT type);
