// Reads the input as an archive, by every entry point that reads one.
//
// The first byte chooses: bits 0 to 2 the entry point, bit 3 a collection that holds dipoles already, bits 4
// and 5 the archive's buffer, bit 6 to break off at last what was written. However the reading ended, what is
// there now must be consistent, and must be written and read again as it is.
#include <afxwin.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "file/DipoleFace9File.h"
#include "fuzz/Check.h"
#include "fuzz/FuzzUser.h"

namespace {

using Bytes = std::vector<BYTE>;

enum EntryPoint { dipole, embeddedDipole, currentSet, oldSet, sphere, fiducials, fiducial, text };

enum : unsigned { entryBits = 0x07, filled = 0x08, bufferBits = 0x30, breakOff = 0x40 };

constexpr std::string_view knownMessages[] = {"Wrong file format!", "Dipole file format error"};

constexpr int allRead = 1;
constexpr int endedEarly = -1;

// One object for each entry point.
struct Objects {
  explicit Objects(CDipoleFace9File& collection) : set(collection) {}

  CDipoleFace9File& set;
  CDipoleszq dipole;
  CSpherezq sphere;
  CFiducialzq fiducials;
  CFiduciaryPtzq fiducial;
  CString text;
};

int transferText(CArchive& archive, CString& value) {
  if (archive.IsStoring()) {
    archive << value;
  } else {
    archive >> value;
  }
  return 1;
}

int transfer(CArchive& archive, EntryPoint entry, Objects& objects) {
  switch (entry) {
    case dipole:
      return objects.dipole.serializeDipole(archive);
    case embeddedDipole:
      return objects.dipole.serializeObsolete20050629(archive);
    case currentSet:
      return objects.set.serializeDipolesFace(archive);
    case oldSet:
      return objects.set.serializeObsolete20050630(archive);
    case sphere:
      return objects.sphere.serialize(archive);
    case fiducials:
      return objects.fiducials.serialize(archive);
    case fiducial:
      return objects.fiducial.serialize(archive);
    default:
      return transferText(archive, objects.text);
  }
}

// The entry point's result, or endedEarly.
int read(Bytes bytes, EntryPoint entry, Objects& objects, int buffer) {
  const std::size_t size = bytes.size();
  bytes.push_back(0);  // a file in memory needs some memory
  CMemFile file(bytes.data(), static_cast<UINT>(size + 1));
  file.SetLength(size);
  CArchive archive(&file, CArchive::load, buffer);
  int result = endedEarly;
  try {
    result = transfer(archive, entry, objects);
  } catch (CArchiveException* exception) {
    exception->Delete();
  } catch (CMemoryException* exception) {
    exception->Delete();
  }
  archive.Abort();
  return result;
}

Bytes contentOf(CMemFile& file) {
  Bytes bytes(static_cast<std::size_t>(file.GetLength()));
  file.SeekToBegin();
  file.Read(bytes.data(), static_cast<UINT>(bytes.size()));
  return bytes;
}

Bytes written(std::span<const EntryPoint> entries, Objects& objects) {
  CMemFile file(16384);
  CArchive archive(&file, CArchive::store, 8192);
  for (const EntryPoint entry : entries) {
    check(transfer(archive, entry, objects) == 1, "writing into memory succeeds");
  }
  archive.Close();
  return contentOf(file);
}

Bytes written(EntryPoint entry, Objects& objects) {
  return written(std::span(&entry, 1), objects);
}

// Everything that any entry point keeps.
Bytes everything(Objects& objects) {
  constexpr EntryPoint all[] = {dipole, embeddedDipole, currentSet, oldSet,
                                sphere, fiducials,      fiducial,   text};
  return written(all, objects);
}

enum { fewDipoles = 3 };

// A collection that can be made fresh again in less time than it takes to construct or to clean one: only the
// slots that may be filled are cleared, and only the old format is read, as the current one cleans the set.
class FreshSet {
 public:
  FreshSet() {
    Objects objects(*m_set);
    m_current = written(currentSet, objects);
    m_old = written(oldSet, objects);
  }

  CDipoleFace9File& restart() {
    for (int slot = (std::max)(m_set->m_totalDipoles, static_cast<int>(fewDipoles)); slot-- > 0;) {
      m_set->m_dipoles.clear(slot);
    }
    m_set->m_momentInNAm = 0;
    m_set->m_skipFiducialSetup = false;
    m_set->m_mergeRadius = 15.0F;
    Objects objects(*m_set);
    check(read(m_old, oldSet, objects, 4096) == allRead, "an empty set is read");
    check(written(currentSet, objects) == m_current, "an empty set is as it was");
    return *m_set;
  }

