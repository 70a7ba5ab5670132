// The file calls of POSIX behind the seam. Paths go out as UTF-8, with bytes that are not UTF-8 kept
// (platform/Utf.h).
#include <cerrno>
#include <climits>
#include <cstdio>
#include <dirent.h>
#include <fcntl.h>
#include <memory>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/Os.h"
#include "platform/Utf.h"
#include "platform/portable/File.h"
#include "platform/portable/FileNames.h"

namespace {

int causeOf(int error) {
  switch (error) {
    case ENOENT:
      return CFileException::fileNotFound;
    case ENOTDIR:
    case ENAMETOOLONG:
    case ELOOP:
    case EILSEQ:
      return CFileException::badPath;
    case EMFILE:
    case ENFILE:
      return CFileException::tooManyOpenFiles;
    case EACCES:
    case EPERM:
    case EROFS:
    case EISDIR:
    case EEXIST:
    case ENOTEMPTY:
      return CFileException::accessDenied;
    case EBADF:
      return CFileException::invalidFile;
    case EINVAL:
    case EOVERFLOW:
    case ESPIPE:
      return CFileException::badSeek;
    case EIO:
      return CFileException::hardIO;
    case EBUSY:
    case ETXTBSY:
      return CFileException::sharingViolation;
    case EAGAIN:
    case EDEADLK:
    case ENOLCK:
      return CFileException::lockViolation;
    case ENOSPC:
    case EDQUOT:
    case EFBIG:
      return CFileException::diskFull;
    default:
      return CFileException::genericException;
  }
}

Os::Error errorOf(int error) {
  return {causeOf(error), static_cast<LONG>(error)};
}

Os::Error lastError() {
  return errorOf(errno);
}

Os::Error resultOf(int status) {
  return status == 0 ? Os::Error() : lastError();
}

bool isFolder(const std::string& path) {
  struct stat info = {};
  return ::stat(path.c_str(), &info) == 0 && S_ISDIR(info.st_mode);
}

// A missing folder and a missing file are one error here and two on Windows.
Os::Error pathError(const std::string& path) {
  const Os::Error error = lastError();
  const std::size_t slash = path.rfind('/');
  const bool badFolder =
      error.code == ENOENT && slash != std::string::npos && slash > 0 && !isFolder(path.substr(0, slash));
  return badFolder ? Os::Error{CFileException::badPath, ENOENT} : error;
}

Os::Error pathResult(int status, const std::string& path) {
  return status == 0 ? Os::Error() : pathError(path);
}

// Repeats a call that a signal interrupted.
template <class Call>
auto uninterrupted(Call call) {
  auto result = call();
  while (result < 0 && errno == EINTR) {
    result = call();
  }
  return result;
}

int openFlags(UINT flags) {
  constexpr int access[] = {O_RDONLY, O_WRONLY, O_RDWR, O_RDWR};
  int result = O_CLOEXEC | access[flags & 3U];
  if ((flags & CFile::modeCreate) != 0) {
    result |= O_CREAT | ((flags & CFile::modeNoTruncate) != 0 ? 0 : O_TRUNC);
  }
  return result;
}

Os::Entry entryOf(const char* name, const struct stat& info) {
  Os::Entry entry;
  entry.name = fromUtf8(name);
  entry.isFolder = S_ISDIR(info.st_mode);
  entry.length = entry.isFolder ? 0 : static_cast<ULONGLONG>(info.st_size);
  return entry;
}

// Follows links; a link that leads nowhere is described by itself.
bool describe(int folder, const char* name, struct stat& info) {
  return ::fstatat(folder, name, &info, 0) == 0 || ::fstatat(folder, name, &info, AT_SYMLINK_NOFOLLOW) == 0;
}

struct CloseFolder {
  void operator()(DIR* folder) const { ::closedir(folder); }
};

// Without "." and doubled or final slashes; ".." stays, since a link may stand before it.
std::string tidied(const std::string& path) {
  std::string result;
  std::size_t start = 0;
  while (start < path.size()) {
    std::size_t end = path.find('/', start);
    end = end == std::string::npos ? path.size() : end;
    const std::string part = path.substr(start, end - start);
    if (!part.empty() && part != ".") {
      result += '/' + part;
    }
    start = end + 1;
  }
  return result.empty() ? "/" : result;
}

class NativeOs : public Os {
 public:
  Error open(LPCTSTR path, UINT flags, Handle& opened) override {
    const std::string name = toUtf8(path);
    const int file = uninterrupted([&] { return ::open(name.c_str(), openFlags(flags), 0666); });
    if (file < 0) {
      return pathError(name);
    }
    struct stat info = {};
    if (::fstat(file, &info) == 0 && S_ISDIR(info.st_mode)) {
      ::close(file);
      return errorOf(EISDIR);
    }
    opened = file;
    return {};
  }

