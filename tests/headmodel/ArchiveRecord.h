// The bytes of one archive record: as the code under test writes and reads them, and composed by hand.
#pragma once

#include <afx.h>

#include <cstring>
#include <string_view>
#include <vector>

using Bytes = std::vector<BYTE>;

// What `record.serialize` writes.
template <class Record>
Bytes storedBytes(Record& record) {
  CMemFile file;
  {
    CArchive archive(&file, CArchive::store);
    record.serialize(archive);
    archive.Close();
  }
  Bytes bytes(static_cast<std::size_t>(file.GetLength()));
  file.SeekToBegin();
  file.Read(bytes.data(), static_cast<UINT>(bytes.size()));
  return bytes;
}

// Lets `record.serialize` read the bytes. Returns how many it left unread, or -1 when it met their end; any
// other exception passes.
template <class Record>
int loadBytes(Record& record, Bytes bytes) {
  CMemFile file(bytes.data(), static_cast<UINT>(bytes.size()));
  CArchive archive(&file, CArchive::load);
  try {
    record.serialize(archive);
    BYTE rest[64];
    return static_cast<int>(archive.Read(rest, sizeof rest));
  } catch (CArchiveException* exception) {
    const int cause = exception->m_cause;
    exception->Delete();
    archive.Abort();
    return cause == CArchiveException::endOfFile ? -1 : -2;
  }
}

// Appends values as an archive lays them out.
class ByteWriter {
 public:
  template <class Value>
  ByteWriter& value(Value value) {
    BYTE bytes[sizeof value];
    std::memcpy(bytes, &value, sizeof value);
    m_bytes.insert(m_bytes.end(), bytes, bytes + sizeof value);
    return *this;
  }

  // Fewer than 255 characters of ASCII, as UTF-16.
  ByteWriter& text(std::string_view characters) {
    for (const int part : {0xFF, 0xFE, 0xFF, static_cast<int>(characters.size())}) {
      m_bytes.push_back(static_cast<BYTE>(part));
    }
    for (const char character : characters) {
      m_bytes.push_back(static_cast<BYTE>(character));
      m_bytes.push_back(0);
    }
    return *this;
  }

  const Bytes& bytes() const { return m_bytes; }

 private:
  Bytes m_bytes;
};

// Whether each address lies behind the one before: members are laid out in the order of their declarations.
inline bool rising(const std::vector<const void*>& addresses) {
  for (std::size_t i = 1; i < addresses.size(); ++i) {
    if (reinterpret_cast<std::uintptr_t>(addresses[i - 1]) >=
        reinterpret_cast<std::uintptr_t>(addresses[i])) {
      return false;
    }
  }
  return true;
}
