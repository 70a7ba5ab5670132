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

EndingHeldBack::EndingHeldBack() {
  const sigset_t set = endingSignalSet();
  (void)::sigprocmask(SIG_BLOCK, &set, &m_before);
}

EndingHeldBack::~EndingHeldBack() {
  (void)::sigprocmask(SIG_SETMASK, &m_before, nullptr);
}

}  // namespace host
