#include "platform/portable/FileDialog.h"

#include <algorithm>
#include <vector>

#include "platform/LeastPromise.h"
#include "platform/Operator.h"
#include "platform/Os.h"
#include "platform/portable/FileNames.h"
#include "platform/portable/SystemDialogs.h"

namespace {

DWORD lastError = 0;

// Only that an error occurred is promised, not which.
constexpr DWORD someError = 0xFFFF;

std::vector<CString> split(const CString& text, TCHAR separator) {
  std::vector<CString> parts;
  int start = 0;
  for (int at = text.Find(separator); at >= 0; at = text.Find(separator, start)) {
    parts.push_back(text.Mid(start, at - start));
    start = at + 1;
  }
  parts.push_back(text.Mid(start));
  return parts;
}

// The patterns of a filter text, one text per filter ("*.dip;*.txt").
std::vector<CString> patternsOf(const CString& filter) {
  std::vector<CString> patterns;
  const std::vector<CString> parts = split(filter, _T('|'));
  for (std::size_t i = 1; i < parts.size() && !parts[i - 1].IsEmpty(); i += 2) {
    patterns.push_back(parts[i]);
  }
  return patterns;
}

bool matchesAny(const CString& name, const CString& patterns) {
  const std::vector<CString> all = split(patterns, _T(';'));
  return std::ranges::any_of(all, [&](CString pattern) { return matchesPattern(name, pattern.Trim()); });
}

DWORD filterFor(const CString& name, const CString& filter, DWORD offered) {
  const std::vector<CString> patterns = patternsOf(filter);
  const auto matches = [&](const CString& pattern) { return matchesAny(name, pattern); };
  if (offered >= 1 && offered <= patterns.size() && matches(patterns[offered - 1])) {
    return offered;
  }
  const auto first = std::ranges::find_if(patterns, matches);
  return first == patterns.end() ? offered : static_cast<DWORD>(first - patterns.begin()) + 1;
}

CString nameOf(const CString& path) {
  return path.Mid(nameStart(path));
}

CString folderOf(const CString& path) {
  return path.Left(nameStart(path));
}

CString extensionOf(const CString& path) {
  const CString name = nameOf(path);
  const int point = name.ReverseFind(_T('.'));
  return point < 0 ? CString() : name.Mid(point + 1);
}

bool hasExtension(const CString& path) {
  return nameOf(path).Find(_T('.')) >= 0;
}

CString completed(const CString& path, LPCTSTR extension) {
  CString full;
  if (currentOs().fullPath(path, full)) {
    full = path;
  }
  if (extension != nullptr && *extension != 0 && !hasExtension(full)) {
    full += CString(_T('.')) + extension;
  }
  return full;
}

bool oneFolder(const std::vector<CString>& paths) {
  const CString folder = folderOf(paths.front());
  return std::ranges::all_of(paths, [&](const CString& path) { return folderOf(path) == folder; });
}

// The texts one after the other, each closed by 0, as they lie in the buffer of the dialog.
class Texts {
 public:
  void add(const CString& text) {
    m_units.insert(m_units.end(), text.GetString(), text.GetString() + text.GetLength() + 1);
  }
  void close() { m_units.push_back(0); }
  const std::vector<TCHAR>& units() const { return m_units; }

 private:
  std::vector<TCHAR> m_units;
};

// A folder's path as it is laid out: without its last separator, unless it is a root ("C:\", "/").
CString laidOutFolder(const CString& path) {
  CString folder = folderOf(path);
  const int length = folder.GetLength();
  const bool root = length <= 1 || folder[length - 2] == _T(':');
  return root ? folder : folder.Left(length - 1);
}

}  // namespace

DWORD CommDlgExtendedError() {
  return lastError;
}

CFileDialog::CFileDialog(BOOL open, LPCTSTR defaultExtension, LPCTSTR fileName, DWORD flags, LPCTSTR filter,
                         CWnd* parent, DWORD /*size*/, BOOL /*vistaStyle*/)
    : m_ofn(),
      m_open(open != FALSE),
      m_filter(filter),
      m_defaultExtension(defaultExtension),
      m_fileName(),
      m_parent(parent) {
  const CString name = fileName;
  std::copy_n(name.GetString(), (std::min)(name.GetLength(), MAX_PATH - 1), m_fileName);
  m_filterPairs = m_filter;
  m_filterPairs.Replace(_T('|'), TCHAR{0});
  m_ofn.lStructSize = sizeof m_ofn;
  m_ofn.lpstrFile = m_fileName;
  m_ofn.nMaxFile = MAX_PATH;
  m_ofn.Flags = flags | OFN_EXPLORER;
  m_ofn.lpstrFilter = m_filter.IsEmpty() ? nullptr : m_filterPairs.GetString();
  m_ofn.lpstrDefExt = defaultExtension == nullptr ? nullptr : m_defaultExtension.GetString();
}

CFileDialog::~CFileDialog() = default;

