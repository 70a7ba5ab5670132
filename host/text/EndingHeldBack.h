// The signals with which a user ends a program: SIGINT, SIGTERM, SIGHUP. Windows has none.
#pragma once

#ifndef _WIN32
#include <array>
#include <csignal>
#endif

namespace host {

#ifndef _WIN32
inline constexpr std::array endingSignals = {SIGINT, SIGTERM, SIGHUP};
sigset_t endingSignalSet();
// Whether one of them is being held back.
bool isEndAsked();
#endif

// Holds them back for a scope, so that what the scope made is removed first; they take effect behind the
// outermost one.
class EndingHeldBack {
 public:
  EndingHeldBack();
  ~EndingHeldBack();
  EndingHeldBack(const EndingHeldBack&) = delete;
  EndingHeldBack& operator=(const EndingHeldBack&) = delete;

#ifndef _WIN32
 private:
  sigset_t m_before{};
#endif
};

}  // namespace host