  Error read(Handle file, void* buffer, UINT count, UINT& got) override {
    const ssize_t result = uninterrupted([&] { return ::read(fd(file), buffer, count); });
    got = result < 0 ? 0U : static_cast<UINT>(result);
    return result < 0 ? lastError() : Error();
  }

  Error write(Handle file, const void* buffer, UINT count, UINT& put) override {
    const ssize_t result = uninterrupted([&] { return ::write(fd(file), buffer, count); });
    put = result < 0 ? 0U : static_cast<UINT>(result);
    return result < 0 ? lastError() : Error();
  }

  Error seek(Handle file, LONGLONG offset, UINT from, ULONGLONG& position) override {
    const int whence = from == CFile::begin ? SEEK_SET : from == CFile::current ? SEEK_CUR : SEEK_END;
    const off_t result = ::lseek(fd(file), offset, whence);
    position = result < 0 ? 0 : static_cast<ULONGLONG>(result);
    return result < 0 ? lastError() : Error();
  }

  Error length(Handle file, ULONGLONG& bytes) override {
    struct stat info = {};
    if (::fstat(fd(file), &info) != 0) {
      return lastError();
    }
    bytes = static_cast<ULONGLONG>(info.st_size);
    return {};
  }

  Error setLength(Handle file, ULONGLONG bytes) override {
    if (bytes > static_cast<ULONGLONG>(LLONG_MAX)) {
      return errorOf(EFBIG);
    }
    return resultOf(uninterrupted([&] { return ::ftruncate(fd(file), static_cast<off_t>(bytes)); }));
  }

  Error flush(Handle file) override {
    // A pipe or a terminal has nothing to hand to a disk.
    const int result = ::fsync(fd(file));
    return result != 0 && errno == EINVAL ? Error() : resultOf(result);
  }

  Error close(Handle file) override {
    // After EINTR the descriptor is gone all the same: closing again could close another's.
    return ::close(fd(file)) == 0 || errno == EINTR ? Error() : lastError();
  }

  Error remove(LPCTSTR path) override {
    const std::string name = toUtf8(path);
    return pathResult(::unlink(name.c_str()), name);
  }

  Error rename(LPCTSTR before, LPCTSTR after) override {
    const std::string from = toUtf8(before);
    const std::string to = toUtf8(after);
    int result = ::renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE);
    if (result != 0 && errno == EINVAL) {  // the disk's format cannot promise it in one step
      struct stat info = {};
      if (::lstat(to.c_str(), &info) == 0) {
        return errorOf(EEXIST);
      }
      result = ::rename(from.c_str(), to.c_str());
    }
    if (result == 0) {
      return {};
    }
    const Error error = pathError(from);
    struct stat info = {};
    return error.code == ENOENT && ::lstat(from.c_str(), &info) == 0 ? Error{CFileException::badPath, ENOENT}
                                                                     : error;
  }

  Error list(LPCTSTR folder, std::vector<Entry>& entries) override {
    const std::unique_ptr<DIR, CloseFolder> opened(::opendir(toUtf8(folder).c_str()));
    if (opened == nullptr) {
      return lastError();
    }
    errno = 0;
    while (const dirent* found = ::readdir(opened.get())) {
      struct stat info = {};
      describe(::dirfd(opened.get()), found->d_name, info);
      entries.push_back(entryOf(found->d_name, info));
      errno = 0;
    }
    return errno == 0 ? Error() : lastError();
  }

  Error status(LPCTSTR path, Entry& entry) override {
    const std::string name = toUtf8(path);
    struct stat info = {};
    if (!describe(AT_FDCWD, name.c_str(), info)) {
      return pathError(name);
    }
    entry = entryOf(name.c_str() + name.rfind('/') + 1, info);
    return {};
  }

  Error fullPath(LPCTSTR path, CString& full) override {
    std::string name = toUtf8(path);
    if (name.empty()) {
      return errorOf(ENOENT);
    }
    if (name.front() != '/') {
      CString folder;
      if (const Error error = currentFolder(folder)) {
        return error;
      }
      name = toUtf8(folder) + '/' + name;
    }
    full = fromUtf8(tidied(name));
    return {};
  }

  Error currentFolder(CString& path) override {
    char buffer[PATH_MAX];
    if (::getcwd(buffer, sizeof buffer) == nullptr) {
      return lastError();
    }
    path = fromUtf8(buffer);
    return {};
  }

  Error setCurrentFolder(LPCTSTR path) override { return resultOf(::chdir(toUtf8(path).c_str())); }

 private:
  static int fd(Handle file) { return static_cast<int>(file); }
};

}  // namespace

Os& realOs() {
  static NativeOs os;
  return os;
}