INT_PTR CFileDialog::DoModal() {
  lastError = 0;
  m_several = false;
  Operator* someone = installedOperator();
  if (someone == nullptr) {
    return askWithoutOperator();
  }
  FileQuestion question;
  question.open = m_open;
  question.multiple = (m_ofn.Flags & OFN_ALLOWMULTISELECT) != 0;
  question.title = m_ofn.lpstrTitle;
  question.name = m_ofn.lpstrFile;
  question.folder = m_ofn.lpstrInitialDir;
  question.extension = m_ofn.lpstrDefExt;
  question.filter = m_filter;
  question.filterIndex = m_ofn.nFilterIndex;
  question.flags = m_ofn.Flags;
  std::vector<CString> paths;
  if (!someone->chooseFiles(question, paths) || paths.empty() || (paths.size() > 1 && !question.multiple)) {
    spoilName();
    return IDCANCEL;
  }
  for (CString& path : paths) {
    path = completed(path, m_ofn.lpstrDefExt);
  }
  if (!layOut(paths)) {
    lastError = isLeastPromised() ? someError : FNERR_BUFFERTOOSMALL;
    spoilName();
    return IDCANCEL;
  }
  if (!isLeastPromised()) {
    m_ofn.nFilterIndex = filterFor(nameOf(paths.front()), m_filter, m_ofn.nFilterIndex);
  }
  return IDOK;
}

// What the buffer holds when nothing was chosen is open: only that it is a text.
void CFileDialog::spoilName() {
  if (isLeastPromised() && m_ofn.nMaxFile > 0) {
    spoil(m_ofn.lpstrFile, m_ofn.nMaxFile * sizeof(TCHAR));
    m_ofn.lpstrFile[m_ofn.nMaxFile - 1] = 0;
  }
}

INT_PTR CFileDialog::askWithoutOperator() {
  if (!askSystem(m_ofn, m_open, m_parent, lastError)) {
    return IDCANCEL;
  }
  // Behind a folder stands its end, behind a part of one path a separator.
  const bool many = (m_ofn.Flags & OFN_ALLOWMULTISELECT) != 0 && m_ofn.nFileOffset > 0;
  m_several = many && m_ofn.lpstrFile[m_ofn.nFileOffset - 1] == 0;
  return IDOK;
}

bool CFileDialog::layOut(const std::vector<CString>& paths) {
  const bool several = paths.size() > 1;
  const bool shared = several && oneFolder(paths);
  Texts texts;
  if (several) {
    texts.add(shared ? laidOutFolder(paths.front()) : CString());
  }
  const std::size_t firstName = texts.units().size();
  for (const CString& path : paths) {
    texts.add(shared ? nameOf(path) : path);
  }
  if ((m_ofn.Flags & OFN_ALLOWMULTISELECT) != 0) {
    texts.close();
  }
  if (texts.units().size() > m_ofn.nMaxFile) {
    return false;
  }
  std::ranges::copy(texts.units(), m_ofn.lpstrFile);
  m_several = several;
  const std::size_t offset = several ? firstName : static_cast<std::size_t>(nameStart(paths.front()));
  m_ofn.nFileOffset = static_cast<WORD>(offset);
  const bool extension = !several && hasExtension(paths.front());
  m_ofn.nFileExtension =
      extension ? static_cast<WORD>(paths.front().GetLength() - extensionOf(paths.front()).GetLength())
                : WORD{0};
  return true;
}

CString CFileDialog::GetPathName() const {
  if (isLeastPromised()) {
    return m_ofn.lpstrFile;  // of several files, their folder
  }
  POSITION position = GetStartPosition();
  return position == nullptr ? CString() : GetNextPathName(position);
}

CString CFileDialog::GetFileName() const {
  return nameOf(GetPathName());
}

CString CFileDialog::GetFileExt() const {
  return extensionOf(GetPathName());
}

POSITION CFileDialog::GetStartPosition() const {
  if (isLeastPromised() && (m_ofn.Flags & OFN_ALLOWMULTISELECT) == 0) {
    endUnpromised("the list of files is asked for where only one can be chosen");
  }
  if (m_several) {
    return reinterpret_cast<POSITION>(m_ofn.lpstrFile + m_ofn.nFileOffset);
  }
  return m_ofn.lpstrFile == nullptr || *m_ofn.lpstrFile == 0 ? nullptr
                                                             : reinterpret_cast<POSITION>(m_ofn.lpstrFile);
}

CString CFileDialog::GetNextPathName(POSITION& position) const {
  const LPCTSTR text = reinterpret_cast<LPCTSTR>(position);
  CString name = text;
  if (!m_several) {
    position = nullptr;
    return name;
  }
  const LPCTSTR next = text + name.GetLength() + 1;
  position = *next == 0 ? nullptr : reinterpret_cast<POSITION>(const_cast<LPTSTR>(next));
  const CString folder = m_ofn.lpstrFile;
  return folder.IsEmpty() ? name : joinPath(folder, name);
}
