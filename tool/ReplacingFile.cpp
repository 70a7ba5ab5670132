#include "tool/ReplacingFile.h"

#include <array>
#include <cerrno>
#include <climits>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <stdexcept>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace tool {
namespace {

constexpr std::string_view suffix = ".tmp";
constexpr std::array endingSignals = {SIGINT, SIGTERM, SIGHUP};

// What a signal has to remove. Plain memory, as a handler may touch no more; changed only while the signals
// are blocked.
std::array<char, PATH_MAX> unfinishedPath{};

[[noreturn]] void failBecause(const std::string& target, const std::string& cause) {
  throw std::runtime_error("cannot write " + target + ": " + cause);
}

void removeAndEnd(int signal) {
  if (unfinishedPath[0] != '\0') {
    (void)::unlink(unfinishedPath.data());
  }
  (void)std::signal(signal, SIG_DFL);
  (void)::raise(signal);
}

sigset_t endingSignalSet() {
  sigset_t set;
  ::sigemptyset(&set);
  for (const int signal : endingSignals) {
    ::sigaddset(&set, signal);
  }
  return set;
}

// Holds back the signals that would end the program, for a scope.
class SignalsHeldBack {
 public:
  SignalsHeldBack() {
    const sigset_t set = endingSignalSet();
    (void)::sigprocmask(SIG_BLOCK, &set, &m_before);
  }
  ~SignalsHeldBack() { (void)::sigprocmask(SIG_SETMASK, &m_before, nullptr); }
  SignalsHeldBack(const SignalsHeldBack&) = delete;
  SignalsHeldBack& operator=(const SignalsHeldBack&) = delete;

 private:
  sigset_t m_before{};
};

// Signals that the program was started to ignore stay ignored.
void removeOnSignals(const std::string& path) {
  if (path.size() < unfinishedPath.size()) {
    path.copy(unfinishedPath.data(), path.size());
    unfinishedPath.at(path.size()) = '\0';
  }
  for (const int signal : endingSignals) {
    struct sigaction action {};
    if (::sigaction(signal, nullptr, &action) == 0 && action.sa_handler != SIG_IGN) {
      action.sa_handler = removeAndEnd;
      action.sa_mask = endingSignalSet();
      (void)::sigaction(signal, &action, nullptr);
    }
  }
}

// Also a link to a file that is not there yet leads to its name.
std::string behindLinks(const std::string& name) {
  constexpr int mostLinks = 40;  // as the system itself allows
  std::filesystem::path path = name;
  for (int i = 0; i < mostLinks && std::filesystem::is_symlink(path); ++i) {
    path = path.parent_path() / std::filesystem::read_symlink(path);
  }
  return path.string();
}

bool isEndingInSlash(const std::string& name) {
  return name.empty() || name.back() == '/';
}

void refuseWhatMustStay(const std::string& name, const std::string& target) {
  if (isEndingInSlash(name)) {
    failBecause(name, "the name of a file is missing");
  }
  const std::filesystem::file_status status = std::filesystem::status(target);
  if (std::filesystem::is_directory(status)) {
    failBecause(name, "it is a folder");
  }
  if (std::filesystem::exists(status) && !std::filesystem::is_regular_file(status)) {
    failBecause(name, "it is not a regular file");
  }
  if (std::filesystem::exists(status) && ::access(target.c_str(), W_OK) != 0) {
    failBecause(name, std::strerror(errno));
  }
}

// The permissions that a program gives a file it creates.
mode_t usualMode() {
  const mode_t mask = ::umask(0);
  ::umask(mask);
  return 0666 & ~mask;
}

std::string folderOf(const std::string& path) {
  const std::string folder = std::filesystem::path(path).parent_path().string();
  return folder.empty() ? "." : folder;
}

}  // namespace

ReplacingFile::ReplacingFile(std::string target) : m_name(std::move(target)) {
  try {
    m_target = std::filesystem::absolute(behindLinks(m_name)).string();
    refuseWhatMustStay(m_name, m_target);
  } catch (const std::filesystem::filesystem_error& error) {
    failBecause(m_name, error.code().message());
  }
  // Not the target's name with something behind it: that may be too long for a name.
  m_path = folderOf(m_target) + "/.dipole-XXXXXX" + std::string(suffix);
  const SignalsHeldBack heldBack;
  m_descriptor = ::mkostemps(m_path.data(), static_cast<int>(suffix.size()), O_CLOEXEC);
  if (m_descriptor < 0) {
    fail();
  }
  removeOnSignals(m_path);
}

ReplacingFile::~ReplacingFile() {
  const SignalsHeldBack heldBack;
  (void)::close(m_descriptor);
  if (!m_isKept) {
    (void)::unlink(m_path.c_str());
  }
  unfinishedPath[0] = '\0';
}

void ReplacingFile::write(std::string_view bytes) const {
  while (!bytes.empty()) {
    const ssize_t count = ::write(m_descriptor, bytes.data(), bytes.size());
    if (count < 0 && errno != EINTR) {
      fail();
    }
    bytes.remove_prefix(count > 0 ? static_cast<std::size_t>(count) : 0);
  }
}

void ReplacingFile::takePlace() {
  setUsualMode();
  if (::fsync(m_descriptor) != 0) {
    fail();
  }
  const SignalsHeldBack heldBack;
  if (std::rename(m_path.c_str(), m_target.c_str()) != 0) {
    fail();
  }
  m_isKept = true;
  unfinishedPath[0] = '\0';
  syncFolder();
}

void ReplacingFile::setUsualMode() const {
  struct stat old {};
  const mode_t mode = ::stat(m_target.c_str(), &old) == 0 ? old.st_mode & 07777 : usualMode();
  if (::fchmod(m_descriptor, mode) != 0) {
    fail();
  }
}

// The new name reaches the disk as well. Where the system cannot do that the file is whole all the same.
void ReplacingFile::syncFolder() const {
  const int folder = ::open(folderOf(m_target).c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (folder >= 0) {
    (void)::fsync(folder);
    (void)::close(folder);
  }
}

void ReplacingFile::fail() const {
  failBecause(m_name, std::strerror(errno));
}

}  // namespace tool
