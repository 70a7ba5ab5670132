// Where the program starts. No shell replaces *.dip by the names of files here: the C runtime does.

#include <afxwin.h>

#include <string>
#include <vector>

#include "host/text/PathText.h"
#include "tool/Console.h"
#include "tool/Program.h"

extern "C" {
extern int _dowildcard;  // NOLINT(bugprone-reserved-identifier): the runtime's own name
int _dowildcard = -1;    // NOLINT(bugprone-reserved-identifier)
}

extern "C" int wmain(int argc, wchar_t** argv) {
  tool::prepareConsole();
  std::vector<std::string> arguments;
  for (int i = 1; i < argc; ++i) {
    arguments.push_back(host::utf8Of(argv[i]));
  }
  return tool::runProgram(std::move(arguments));
}
