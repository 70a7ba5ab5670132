// A file that is being imported, from open to close.
#pragma once

#include <afxwin.h>

#include "import/AnsiLineReader.h"

// Opens a file for reading. False after "Can't open file %s, error = %u\n" with the path and the cause.
inline bool openForImport(CFile& file, const CString& path) {
  CFileException error;
  if (file.Open(path, CFile::modeRead | CFile::shareDenyNone, &error)) {
    return true;
  }
  CString message;
  message.Format(_T("Can't open file %s, error = %u\n"), path.GetString(), static_cast<UINT>(error.m_cause));
  AfxMessageBox(message);
  return false;
}

// Hands a file's lines to `read` and closes the file. What the file or `read` throws passes through.
template <typename Read>
void readLines(CFile& file, Read read) {
  CArchive archive(&file, CArchive::load, 4096);
  try {
    AnsiLineReader reader(archive);
    read(reader);
    archive.Close();
  } catch (...) {
    archive.Abort();
    throw;
  }
  file.Close();
}
