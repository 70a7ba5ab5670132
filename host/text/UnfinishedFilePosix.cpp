#include <array>
#include <cerrno>
#include <climits>
#include <csignal>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>
#include <utility>

#include "host/text/EndingHeldBack.h"
#include "host/text/UnfinishedFile.h"

namespace host {

namespace {

namespace fs = std::filesystem;

// What a signal has to remove. Plain memory, as a handler may touch no more; changed only while the signals
// are held back.
std::array<char, PATH_MAX> unfinishedPath{};
std::array<struct sigaction, endingSignals.size()> actionsBefore{};

void removeAndEnd(int signal) {
  if (unfinishedPath[0] != '\0') {
    (void)::unlink(unfinishedPath.data());
  }
  (void)std::signal(signal, SIG_DFL);
  (void)::raise(signal);
}

void removeOnSignals(const std::string& path) {
  if (path.size() < unfinishedPath.size()) {
    path.copy(unfinishedPath.data(), path.size());
    unfinishedPath.at(path.size()) = '\0';
  }
  for (std::size_t i = 0; i < endingSignals.size(); ++i) {
    struct sigaction& before = actionsBefore.at(i);
    if (::sigaction(endingSignals.at(i), nullptr, &before) == 0 && before.sa_handler != SIG_IGN) {
      struct sigaction action = before;
      action.sa_flags = 0;
      action.sa_handler = removeAndEnd;
      action.sa_mask = endingSignalSet();
      (void)::sigaction(endingSignals.at(i), &action, nullptr);
    }
  }
}

void leaveSignalsAlone() {
  unfinishedPath[0] = '\0';
  for (std::size_t i = 0; i < endingSignals.size(); ++i) {
    (void)::sigaction(endingSignals.at(i), &actionsBefore.at(i), nullptr);
  }
}

// The permissions that a program gives a file it creates.
mode_t usualMode() {
  const mode_t mask = ::umask(0);
  ::umask(mask);
  return 0666 & ~mask;
}

// Where the system cannot do that the file is whole all the same.
void syncFolder(const fs::path& path) {
  const int folder = ::open(path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (folder >= 0) {
    (void)::fsync(folder);
    (void)::close(folder);
  }
}

}  // namespace

UnfinishedFile::UnfinishedFile(fs::path path) : m_path(std::move(path)) {
  const EndingHeldBack heldBack;
  const int descriptor = ::open(m_path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600);
  if (descriptor < 0) {
    throw fs::filesystem_error("create", m_path, std::error_code(errno, std::generic_category()));
  }
  (void)::close(descriptor);
  removeOnSignals(m_path.native());
}

UnfinishedFile::~UnfinishedFile() {
  const EndingHeldBack heldBack;
  if (!m_isKept) {
    (void)::unlink(m_path.c_str());
  }
  leaveSignalsAlone();
}

void UnfinishedFile::become(const fs::path& target) {
  const fs::path folder = target.parent_path();  // behind the new name nothing may fail
  struct stat old {};
  const mode_t mode = ::stat(target.c_str(), &old) == 0 ? old.st_mode & 07777U : usualMode();
  fs::permissions(m_path, static_cast<fs::perms>(mode));
  {
    const EndingHeldBack heldBack;
    fs::rename(m_path, target);
    m_isKept = true;
    unfinishedPath[0] = '\0';
  }
  syncFolder(folder);
}

std::string whyReadOnly(const fs::path& path) {
  return ::access(path.c_str(), W_OK) == 0 ? std::string() : std::strerror(errno);
}

std::string unfinishedPrefix() {
  return ".dipole-";
}

}  // namespace host
