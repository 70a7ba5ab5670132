#include "tool/Console.h"

#include <clocale>
#include <csignal>
#include <unistd.h>

namespace tool {

void prepareConsole() {
  (void)std::setlocale(LC_ALL, "");
  (void)std::signal(SIGXFSZ, SIG_IGN);  // a file that grows too large is an error like a full disk
}

bool isTerminal(Stream stream) {
  return ::isatty(static_cast<int>(stream)) != 0;  // in the order of the streams' numbers
}

}  // namespace tool
