// The one seam for all calls on files and folders. Not an MFC name: programs leave it alone, tests put a
// failing double in its place.
//
// Paths are absolute or relative to the current directory; positions and lengths are bytes.
#pragma once

#include <cstdint>
#include <vector>

#include "platform/portable/String.h"

class Os {
 public:
  using Handle = std::intptr_t;

  // Tests true when the call failed.
  struct Error {
    int cause = 0;  // a cause of CFileException, 0 is none
    LONG code = 0;  // the system's own number: GetLastError or errno
    explicit operator bool() const { return cause != 0; }
  };

  struct Entry {
    CString name;  // without its folder
    ULONGLONG length = 0;
    bool isFolder = false;
  };

  Os() = default;
  Os(const Os&) = delete;
  Os& operator=(const Os&) = delete;
  virtual ~Os();

  virtual Error open(LPCTSTR path, UINT flags, Handle& opened) = 0;  // flags of CFile; a folder: accessDenied
  virtual Error read(Handle file, void* buffer, UINT count, UINT& got) = 0;         // 0 got: the end
  virtual Error write(Handle file, const void* buffer, UINT count, UINT& put) = 0;  // may put less
  virtual Error seek(Handle file, LONGLONG offset, UINT from, ULONGLONG& position) = 0;
  virtual Error length(Handle file, ULONGLONG& bytes) = 0;
  virtual Error setLength(Handle file, ULONGLONG bytes) = 0;
  virtual Error flush(Handle file) = 0;
  virtual Error close(Handle file) = 0;  // the handle is gone even when this fails

  virtual Error remove(LPCTSTR path) = 0;
  virtual Error rename(LPCTSTR before, LPCTSTR after) = 0;              // never replaces a file
  virtual Error list(LPCTSTR folder, std::vector<Entry>& entries) = 0;  // in any order, "." and ".." too
  virtual Error status(LPCTSTR path, Entry& entry) = 0;
  virtual Error fullPath(LPCTSTR path, CString& full) = 0;
  virtual Error currentFolder(CString& path) = 0;
  virtual Error setCurrentFolder(LPCTSTR path) = 0;
};

// The system that every file call goes to.
Os& currentOs();

// The real one, whatever is in its place: for doubles that pass calls on.
Os& realOs();

// Puts `next` in its place (the real one, when null) and returns what stood there. The caller keeps both
// alive.
Os* replaceOs(Os* next);

// What ends a folder's name in a path: a backslash on Windows, a slash elsewhere.
constexpr TCHAR pathSeparator =
#ifdef _WIN32
    _T('\\');
#else
    _T('/');
#endif

// True for what separates names in a path: also the slash on Windows.
constexpr bool isPathSeparator(TCHAR unit) {
  return unit == _T('/') || unit == pathSeparator;
}
