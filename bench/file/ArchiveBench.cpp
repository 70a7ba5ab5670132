// Saving and loading a full dipole-set file beside one fwrite or fread of the same bytes and a memcpy of
// them. Loading is measured twice: as a host does it, which opens a set once and gets the memory for it from
// the system, and over memory that the process has had before. The yardstick gets its memory in the same way.
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <malloc.h>
#include <memory>
#include <string>
#include <vector>

#include "bench/Benchmarks.h"
#include "bench/Comparison.h"
#include "module/dipole.h"
#include "platform/Utf.h"

namespace {

constexpr int rounds = 31;

void save(CDipoleFace9File& face, const CString& path) {
  CFile file(path, CFile::modeCreate | CFile::modeWrite);
  CArchive archive(&file, CArchive::store, CDipoleFace9File::archiveBuffer);
  face.serializeDipolesFace(archive);
  archive.Close();
}

void load(CDipoleFace9File& face, const CString& path) {
  CFile file(path, CFile::modeRead);
  CArchive archive(&file, CArchive::load);
  face.serializeDipolesFace(archive);
  archive.Close();
}

}  // namespace

bool benchArchive() {
  auto face = std::make_unique<CDipoleFace9File>();
  CString label;
  for (int i = 0; i < DipoleTable::capacity; ++i) {
    face->addDipole();
    label.Format(_T("spike_%d"), i);
    face->setDipoleName(-1, label);
  }
  const std::filesystem::path place = std::filesystem::temp_directory_path() / "dipole_bench.dipset";
  const std::filesystem::path bare = std::filesystem::temp_directory_path() / "dipole_bench.bare";
  const CString path = fromUtf8(place.string());
  save(*face, path);
  std::vector<char> bytes(std::filesystem::file_size(place));
  std::vector<char> copied(bytes.size());
  const auto bareWrite = [&] {
    std::memcpy(copied.data(), bytes.data(), bytes.size());
    std::FILE* file = std::fopen(bare.c_str(), "wb");
    std::fwrite(copied.data(), 1, copied.size(), file);
    std::fclose(file);
  };
  const auto bareRead = [&] {
    const auto read = std::make_unique_for_overwrite<char[]>(bytes.size());
    const auto copy = std::make_unique_for_overwrite<char[]>(bytes.size());
    std::FILE* file = std::fopen(bare.c_str(), "rb");
    keep(std::fread(read.get(), 1, bytes.size(), file));
    std::fclose(file);
    std::memcpy(copy.get(), read.get(), bytes.size());
    keep(copy[bytes.size() - 1]);
  };
  bareWrite();
  const std::string title =
      std::to_string(DipoleTable::capacity) + " dipoles, " + std::to_string(bytes.size()) + " bytes, ";
  bool allMet = compare(
      title + "saving",
      {{"serializeDipolesFace", {}, [&] { save(*face, path); }}, {"fwrite and memcpy", {}, bareWrite}},
      {{1, 1.6, false}}, rounds);
  std::unique_ptr<CDipoleFace9File> loaded;
  const auto loadAnew = [&] {
    loaded = std::make_unique<CDipoleFace9File>();
    load(*loaded, path);
  };
  const auto forget = [&] { loaded.reset(); };
  const auto giveBack = [&] {
    loaded.reset();
    malloc_trim(0);
  };
  allMet &= compare(title + "loading into new memory",
                    {{"serializeDipolesFace", giveBack, loadAnew}, {"fread and memcpy", giveBack, bareRead}},
                    {{1, 1.4, false}}, rounds);
  allMet &= compare(title + "loading into memory used before",
                    {{"serializeDipolesFace", forget, loadAnew}, {"fread and memcpy", forget, bareRead}}, {},
                    rounds);  // to see, not to judge: nobody opens the same set again and again
  std::vector<std::unique_ptr<CDipoleszq>> made;
  const auto forgetMade = [&] {
    made.clear();
    made.shrink_to_fit();
    giveBack();
  };
  const auto makeOnly = [&] {
    made.reserve(DipoleTable::capacity);
    for (int i = 0; i < DipoleTable::capacity; ++i) {
      made.push_back(std::make_unique<CDipoleszq>());
    }
  };
  compare("as many dipoles in new memory, to see what loading spends on it",
          {{"made alone", forgetMade, makeOnly}}, {}, rounds);
  forgetMade();
  loadAnew();
  std::filesystem::remove(place);
  std::filesystem::remove(bare);
  if (loaded->m_totalDipoles != DipoleTable::capacity) {
    std::printf("  the file did not come back whole\n");
    return false;
  }
  return allMet;
}
