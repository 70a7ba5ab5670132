// CFileDialog: asks for files to open or to save, answered by the installed operator (platform/Operator.h).
// Without one it is the system's dialog on Windows, and cancelled elsewhere.
#pragma once

#include <vector>

#include "platform/portable/Object.h"
#include "platform/portable/String.h"

#ifdef _WIN32

// Windows' own function knows nothing of dialogs that the operator answers.
#define CommDlgExtendedError platformDialogError

#else

struct OPENFILENAME {
  DWORD lStructSize;
  LPCTSTR lpstrFilter;      // pairs of text and pattern, each closed by 0, and a 0 after the last
  DWORD nFilterIndex;       // counted from 1
  LPTSTR lpstrFile;         // the name before, the chosen paths after
  DWORD nMaxFile;           // size of lpstrFile in units
  LPCTSTR lpstrInitialDir;  // where to start looking, or null
  LPCTSTR lpstrTitle;       // or null
  DWORD Flags;              // OFN_...
  WORD nFileOffset;         // where in lpstrFile the (first) name starts
  WORD nFileExtension;      // where in lpstrFile its extension starts, 0 when there are several names
  LPCTSTR lpstrDefExt;      // extension for names without one, without its point, or null
};

constexpr DWORD OFN_READONLY = 0x1;
constexpr DWORD OFN_OVERWRITEPROMPT = 0x2;
constexpr DWORD OFN_HIDEREADONLY = 0x4;
constexpr DWORD OFN_NOCHANGEDIR = 0x8;
constexpr DWORD OFN_ALLOWMULTISELECT = 0x200;
constexpr DWORD OFN_PATHMUSTEXIST = 0x800;
constexpr DWORD OFN_FILEMUSTEXIST = 0x1000;
constexpr DWORD OFN_EXPLORER = 0x80000;

constexpr DWORD FNERR_BUFFERTOOSMALL = 0x3003;

#endif

// Why the last dialog ended without a choice: FNERR_BUFFERTOOSMALL, or 0 when it was cancelled.
DWORD CommDlgExtendedError();

class CFileDialog : public CObject {
 public:
  // `open` FALSE asks for a file to save. `filter` is "Text (*.txt)|*.txt|All files|*.*||".
  explicit CFileDialog(BOOL open, LPCTSTR defaultExtension = nullptr, LPCTSTR fileName = nullptr,
                       DWORD flags = OFN_HIDEREADONLY | OFN_OVERWRITEPROMPT, LPCTSTR filter = nullptr,
                       CWnd* parent = nullptr, DWORD size = 0, BOOL vistaStyle = TRUE);
  ~CFileDialog() override;

  // IDOK, and lpstrFile holds the choice: one file as its full path; several of one folder as the folder,
  // then the names, each closed by 0, and a 0 after the last; several of different folders as an empty
  // folder, then full paths. IDCANCEL: nothing was chosen, or it does not fit (see CommDlgExtendedError). A
  // chosen name without an extension gets lpstrDefExt. nFilterIndex becomes the first filter that matches the
  // chosen name, unless the one set before matches it or none does.
  virtual INT_PTR DoModal();

  // Of the (first) chosen file.
  CString GetPathName() const;
  CString GetFileName() const;
  CString GetFileExt() const;  // without its point

  // All chosen files, one full path at a time.
  POSITION GetStartPosition() const;
  CString GetNextPathName(POSITION& position) const;

  OPENFILENAME m_ofn;

 private:
  INT_PTR askWithoutOperator();
  void spoilName();
  bool layOut(const std::vector<CString>& paths);

  bool m_open;
  bool m_several = false;
  CString m_filter;
  CString m_filterPairs;
  CString m_defaultExtension;
  TCHAR m_fileName[MAX_PATH];
  CWnd* m_parent;
};
