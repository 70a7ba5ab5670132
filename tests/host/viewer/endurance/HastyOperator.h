// A user who answers every question at once and without thought. Files to open are those that were put ready,
// or none; what is saved goes into one folder, whatever is asked.
//
// It is the operator from its first line to its last; the one before is then again.
#pragma once

#include <string>
#include <vector>

#include "platform/Operator.h"
#include "tests/support/TempFolder.h"
#include "tests/ui/endurance/Chance.h"

class HastyOperator : public Operator {
 public:
  HastyOperator(Chance& chance, const TempFolder& folder)
      : m_chance(chance), m_folder(folder), m_before(installOperator(this)) {}
  ~HastyOperator() override { installOperator(m_before); }

  int answerMessage(LPCTSTR text, UINT type) override;
  bool chooseFiles(const FileQuestion& question, std::vector<CString>& paths) override;
  bool chooseColor(COLORREF initial, COLORREF& chosen) override;

  std::vector<CString> files;   // to open
  bool keepsNothing = false;    // says No to every "save?"
  std::vector<CString> broken;  // messages that no viewer may show: something failed inside a window
  int messages = 0;

 private:
  Chance& m_chance;
  const TempFolder& m_folder;
  Operator* m_before;
};
