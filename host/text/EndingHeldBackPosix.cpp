#include "host/text/EndingHeldBack.h"

namespace host {

sigset_t endingSignalSet() {
  sigset_t set;
  ::sigemptyset(&set);
  for (const int signal : endingSignals) {
    ::sigaddset(&set, signal);
  }
  return set;
}

bool isEndAsked() {
  sigset_t waiting;
  ::sigemptyset(&waiting);
  (void)::sigpending(&waiting);
  bool result = false;
  for (const int signal : endingSignals) {
    result = result || ::sigismember(&waiting, signal) == 1;
  }
  return result;
}

EndingHeldBack::EndingHeldBack() {
  const sigset_t set = endingSignalSet();
  (void)::sigprocmask(SIG_BLOCK, &set, &m_before);
}

EndingHeldBack::~EndingHeldBack() {
  (void)::sigprocmask(SIG_SETMASK, &m_before, nullptr);
}

}  // namespace host
