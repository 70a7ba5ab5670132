#include "platform/portable/FileFind.h"

#include <algorithm>

#include "platform/LeastPromise.h"
#include "platform/Os.h"
#include "platform/portable/FileNames.h"

namespace {

// The name with an extension of at most three characters, as in a short name, which patterns match too.
CString shortened(const CString& name) {
  const int point = name.ReverseFind(_T('.'));
  return point < 0 ? name : name.Left(point + 4);
}

bool isMatch(const CString& name, const CString& pattern) {
  return matchesPattern(name, pattern) || (isLeastPromised() && matchesPattern(shortened(name), pattern));
}

std::vector<Os::Entry> matching(const CString& folder, const CString& pattern) {
  std::vector<Os::Entry> entries;
  if (currentOs().list(folder, entries)) {
    return {};
  }
  std::erase_if(entries, [&](const Os::Entry& entry) { return !isMatch(entry.name, pattern); });
  std::ranges::sort(entries, [](const Os::Entry& left, const Os::Entry& right) {
    return compareFileNames(left.name, right.name) < 0;
  });
  if (isLeastPromised()) {
    std::ranges::reverse(entries);  // the order is the file system's
  }
  return entries;
}

std::vector<Os::Entry> named(const CString& folder, const CString& name) {
  Os::Entry exact;
  if (!currentOs().status(joinPath(folder, name), exact)) {
    return {exact};
  }
  std::vector<Os::Entry> entries;
  if (currentOs().list(folder, entries)) {
    return {};
  }
  const auto other = std::ranges::find_if(
      entries, [&](const Os::Entry& entry) { return sameIgnoringCase(entry.name, name); });
  return other == entries.end() ? std::vector<Os::Entry>() : std::vector<Os::Entry>{*other};
}

// A search starts where its path says: that may be the current folder, by an empty text. Only the root of a
// drive needs its separator.
CString leastRoot(const CString& folder) {
  const int length = folder.GetLength();
  const bool isRoot = length <= 1 || folder[length - 2] == _T(':');
  return isRoot || !isPathSeparator(folder[length - 1]) ? folder : folder.Left(length - 1);
}

}  // namespace

CFileFind::CFileFind() = default;

CFileFind::~CFileFind() = default;

BOOL CFileFind::FindFile(LPCTSTR name, DWORD /*unused*/) {
  Close();
  const CString path = name == nullptr ? CString(_T("*.*")) : CString(name);
  const int start = nameStart(path);
  const CString last = path.Mid(start);
  if (last.IsEmpty() || currentOs().fullPath(start == 0 ? CString(_T(".")) : path.Left(start), m_root)) {
    return FALSE;
  }
  m_root = joinPath(m_root, CString());
  m_rootGiven = path.Left(start);
  const bool pattern = last.FindOneOf(_T("*?")) >= 0;
  for (const Os::Entry& entry : pattern ? matching(m_root, last) : named(m_root, last)) {
    m_found.push_back({entry.name, entry.length, entry.isFolder});
  }
  return m_found.empty() ? FALSE : TRUE;
}

BOOL CFileFind::FindNextFile() {
  if (m_next < m_found.size()) {
    ++m_next;
  }
  return m_next < m_found.size() ? TRUE : FALSE;
}

void CFileFind::Close() {
  m_root.Empty();
  m_rootGiven.Empty();
  m_found.clear();
  m_next = 0;
}

const CFileFind::Found* CFileFind::current() const {
  if (m_next == 0 && isLeastPromised()) {
    endUnpromised("a file is asked for before FindNextFile");
  }
  return m_next == 0 ? nullptr : &m_found[m_next - 1];
}

CString CFileFind::GetFileName() const {
  return current() == nullptr ? CString() : current()->name;
}

CString CFileFind::GetFileTitle() const {
  const CString name = GetFileName();
  const int point = name.ReverseFind(_T('.'));
  return point < 0 ? name : name.Left(point);
}

CString CFileFind::GetFilePath() const {
  return current() == nullptr ? CString() : m_root + current()->name;
}

CString CFileFind::GetRoot() const {
  if (current() == nullptr) {
    return CString();
  }
  return isLeastPromised() ? leastRoot(m_rootGiven) : m_root;
}

ULONGLONG CFileFind::GetLength() const {
  return current() == nullptr ? 0 : current()->length;
}

BOOL CFileFind::IsDirectory() const {
  return current() != nullptr && current()->isFolder ? TRUE : FALSE;
}

BOOL CFileFind::IsDots() const {
  const CString name = GetFileName();
  return name == _T(".") || name == _T("..") ? TRUE : FALSE;
}
