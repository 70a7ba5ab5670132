// Import of a full file, from open to backups, beside the bare conversion of its numbers and, for CTF, beside
// the same import through the C library's swscanf.
#include <charconv>
#include <cstdio>
#include <cwchar>
#include <functional>
#include <memory>
#include <string>

#include "bench/Benchmarks.h"
#include "bench/Comparison.h"
#include "bench/SilentOperator.h"
#include "bench/import/DipoleText.h"
#include "import/AnsiLineReader.h"
#include "module/dipole.h"
#include "platform/Utf.h"

namespace {

constexpr int rows = DipoleTable::capacity;
constexpr int rounds = 31;

// The bare pass: nothing but the conversions of the numbers that an import converts.
void convertOnly(const DipoleText& file) {
  for (const std::string_view text : file.integers) {
    int value = 0;
    std::from_chars(text.data(), text.data() + text.size(), value);
    keep(value);
  }
  for (const std::string_view text : file.reals) {
    float value = 0.0F;
    std::from_chars(text.data(), text.data() + text.size(), value);
    keep(value);
  }
}

// The same import with rows scanned by swscanf: lines come through the module's own reader, every other step
// is the module's. The conversion of a line to the C library's wide characters counts too.
class SwscanfImport : public CDipoleFace8Import01_CTF {
 public:
  void importDipoles(const CString& path) {
    importRows(path, [this](const wchar_t* text) {
      int number;
      float p[3];
      float o[3];
      float moment;
      if (std::swscanf(text, L"%d : %f %f %f   %f %f %f   %f  %ls", &number, &p[0], &p[1], &p[2], &o[0],
                       &o[1], &o[2], &moment, m_label) >= 8) {
        add(p, o, moment);
      }
    });
  }

  void importFitResults(const CString& path) {
    importRows(path, [this](const wchar_t* text) {
      int number;
      int id;
      int tag;
      float latency;
      float p[3];
      float o[3];
      float moment;
      float error;
      if (std::swscanf(text, L"%d: %d %d %f  %f %f %f   %f %f %f   %f  %f %ls", &number, &id, &tag, &latency,
                       &p[0], &p[1], &p[2], &o[0], &o[1], &o[2], &moment, &error, m_label) >= 12) {
        CDipoleszq& dipole = add(p, o, moment);
        dipole.m_id = id;
        dipole.m_fitTag = tag;
        dipole.m_latency = static_cast<double>(latency * 1000.0F);
        dipole.m_fitError = static_cast<double>(error);
      }
    });
  }

 private:
  void importRows(const CString& path, const std::function<void(const wchar_t*)>& scanRow) {
    CFile file(path, CFile::modeRead | CFile::shareDenyNone);
    CArchive archive(&file, CArchive::load, 4096);
    AnsiLineReader reader(archive);
    AnsiLine line;
    std::wstring wide;
    while (reader.next(line)) {
      if (!line.isUnitHeader() && !line.isPassedOver()) {
        wide.assign(line.begin(), line.end());
        scanRow(wide.c_str());
      }
    }
    backupLocationRotationRaw();
  }

  CDipoleszq& add(float (&p)[3], float (&o)[3], float moment) {
    auto dipole = makeDipole();
    coordinateCtf2zq(p[0], p[1], p[2]);
    coordinateCtf2zq(o[0], o[1], o[2]);
    for (int i = 0; i < 3; ++i) {
      dipole->m_location[i] = static_cast<double>(p[i] * 10.0F);
      dipole->m_orientation[i] = static_cast<double>(o[i]);
    }
    dipole->m_moment = static_cast<double>(moment);
    dipole->m_label.Format(_T("%s"),
                           std::basic_string<TCHAR>(m_label, m_label + std::wcslen(m_label)).c_str());
    dipole->m_number = m_totalDipoles + 1;
    appendDipole(std::move(dipole));
    return *m_dipoles[m_currentDipole];
  }

  wchar_t m_label[2049] = L"Non";
};

// Its by-path driver, which a host reaches by a file's ending.
class MsiImport : public CDipoleFace8Import02_4DMSI {
 public:
  using CDipoleFace8Import02_4DMSI::import4DMSIDipolesX;
};

bool benchCtfImport(const std::string& section, const DipoleText& text,
                    void (SwscanfImport::*yardstick)(const CString&)) {
  const TemporaryFile file("dipole_bench.dip", text.text);
  const SilentOperator silent(file.path());
  std::unique_ptr<CDipoleFace8Import01_CTF> face;
  std::unique_ptr<SwscanfImport> slow;
  const auto empty = [&] {
    face = std::make_unique<CDipoleFace8Import01_CTF>();
    slow = std::make_unique<SwscanfImport>();
  };
  const std::vector<Contender> contenders = {
      {"import of the file", empty, [&] { face->importCTFDipoles(); }},
      {"the conversions alone (from_chars)", empty, [&] { convertOnly(text); }},
      {"import through swscanf", empty, [&] { ((*slow).*yardstick)(file.path()); }}};
  const bool isMet = compare("CTF import, " + section + ", " + std::to_string(rows) + " rows", contenders,
                             {{1, 2.0, false}, {2, 4.0, true}}, rounds);
  face->cleanDipoles();
  face->importCTFDipoles();
  slow = std::make_unique<SwscanfImport>();
  ((*slow).*yardstick)(file.path());
  if (face->m_totalDipoles != rows || slow->m_totalDipoles != rows ||
      face->m_dipoles[rows - 1]->m_location[1] != slow->m_dipoles[rows - 1]->m_location[1]) {
    std::printf("  the imports do not agree: %d and %d dipoles\n", face->m_totalDipoles,
                slow->m_totalDipoles);
    return false;
  }
  return isMet;
}

}  // namespace

bool benchDipolesImport() {
  DipoleText text;
  makeDipolesFile(rows, text);
  return benchCtfImport("Dipoles", text, &SwscanfImport::importDipoles);
}

bool benchFitResultsImport() {
  DipoleText text;
  makeFitResultsFile(rows, text);
  return benchCtfImport("Fit_Results", text, &SwscanfImport::importFitResults);
}

bool benchMsiImport() {
  DipoleText text;
  makeMsiFile(rows, text);
  const TemporaryFile file("dipole_bench.txt", text.text);
  const SilentOperator silent(file.path());
  std::unique_ptr<MsiImport> face;
  const auto import = [&] {
    CString path = file.path();
    face->import4DMSIDipolesX(path, false);
  };
  const auto empty = [&] { face = std::make_unique<MsiImport>(); };
  const bool isMet = compare("4D/MSI import, " + std::to_string(rows) + " rows",
                             {{"import of the file", empty, import},
                              {"the conversions alone (from_chars)", empty, [&] { convertOnly(text); }}},
                             {{1, 2.0, false}}, rounds);
  empty();
  import();
  if (face->m_totalDipoles != rows || face->m_dipoles[rows - 1]->m_label != CString(_T("spike_30000"))) {
    std::printf("  the import is not whole: %d dipoles\n", face->m_totalDipoles);
    return false;
  }
  return isMet;
}
