// Reads or writes values by one list of members, so that both directions of a layout agree.
#pragma once

#include <afx.h>

#include <utility>

// Reads the text in front of a stand-alone form; case does not count.
inline bool startsWith(CArchive& archive, const CString& magic) {
  CString found;
  archive >> found;
  return found.CompareNoCase(magic) == 0;
}

// Called with a member, it writes or reads it, as the archive is meant. A flag takes one byte: any value but
// 0 is true. A member that cannot be read whole stays as it is, which MFC does not promise of a value that it
// is handed.
class ArchiveTransfer {
 public:
  explicit ArchiveTransfer(CArchive& archive) : m_archive(archive), m_isStoring(archive.IsStoring() != 0) {}

  bool isStoring() const { return m_isStoring; }
  CArchive& archive() const { return m_archive; }

  template <typename... Values>
  void operator()(Values&... values) const {
    (one(values), ...);
  }

 private:
  template <typename Value>
  void one(Value& value) const {
    if (m_isStoring) {
      m_archive << value;
    } else {
      Value whole{};
      m_archive >> whole;
      value = std::move(whole);
    }
  }

  template <typename Value, int count>
  void one(Value (&values)[count]) const {
    for (int i = 0; i < count; ++i) {
      one(values[i]);
    }
  }

  void one(bool& flag) const {
    auto stored = static_cast<BYTE>(flag ? 1 : 0);
    one(stored);
    flag = stored != 0;
  }

  CArchive& m_archive;
  bool m_isStoring;
};
