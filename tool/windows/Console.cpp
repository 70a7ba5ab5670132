#include "tool/Console.h"

#include <afxwin.h>

#include <cstdio>
#include <fcntl.h>
#include <io.h>

namespace tool {
namespace {

HANDLE handleOf(Stream stream) {
  switch (stream) {
    case Stream::input:
      return ::GetStdHandle(STD_INPUT_HANDLE);
    case Stream::output:
      return ::GetStdHandle(STD_OUTPUT_HANDLE);
    case Stream::error:
      break;
  }
  return ::GetStdHandle(STD_ERROR_HANDLE);
}

}  // namespace

void prepareConsole() {
  for (std::FILE* stream : {stdin, stdout, stderr}) {
    (void)::_setmode(::_fileno(stream), _O_BINARY);
  }
  if (isTerminal(Stream::output) || isTerminal(Stream::error)) {
    (void)::SetConsoleOutputCP(CP_UTF8);
  }
}

void waitForReturn() {
  // Ctrl-C ends the reading, and nothing else.
  (void)::SetConsoleCtrlHandler([](DWORD event) -> BOOL { return event == CTRL_C_EVENT ? TRUE : FALSE; },
                                TRUE);
  for (int letter = std::getchar(); letter != '\n' && letter != EOF; letter = std::getchar()) {
  }
}

// The null device is no terminal, although it is a device of characters.
bool isTerminal(Stream stream) {
  DWORD mode = 0;
  return ::GetConsoleMode(handleOf(stream), &mode) != FALSE;
}

}  // namespace tool