 private:
  std::unique_ptr<CDipoleFace9File> m_set = std::make_unique<CDipoleFace9File>();
  Bytes m_current;
  Bytes m_old;
};

// Dipoles at either side of an empty slot.
void fill(CDipoleFace9File& set) {
  for (int slot = 0; slot < fewDipoles; ++slot) {
    set.addDipoleF(static_cast<float>(slot), 2.0F, 3.0F);
  }
  set.m_dipoles.clear(1);
}

bool hasEmptySlot(const CDipoleFace9File& set) {
  for (int slot = 0; slot < set.m_totalDipoles; ++slot) {
    if (set.m_dipoles[slot] == nullptr) {
      return true;
    }
  }
  return false;
}

void checkUsable(CDipoleFace9File& set) {
  check(set.m_totalDipoles >= 0 && set.m_totalDipoles <= DipoleTable::capacity, "the count fits the table");
  set.getCurrentDipole();
  set.getMaxDipoleRange();
  set.getTotalDipolesShowed();
}

void checkResult(const FuzzUser& user, EntryPoint entry, int result, bool isUnchanged) {
  check(user.messages.size() <= 1, "one message at most");
  const bool isRefused = !user.messages.empty();
  if (isRefused) {
    check(entry <= oldSet && entry != embeddedDipole, "only what has a version is refused");
    check(user.messages[0] == knownMessages[entry == oldSet ? 1 : 0], "each reader has its message");
    check(result == (entry == oldSet ? 1 : 0), "the result behind a message");
  }
  if (result == 0) {
    check(entry == dipole || entry == currentSet, "only what has a magic gives 0");
  }
  if (isRefused || result == 0) {
    check(isUnchanged, "what is refused changes nothing");
  }
}

// Reads what was written into other objects and writes it from there.
void checkRoundTrip(EntryPoint entry, Objects& objects, Objects& others, int buffer) {
  const Bytes first = written(entry, objects);
  check(read(first, entry, others, buffer) == allRead, "what was written is read");
  check(written(entry, others) == first, "what was read is written as it was");
}

Bytes dipoleBytes(const CDipoleFace9File& set, int slot) {
  if (set.m_dipoles[slot] == nullptr) {
    return {};
  }
  CMemFile file;
  CArchive archive(&file, CArchive::store, 512);
  check(set.m_dipoles[slot]->serializeObsolete20050629(archive) == 1, "a dipole is written");
  archive.Close();
  return contentOf(file);
}

// Where a set file has broken off, the dipoles that were read whole are there, and nothing of the set before.
void checkPart(EntryPoint entry, const CDipoleFace9File& whole, CDipoleFace9File& part) {
  checkUsable(part);
  check(part.m_totalDipoles <= whole.m_totalDipoles, "no dipole is invented");
  for (int slot = 0; slot < part.m_totalDipoles; ++slot) {
    check(dipoleBytes(part, slot) == dipoleBytes(whole, slot), "what was read whole stays");
  }
  if (part.m_totalDipoles < whole.m_totalDipoles) {
    check(part.m_currentDipole < part.m_totalDipoles, "no dipole beyond what was read is the current one");
    check(part.m_patient == (entry == currentSet ? CString(_T("non")) : whole.m_patient),
          "no other patient's dipoles");
  }
}

// Reads a beginning of what was written over another patient's set: it breaks off, and says so in one way.
void checkBrokenOff(EntryPoint entry, Objects& objects, Objects& others, std::size_t size, FuzzUser& user) {
  Bytes bytes = written(entry, objects);
  bytes.resize(size % bytes.size());
  fill(others.set);
  others.set.m_patient = _T("another");
  const Bytes before = everything(others);
  user.start(0);
  const int result = read(bytes, entry, others, 128);
  checkResult(user, entry, result, everything(others) == before);
  check(result == endedEarly && user.messages.empty(), "a beginning ends in the archive's exception");
  if (others.set.m_patient != _T("another") && (entry == currentSet || entry == oldSet)) {
    checkPart(entry, objects.set, others.set);
  }
}

// Reads the dipoles alone behind a count of more: all of them are there when the file ends.
void checkLyingCount(Objects& objects, Objects& others, FuzzUser& user) {
  constexpr std::size_t count = 38;  // behind the magic, the version and the current dipole
  constexpr int lie = DipoleTable::capacity;
  Bytes bytes = written(currentSet, objects);
  const int total = std::exchange(objects.set.m_totalDipoles, 0);
  const std::size_t withoutDipoles = written(currentSet, objects).size();
  objects.set.m_totalDipoles = total;
  bytes.resize(bytes.size() - withoutDipoles + count + sizeof lie);
  std::memcpy(bytes.data() + count, &lie, sizeof lie);
  user.start(0);
  const int result = read(bytes, currentSet, others, 256);
  check(total == lie || (result == endedEarly && user.messages.empty()), "fewer dipoles than were counted");
  check(others.set.m_totalDipoles == total, "the dipoles that a lying count stands before are read");
  checkPart(currentSet, objects.set, others.set);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static FuzzUser user(knownMessages, {});
  static FreshSet one;
  static FreshSet other;
  if (size == 0) {
    return 0;
  }
  const unsigned mode = data[0];
  const auto entry = static_cast<EntryPoint>(mode & entryBits);
  constexpr int buffers[] = {128, 256, 1000, 4096};
  const int buffer = buffers[(mode & bufferBits) >> 4U];

  Objects objects(one.restart());
  if ((mode & filled) != 0) {
    fill(objects.set);
  }
  const Bytes before = everything(objects);
  user.start(0);
  const int result = read(Bytes(data + 1, data + size), entry, objects, buffer);
  checkResult(user, entry, result, everything(objects) == before);
  const bool isRefused = !user.messages.empty();
  checkUsable(objects.set);
  if (entry == oldSet && !isRefused && result == allRead) {
    check(!hasEmptySlot(objects.set), "old files know no empty slots");
  }
  Objects others(other.restart());
  checkRoundTrip(entry, objects, others, buffer);
  if ((mode & breakOff) != 0 && (entry != oldSet || !hasEmptySlot(objects.set))) {
    Objects rest(other.restart());
    checkBrokenOff(entry, objects, rest, size * 7919, user);
  }
  if ((mode & breakOff) != 0 && entry == currentSet) {
    Objects counted(other.restart());
    checkLyingCount(objects, counted, user);
  }
  return 0;
}
