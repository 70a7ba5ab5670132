#include <cerrno>
#include <chrono>
#include <cstring>
#include <fcntl.h>
#include <spawn.h>
#include <stdexcept>
#include <string>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

#include "host/text/OpenFile.h"
#include "host/text/Program.h"

extern "C" char** environ;  // POSIX leaves it to the program to declare it

namespace host {

namespace {

constexpr const char* opener = "xdg-open";

// In a session of its own, so that what ends this program does not end a browser.
pid_t start(const std::filesystem::path& program, const std::filesystem::path& file) {
  char* words[] = {const_cast<char*>(program.c_str()), const_cast<char*>(file.c_str()), nullptr};
  posix_spawn_file_actions_t actions;
  ::posix_spawn_file_actions_init(&actions);
  ::posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
  ::posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
  ::posix_spawn_file_actions_adddup2(&actions, STDOUT_FILENO, STDERR_FILENO);
  posix_spawnattr_t attributes;
  ::posix_spawnattr_init(&attributes);
  sigset_t none;
  ::sigemptyset(&none);
  ::posix_spawnattr_setsigmask(&attributes, &none);
  ::posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSID);
  pid_t child = -1;
  const int error = ::posix_spawn(&child, program.c_str(), &actions, &attributes, words, environ);
  ::posix_spawnattr_destroy(&attributes);
  ::posix_spawn_file_actions_destroy(&actions);
  if (error != 0) {
    throw std::runtime_error(std::string(opener) + " cannot be started: " + std::strerror(error));
  }
  return child;
}

}  // namespace

// Where there is no desktop xdg-open is the browser until that ends; what goes wrong it tells within seconds.
void openOnDesktop(const std::filesystem::path& file) {
  const std::filesystem::path program = programNamed(opener);
  if (program.empty()) {
    throw std::runtime_error("there is no xdg-open (package xdg-utils), which opens files on this desktop");
  }
  const pid_t child = start(program, std::filesystem::absolute(file));
  constexpr int mostTicks = 50;
  constexpr std::chrono::milliseconds tick(100);
  for (int i = 0; i < mostTicks; ++i) {
    int status = 0;
    const pid_t ended = ::waitpid(child, &status, WNOHANG);
    if (ended == child && !(WIFEXITED(status) && WEXITSTATUS(status) == 0)) {
      throw std::runtime_error("xdg-open found no program that shows the page");
    }
    if (ended != 0) {
      return;
    }
    std::this_thread::sleep_for(tick);
  }
}

}  // namespace host
