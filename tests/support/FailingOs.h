// The real system, of which one call fails: to prove what happens when the disk gives out.
//
// It stands in the system's place from its first line to its last.
#pragma once

#include "platform/Os.h"

class FailingOs : public Os {
 public:
  enum class Call {
    none,
    any,
    open,
    read,
    write,
    seek,
    length,
    setLength,
    flush,
    close,
    remove,
    rename,
    list,
    status,
    fullPath,
    currentFolder,
    setCurrentFolder
  };

  FailingOs();
  // The `nth` (from 1) call of a kind, counted from now, fails with a cause of CFileException and code 12345;
  // later ones work again.
  FailingOs(Call kind, int nth, int cause);
  ~FailingOs() override;

  void failAt(Call kind, int nth, int cause);
  void stop() { m_kind = Call::none; }

  // Write at most this many bytes per call; 0 writes nothing. Negative: no limit.
  int maxWrite = -1;
  int maxRead = -1;

  int calls = 0;        // since the last failAt, of the kind that is to fail (all, for any and none)
  bool failed = false;  // since the last failAt

  Error open(LPCTSTR path, UINT flags, Handle& opened) override;
  Error read(Handle file, void* buffer, UINT count, UINT& got) override;
  Error write(Handle file, const void* buffer, UINT count, UINT& put) override;
  Error seek(Handle file, LONGLONG offset, UINT from, ULONGLONG& position) override;
  Error length(Handle file, ULONGLONG& bytes) override;
  Error setLength(Handle file, ULONGLONG bytes) override;
  Error flush(Handle file) override;
  Error close(Handle file) override;
  Error remove(LPCTSTR path) override;
  Error rename(LPCTSTR before, LPCTSTR after) override;
  Error list(LPCTSTR folder, std::vector<Entry>& entries) override;
  Error status(LPCTSTR path, Entry& entry) override;
  Error fullPath(LPCTSTR path, CString& full) override;
  Error currentFolder(CString& path) override;
  Error setCurrentFolder(LPCTSTR path) override;

 private:
  Error next(Call kind);

  Call m_kind = Call::none;
  int m_nth = 0;
  int m_cause = 0;
  Os* m_previous;
};
