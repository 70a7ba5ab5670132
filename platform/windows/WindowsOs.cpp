// The file calls of Windows behind the seam.
#include <memory>
#include <string>

#include "platform/Os.h"
#include "platform/portable/File.h"
#include "platform/portable/FileNames.h"

namespace {

int causeOf(DWORD error) {
  switch (error) {
    case ERROR_FILE_NOT_FOUND:
      return CFileException::fileNotFound;
    case ERROR_PATH_NOT_FOUND:
    case ERROR_INVALID_NAME:
    case ERROR_BAD_PATHNAME:
    case ERROR_DIRECTORY:
    case ERROR_FILENAME_EXCED_RANGE:
    case ERROR_INVALID_DRIVE:
    case ERROR_BAD_NETPATH:
    case ERROR_BAD_NET_NAME:
      return CFileException::badPath;
    case ERROR_TOO_MANY_OPEN_FILES:
      return CFileException::tooManyOpenFiles;
    case ERROR_ACCESS_DENIED:
    case ERROR_WRITE_PROTECT:
    case ERROR_ALREADY_EXISTS:
    case ERROR_FILE_EXISTS:
      return CFileException::accessDenied;
    case ERROR_INVALID_HANDLE:
      return CFileException::invalidFile;
    case ERROR_CURRENT_DIRECTORY:
      return CFileException::removeCurrentDir;
    case ERROR_CANNOT_MAKE:
      return CFileException::directoryFull;
    case ERROR_SEEK:
    case ERROR_NEGATIVE_SEEK:
    case ERROR_INVALID_PARAMETER:
      return CFileException::badSeek;
    case ERROR_CRC:
    case ERROR_NOT_READY:
    case ERROR_READ_FAULT:
    case ERROR_WRITE_FAULT:
    case ERROR_IO_DEVICE:
    case ERROR_GEN_FAILURE:
      return CFileException::hardIO;
    case ERROR_SHARING_VIOLATION:
      return CFileException::sharingViolation;
    case ERROR_LOCK_VIOLATION:
      return CFileException::lockViolation;
    case ERROR_DISK_FULL:
    case ERROR_HANDLE_DISK_FULL:
      return CFileException::diskFull;
    case ERROR_HANDLE_EOF:
      return CFileException::endOfFile;
    default:
      return CFileException::genericException;
  }
}

Os::Error errorOf(DWORD error) {
  return {causeOf(error), static_cast<LONG>(error)};
}

Os::Error resultOf(BOOL success) {
  return success ? Os::Error() : errorOf(GetLastError());
}

DWORD accessOf(UINT flags) {
  switch (flags & 3U) {
    case CFile::modeRead:
      return GENERIC_READ;
    case CFile::modeWrite:
      return GENERIC_WRITE;
    default:
      return GENERIC_READ | GENERIC_WRITE;
  }
}

DWORD sharingOf(UINT flags) {
  switch (flags & 0x70U) {
    case CFile::shareDenyWrite:
      return FILE_SHARE_READ;
    case CFile::shareDenyRead:
      return FILE_SHARE_WRITE;
    case CFile::shareDenyNone:
      return FILE_SHARE_READ | FILE_SHARE_WRITE;
    default:
      return 0;
  }
}

DWORD dispositionOf(UINT flags) {
  if ((flags & CFile::modeCreate) == 0) {
    return OPEN_EXISTING;
  }
  return (flags & CFile::modeNoTruncate) != 0 ? OPEN_ALWAYS : CREATE_ALWAYS;
}

Os::Entry entryOf(const WIN32_FIND_DATAW& found) {
  Os::Entry entry;
  entry.name = found.cFileName;
  entry.isFolder = (found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
  entry.length = ULONGLONG{found.nFileSizeHigh} << 32 | found.nFileSizeLow;
  return entry;
}

struct CloseSearch {
  void operator()(HANDLE search) const { FindClose(search); }
};
using Search = std::unique_ptr<void, CloseSearch>;

// Calls `fill(size, buffer)`, which answers the length, or the size needed when the buffer is too small.
template <class Fill>
Os::Error readPath(Fill fill, CString& path) {
  std::wstring buffer(MAX_PATH, 0);
  DWORD length = fill(static_cast<DWORD>(buffer.size()), buffer.data());
  while (length > buffer.size()) {
    buffer.resize(length);
    length = fill(static_cast<DWORD>(buffer.size()), buffer.data());
  }
  if (length == 0) {
    return errorOf(GetLastError());
  }
  path = CString(buffer.data(), static_cast<int>(length));
  return {};
}

class WindowsOs : public Os {
 public:
  Error open(LPCTSTR path, UINT flags, Handle& opened) override {
    const HANDLE file = CreateFileW(path, accessOf(flags), sharingOf(flags), nullptr, dispositionOf(flags),
                                    FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE) {
      return errorOf(GetLastError());
    }
    opened = reinterpret_cast<Handle>(file);
    return {};
  }

  Error read(Handle file, void* buffer, UINT count, UINT& got) override {
    DWORD bytes = 0;
    const BOOL success = ReadFile(handle(file), buffer, count, &bytes, nullptr);
    got = bytes;
    return !success && GetLastError() == ERROR_BROKEN_PIPE ? Error() : resultOf(success);
  }

  Error write(Handle file, const void* buffer, UINT count, UINT& put) override {
    DWORD bytes = 0;
    const BOOL success = WriteFile(handle(file), buffer, count, &bytes, nullptr);
    put = bytes;
    return resultOf(success);
  }

  Error seek(Handle file, LONGLONG offset, UINT from, ULONGLONG& position) override {
    LARGE_INTEGER distance;
    LARGE_INTEGER after;
    distance.QuadPart = offset;
    after.QuadPart = 0;
    const BOOL success = SetFilePointerEx(handle(file), distance, &after, from);  // FILE_BEGIN is begin, ...
    position = static_cast<ULONGLONG>(after.QuadPart);
    return resultOf(success);
  }

  Error length(Handle file, ULONGLONG& bytes) override {
    LARGE_INTEGER size;
    size.QuadPart = 0;
    const BOOL success = GetFileSizeEx(handle(file), &size);
    bytes = static_cast<ULONGLONG>(size.QuadPart);
    return resultOf(success);
  }

  Error setLength(Handle file, ULONGLONG bytes) override {
    FILE_END_OF_FILE_INFO info;
    info.EndOfFile.QuadPart = static_cast<LONGLONG>(bytes);
    return resultOf(SetFileInformationByHandle(handle(file), FileEndOfFileInfo, &info, sizeof info));
  }

  Error flush(Handle file) override {
    const BOOL success = FlushFileBuffers(handle(file));
    // A file that is open for reading only has nothing to hand to the disk.
    return !success && GetLastError() == ERROR_ACCESS_DENIED ? Error() : resultOf(success);
  }

  Error close(Handle file) override { return resultOf(CloseHandle(handle(file))); }

  Error remove(LPCTSTR path) override { return resultOf(DeleteFileW(path)); }

  Error rename(LPCTSTR before, LPCTSTR after) override { return resultOf(MoveFileW(before, after)); }

  Error list(LPCTSTR folder, std::vector<Entry>& entries) override {
    WIN32_FIND_DATAW found;
    const HANDLE first = FindFirstFileW(joinPath(folder, _T("*")), &found);
    if (first == INVALID_HANDLE_VALUE) {
      return errorOf(GetLastError());
    }
    const Search search(first);
    do {
      entries.push_back(entryOf(found));
    } while (FindNextFileW(first, &found));
    return GetLastError() == ERROR_NO_MORE_FILES ? Error() : errorOf(GetLastError());
  }

  Error status(LPCTSTR path, Entry& entry) override {
    WIN32_FIND_DATAW found;
    const HANDLE first = FindFirstFileW(path, &found);
    if (first == INVALID_HANDLE_VALUE) {
      return errorOf(GetLastError());
    }
    const Search search(first);
    entry = entryOf(found);
    return {};
  }

  Error fullPath(LPCTSTR path, CString& full) override {
    return readPath([&](DWORD size, LPTSTR buffer) { return GetFullPathNameW(path, size, buffer, nullptr); },
                    full);
  }

  Error currentFolder(CString& path) override {
    return readPath([](DWORD size, LPTSTR buffer) { return GetCurrentDirectoryW(size, buffer); }, path);
  }

  Error setCurrentFolder(LPCTSTR path) override { return resultOf(SetCurrentDirectoryW(path)); }

 private:
  static HANDLE handle(Handle file) { return reinterpret_cast<HANDLE>(file); }
};

}  // namespace

Os& realOs() {
  static WindowsOs os;
  return os;
}
