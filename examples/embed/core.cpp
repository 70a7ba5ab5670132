// Dipoles without windows: reads dipole files, prints a line for each dipole, and writes all as a text table.
//
//   core TABLE.txt FILE.dip...
#include <cstdio>
#include <exception>
#include <filesystem>
#include <iostream>
#include <memory>
#include <vector>

#include "module/dipole.h"
#include "platform/Operator.h"
#include "platform/Utf.h"

namespace {

CString absolute(const char* path) {
  return fromUtf8(std::filesystem::absolute(path).string());
}

// Stands where a user would, as long as it lives: hears what the module tells, answers its questions with
// care (No, where there is a No) and chooses nothing.
class Answers : public Operator {
 public:
  Answers() { installOperator(this); }
  ~Answers() override { installOperator(nullptr); }

  int answerMessage(LPCTSTR text, UINT type) override {
    std::cerr << toUtf8(text) << '\n';
    return carefulAnswer(type);
  }

  bool chooseFiles(const FileQuestion& /*question*/, std::vector<CString>& /*paths*/) override {
    return false;
  }

  bool chooseColor(COLORREF /*initial*/, COLORREF& /*chosen*/) override { return false; }
};

void print(const CDipoleszq& dipole) {
  const auto& [left, up, front] = dipole.m_location;  // mm in the head frame
  const char* const side = left > 0.0 ? "left" : left < 0.0 ? "right" : "middle";
  std::printf("%-12s %-6s %7.2f %7.2f %7.2f mm %8.2f ms %6.2f %%\n", toUtf8(dipole.m_label).c_str(), side,
              left, up, front, dipole.m_latency, dipole.m_fitError);
}

int run(int count, char** arguments) {
  const Answers answers;  // before the first call of the module

  // All paths before the first import, which changes the current folder.
  const CString table = absolute(arguments[1]);
  std::vector<CString> files;
  for (int i = 2; i < count; ++i) {
    files.push_back(absolute(arguments[i]));
  }

  const auto dipoles = std::make_unique<CDipoleFace9File>();  // large: on the heap
  for (CString& file : files) {
    if (dipoles->importDipoleX(file, false) == 0) {  // goes by the ending, and adds to what is there
      std::cerr << toUtf8(file) << " was not imported\n";
    }
  }
  for (int slot = 0; slot < dipoles->m_totalDipoles; ++slot) {
    if (const CDipoleszq* dipole = dipoles->getDipole(slot)) {  // a slot may be empty
      print(*dipole);
    }
  }
  dipoles->exportExelFileX(table);  // a table that cannot be written is an exception
  return dipoles->m_totalDipoles > 0 ? 0 : 1;
}

}  // namespace

int main(int count, char** arguments) {
  if (count < 3) {
    std::cerr << "core TABLE.txt FILE.dip...\n";
    return 2;
  }
  try {
    return run(count, arguments);
  } catch (CException* fault) {  // of the module: by pointer, as in MFC
    fault->ReportError();
    fault->Delete();
  } catch (const std::exception& fault) {
    std::cerr << fault.what() << '\n';
  }
  return 1;
}
