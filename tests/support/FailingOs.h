// The real system, of which calls fail: to prove what happens when the disk gives out.
//
// It stands in the system's place from its first line to its last.
#pragma once

#include "platform/Os.h"
#include "tests/support/Lasting.h"

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
  // later ones work again, or not. The cause `none` fails without an error: nothing is read, as if the file
  // ended there, or nothing is written; other calls then work.
  FailingOs(Call kind, int nth, int cause, Lasting lasting = Lasting::once);
  ~FailingOs() override;

  void failAt(Call kind, int nth, int cause, Lasting lasting = Lasting::once);
  void stop() { m_kind = Call::none; }

  // Write at most this many bytes per call; 0 writes nothing. Negative: no limit.
  int maxWrite = -1;
  int maxRead = -1;

  int calls = 0;        // since the last failAt, of the kind that is to fail (all, for any and none)
  bool failed = false;  // since the last failAt
  int openFiles = 0;    // opened and not closed yet

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
  bool mustFail(Call kind);
  Error error() const { return {m_cause, 12345}; }
  Error next(Call kind) { return mustFail(kind) ? error() : Error(); }

  Call m_kind = Call::none;
  int m_nth = 0;
  int m_cause = 0;
  Lasting m_lasting = Lasting::once;
  Os* m_previous;
};
