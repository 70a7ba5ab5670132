// Reads the input as an archive: a dipole alone, a dipole inside a set, a set file, a set file of 2001.
//
// The first byte chooses: bits 0 and 1 the entry point, bit 2 a collection that holds dipoles already. What
// was read must be consistent and must be written and read again as it is.
#include <afxwin.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "file/DipoleFace9File.h"
#include "fuzz/Check.h"
#include "platform/Operator.h"
#include "platform/Utf.h"

namespace {

enum EntryPoint { record, embeddedRecord, currentSet, oldSet };

class FuzzOperator : public Operator {
 public:
  FuzzOperator() { installOperator(this); }

  int messages = 0;

  int answerMessage(LPCTSTR text, UINT) override {
    const std::string shown = toUtf8(text);
    check(shown == "Wrong file format!" || shown == "Dipole file format error", "a known message");
    ++messages;
    return IDOK;
  }
  bool chooseFiles(const FileQuestion&, std::vector<CString>&) override {
    check(false, "no question for files");
    return false;
  }
  bool chooseColor(COLORREF, COLORREF&) override {
    check(false, "no question for a colour");
    return false;
  }
};

FuzzOperator& user() {
  static FuzzOperator only;
  return only;
}

CDipoleFace9File& collection() {
  static const auto only = std::make_unique<CDipoleFace9File>();
  return *only;
}

int transfer(CArchive& archive, EntryPoint entry, CDipoleszq& dipole, CDipoleFace9File& set) {
  switch (entry) {
    case record:
      return dipole.serializeDipole(archive);
    case embeddedRecord:
      return dipole.serializeObsolete20050629(archive);
    case currentSet:
      return set.serializeDipolesFace(archive);
    default:
      return set.serializeObsolete20050630(archive);
  }
}

// The entry point's result, or -1 when the archive ended too early.
int read(std::vector<BYTE>& bytes, EntryPoint entry, CDipoleszq& dipole, CDipoleFace9File& set) {
  bytes.push_back(0);  // a file in memory needs some memory
  CMemFile file(bytes.data(), static_cast<UINT>(bytes.size()));
  file.SetLength(bytes.size() - 1);
  CArchive archive(&file, CArchive::load, 256);
  int result = -1;
  try {
    result = transfer(archive, entry, dipole, set);
  } catch (CArchiveException* exception) {
    exception->Delete();
  } catch (CMemoryException* exception) {
    exception->Delete();
  }
  archive.Abort();
  bytes.pop_back();
  return result;
}

std::vector<BYTE> written(EntryPoint entry, CDipoleszq& dipole, CDipoleFace9File& set) {
  CMemFile file;
  CArchive archive(&file, CArchive::store);
  check(transfer(archive, entry, dipole, set) == 1, "writing into memory succeeds");
  archive.Close();
  std::vector<BYTE> bytes(static_cast<std::size_t>(file.GetLength()));
  file.SeekToBegin();
  file.Read(bytes.data(), static_cast<UINT>(bytes.size()));
  return bytes;
}

void checkConsistent(CDipoleFace9File& set, EntryPoint entry) {
  check(set.m_totalDipoles >= 0 && set.m_totalDipoles <= DipoleTable::capacity, "the count fits the table");
  for (int slot = 0; slot < set.m_totalDipoles; ++slot) {
    check(entry == currentSet || set.m_dipoles[slot] != nullptr, "old files know no empty slots");
  }
  set.getCurrentDipole();
  set.getMaxDipoleRange();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const unsigned mode = size > 0 ? data[0] : 0;
  const auto entry = static_cast<EntryPoint>(mode & 3U);
  std::vector<BYTE> bytes(data + (size > 0 ? 1 : 0), data + size);
  CDipoleFace9File& set = collection();
  set.cleanDipoles();
  for (int present = (mode & 4U) != 0 ? 3 : 0; present > 0; --present) {
    set.addDipole();
  }
  CDipoleszq dipole;
  const std::vector<BYTE> before = written(currentSet, dipole, set);
  user().messages = 0;
  const int result = read(bytes, entry, dipole, set);
  check(user().messages <= 1, "one message at most");
  if (user().messages != 0) {
    check(result == (entry == oldSet ? 1 : 0), "the result behind a message");
  }
  if (user().messages != 0 || result == 0) {
    check(written(currentSet, dipole, set) == before, "a refused file changes nothing");
  }
  checkConsistent(set, entry);
  if (result == 1 && user().messages == 0) {
    std::vector<BYTE> first = written(entry, dipole, set);
    CDipoleszq again = dipole;
    check(read(first, entry, again, set) == 1, "what was written is read");
    check(written(entry, again, set) == first, "what was read is written as it was");
  }
  return 0;
}
