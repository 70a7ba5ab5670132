#include "tool/Console.h"

#include <clocale>
#include <csignal>
#include <poll.h>
#include <unistd.h>

#include "host/text/EndingHeldBack.h"

namespace tool {

void prepareConsole() {
  (void)std::setlocale(LC_ALL, "");
  (void)std::signal(SIGXFSZ, SIG_IGN);  // a file that grows too large is an error like a full disk
}

void waitForReturn() {
  constexpr int tick = 100;  // ms
  while (!host::isEndAsked()) {
    pollfd wait = {STDIN_FILENO, POLLIN, 0};
    if (::poll(&wait, 1, tick) > 0) {
      char letter = 0;
      if (::read(STDIN_FILENO, &letter, 1) <= 0 || letter == '\n') {
        return;
      }
    }
  }
}

bool isTerminal(Stream stream) {
  return ::isatty(static_cast<int>(stream)) != 0;  // in the order of the streams' numbers
}

}  // namespace tool
