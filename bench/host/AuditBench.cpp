// An import with its audit beside the import alone.
#include <afxwin.h>

#include <cstdio>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "bench/Benchmarks.h"
#include "bench/Comparison.h"
#include "bench/SilentOperator.h"
#include "bench/import/DipoleText.h"
#include "host/audit/FileAudit.h"

namespace {

constexpr int rows = DipoleTable::capacity;
constexpr int rounds = 31;

// The audit adds at most 60 % to an import of a usual file; one in which every row deviates takes longer. Its
// caller has the text in memory.
bool benchAudit(const char* title, const char* name, const DipoleText& made, bool isUsual) {
  const TemporaryFile file(name, made.text);
  const SilentOperator silent(file.path());
  std::unique_ptr<CDipoleFace9File> set;
  const auto empty = [&] { set = std::make_unique<CDipoleFace9File>(); };
  const auto import = [&] {
    CString path = file.path();
    set->importDipoleX(path, false);
  };
  host::AuditReport report;
  const auto importAndAudit = [&] {
    import();
    const bool isMsi = std::string_view(name).ends_with(".txt");
    report = host::audit({name,
                          made.text,
                          isMsi ? host::DipoleTextFormat::msi : host::DipoleTextFormat::ctf,
                          {{true}, {}},
                          0,
                          {}},
                         *set);
  };
  const bool isMet =
      compare(std::string("import with audit, ") + title + ", " + std::to_string(rows) + " rows",
              {{"import and audit", empty, importAndAudit}, {"import alone", empty, import}},
              isUsual ? std::vector<Goal>{{1, 1.6, false}} : std::vector<Goal>{}, rounds);
  empty();
  importAndAudit();
  for (const host::Finding& finding : report.findings) {
    if (finding.code == host::FindingCode::lostRows || finding.code == host::FindingCode::sections) {
      std::printf("  the audit does not follow the import: %s\n", lineOf(finding).c_str());
      return false;
    }
  }
  return isMet;
}

}  // namespace

bool benchAudits() {
  DipoleText dipoles;
  makeDipolesFile(rows, dipoles);
  DipoleText moving;
  makeFitResultsFile(rows, moving);
  DipoleText msi;
  makeMsiFile(rows, msi);
  const bool areDipolesMet = benchAudit("Dipoles", "dipole_bench.dip", dipoles, true);
  const bool areMovingMet = benchAudit("Fit_Results with unknown columns", "dipole_bench.dip", moving, false);
  const bool isMsiMet = benchAudit("4D/MSI", "dipole_bench.txt", msi, true);
  return areDipolesMet && areMovingMet && isMsiMet;
}
