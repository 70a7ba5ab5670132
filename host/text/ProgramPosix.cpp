#include <array>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <stdexcept>
#include <sys/wait.h>
#include <unistd.h>

#include "host/text/EndingHeldBack.h"
#include "host/text/Program.h"

extern "C" char** environ;  // POSIX leaves it to the program to declare it

namespace host {

namespace {

constexpr std::size_t mostSaid = 262144;

[[noreturn]] void refuse(int error) {
  throw std::runtime_error(std::string("cannot be started: ") + std::strerror(error));
}

// Both ends of a pipe, which no other program inherits.
struct Pipe {
  std::array<int, 2> ends = {-1, -1};

  Pipe() {
    if (::pipe2(ends.data(), O_CLOEXEC) != 0) {
      refuse(errno);
    }
  }
  ~Pipe() {
    closeEnd(0);
    closeEnd(1);
  }
  Pipe(const Pipe&) = delete;
  Pipe& operator=(const Pipe&) = delete;

  void closeEnd(std::size_t which) {
    if (ends.at(which) >= 0) {
      (void)::close(ends.at(which));
      ends.at(which) = -1;
    }
  }
};

pid_t start(const std::filesystem::path& program, const std::vector<std::filesystem::path>& arguments,
            int output) {
  std::vector<char*> words = {const_cast<char*>(program.c_str())};
  for (const std::filesystem::path& argument : arguments) {
    words.push_back(const_cast<char*>(argument.c_str()));
  }
  words.push_back(nullptr);
  posix_spawn_file_actions_t actions;
  ::posix_spawn_file_actions_init(&actions);
  ::posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
  ::posix_spawn_file_actions_adddup2(&actions, output, STDOUT_FILENO);
  ::posix_spawn_file_actions_adddup2(&actions, output, STDERR_FILENO);
  posix_spawnattr_t attributes;
  ::posix_spawnattr_init(&attributes);
  sigset_t none;
  ::sigemptyset(&none);
  ::posix_spawnattr_setsigmask(&attributes, &none);
  ::posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSIGMASK);
  pid_t child = -1;
  const int error = ::posix_spawn(&child, program.c_str(), &actions, &attributes, words.data(), environ);
  ::posix_spawnattr_destroy(&attributes);
  ::posix_spawn_file_actions_destroy(&actions);
  if (error != 0) {
    refuse(error);
  }
  return child;
}

// Until it has closed its output, or somebody asks for the end of all.
void listen(int input, pid_t child, std::string& said) {
  constexpr int tick = 50;  // ms
  std::array<char, 4096> buffer{};
  while (true) {
    pollfd wait = {input, POLLIN, 0};
    const int ready = ::poll(&wait, 1, tick);
    if (isEndAsked()) {
      (void)::kill(child, SIGKILL);
      return;
    }
    if (ready <= 0) {
      continue;
    }
    const ssize_t count = ::read(input, buffer.data(), buffer.size());
    if (count == 0 || (count < 0 && errno != EINTR)) {
      return;
    }
    if (count > 0 && said.size() < mostSaid) {
      said.append(buffer.data(), static_cast<std::size_t>(count));
    }
  }
}

}  // namespace

std::filesystem::path ownFolder() {
  return std::filesystem::read_symlink("/proc/self/exe").parent_path();
}

ProgramEnd runProgram(const std::filesystem::path& program,
                      const std::vector<std::filesystem::path>& arguments) {
  Pipe pipe;
  const pid_t child = start(program, arguments, pipe.ends[1]);
  pipe.closeEnd(1);
  ProgramEnd result;
  listen(pipe.ends[0], child, result.said);
  int status = 0;
  while (::waitpid(child, &status, 0) < 0 && errno == EINTR) {
  }
  result.code = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
  result.ending = WIFSIGNALED(status) ? "signal " + std::to_string(WTERMSIG(status)) : "";
  return result;
}

}  // namespace host
