// CFileFind: the files and folders that a path or a pattern names.
//
// Call FindNextFile once before the first getter; when it returns FALSE, its file is still a valid last one.
// Names come in order, ignoring case. Patterns (* and ?) ignore case, and *.* means every name. A path
// without a pattern finds the file or folder of that name: the exact one, else one that differs in case only.
// Like the disk's own listing, a pattern can find "." and "..": see IsDots.
#pragma once

#include <cstddef>
#include <vector>

#include "platform/portable/Object.h"
#include "platform/portable/String.h"

class CFileFind : public CObject {
 public:
  CFileFind();
  ~CFileFind() override;

  // Starts a search; the null pointer means *.*. A relative path starts in the current directory.
  // FALSE: there is none. `unused` must be 0.
  virtual BOOL FindFile(LPCTSTR name = nullptr, DWORD unused = 0);
  // Steps to the next file. TRUE: more follow.
  virtual BOOL FindNextFile();
  void Close();

  // Of the current file. Before the first step: empty text, 0, FALSE.
  virtual CString GetFileName() const;   // name with extension
  virtual CString GetFileTitle() const;  // name without its last extension
  virtual CString GetFilePath() const;   // absolute
  virtual CString GetRoot() const;       // its folder, absolute, closed by a separator
  ULONGLONG GetLength() const;           // bytes
  BOOL IsDirectory() const;
  virtual BOOL IsDots() const;

 private:
  struct Found {
    CString name;
    ULONGLONG length;
    bool isFolder;
  };
  const Found* current() const;

  CString m_root;       // absolute, closed by a separator
  CString m_rootGiven;  // as FindFile got it
  std::vector<Found> m_found;
  std::size_t m_next = 0;
};
