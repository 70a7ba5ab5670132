#include "host/exchange/SetFile.h"

#include <array>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "host/text/Failure.h"
#include "host/text/SafeFile.h"

namespace host {

namespace {

// Set files of 2001 begin with one of these numbers, later ones with a text.
bool isHeaderless(CFile& file) {
  unsigned char bytes[4] = {};
  const UINT count = file.Read(bytes, sizeof bytes);
  file.SeekToBegin();
  std::uint32_t number = 0;
  for (unsigned i = 0; i < 4; ++i) {
    number |= std::uint32_t{bytes[i]} << (8U * i);
  }
  return count == sizeof bytes && (number <= 1 || number == 20010901 || number == 20011118);
}

bool isAtEnd(CArchive& archive) {
  unsigned char byte = 0;
  return archive.Read(&byte, sizeof byte) == 0;
}

// Why a set could not be read; empty when it was. The module's result does not tell everything: what it
// refuses of an old set, and a set that it cut short for want of memory, count as done. A set that was read
// has a count, be it 0.
std::string whyNotWhole(CDipoleFace9File& set, CArchive& archive, bool isOld) {
  constexpr int untouched = -1;
  set.m_totalDipoles = untouched;
  const int result = isOld ? set.serializeObsolete20050630(archive) : set.serializeDipolesFace(archive);
  if (result == 0 || set.m_totalDipoles == untouched) {
    return "it is no dipole set";
  }
  return isAtEnd(archive) ? "" : "it goes on behind the end of the dipole set";
}

// A bare `throw` has to pass on what the module threw, behind an archive that must write no more.
template <typename Store>
void writeArchive(const CString& path, Store store) {
  writeSafely(path, [&](CFile& file) {
    CArchive archive(&file, CArchive::store, CDipoleFace9File::archiveBuffer);
    try {
      if (store(archive) == 0) {
        throwFileFailure("write", path, "the set could not be stored");
      }
      archive.Close();
    } catch (...) {
      archive.Abort();
      throw;
    }
  });
}

}  // namespace

std::unique_ptr<CDipoleFace9File> readSet(const CString& path) {
  return withFile("read", path, [&] {
    auto set = std::make_unique<CDipoleFace9File>();
    CFile file(path, CFile::modeRead | CFile::shareDenyWrite);
    const bool isOld = isHeaderless(file);
    CArchive archive(&file, CArchive::load);
    std::string cause;
    try {
      cause = whyNotWhole(*set, archive, isOld);
    } catch (CArchiveException* exception) {
      exception->Delete();
      cause = "it could not be read to its end: it breaks off, or is damaged";
    }
    if (!cause.empty()) {
      throwFileFailure("read", path, cause);
    }
    archive.Close();
    file.Close();
    return set;
  });
}

void writeSet(CDipoleFace9File& set, const CString& path) {
  writeArchive(path, [&](CArchive& archive) { return set.serializeDipolesFace(archive); });
}

void writeOldSet(CDipoleFace9File& set, const CString& path) {
  writeArchive(path, [&](CArchive& archive) { return set.serializeObsolete20050630(archive); });
}

void writeSpreadsheetText(CDipoleFace9File& set, const CString& path) {
  writeSafelyByName(path, [&](const CString& name) { set.exportExelFileX(name); });
}

std::string lossOf(const UnknownValues& unknown) {
  constexpr std::array<std::pair<DipoleValue, const char*>, 5> names{
      {{DipoleValue::latency, "latency"},
       {DipoleValue::fitError, "fit error"},
       {DipoleValue::moment, "moment"},
       {DipoleValue::orientation, "orientation"},
       {DipoleValue::label, "label"}}};
  std::string values;
  for (const auto& [value, name] : names) {
    int count = 0;
    for (int slot = 0; slot < unknown.end(); ++slot) {
      count += unknown.isUnknown(slot, value) ? 1 : 0;
    }
    if (count > 0) {
      values += (values.empty() ? "" : ", ") + std::string(name) + " of " + std::to_string(count) +
                (count == 1 ? " dipole" : " dipoles");
    }
  }
  return values.empty()
             ? values
             : "This file cannot hold that values are unknown, it gives them as if they were known: " +
                   values + ". A .csv, .tsv or .json file keeps it.";
}

void writeText(std::string_view text, const CString& path) {
  writeSafely(path, [&](CFile& file) { file.Write(text.data(), static_cast<UINT>(text.size())); });
}

}  // namespace host
