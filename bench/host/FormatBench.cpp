// A full set out of and into each format of text, beside a table of commas (.csv); Neuromag's beside
// MNE-Python too, where it is installed.
#include <afxwin.h>

#include <algorithm>
#include <cstdio>
#include <ctime>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "bench/Benchmarks.h"
#include "bench/Comparison.h"
#include "bench/SilentOperator.h"
#include "bench/import/DipoleText.h"
#include "host/exchange/ForeignFile.h"
#include "host/exchange/ImportFile.h"
#include "host/exchange/Json.h"
#include "host/exchange/SetJson.h"
#include "host/exchange/SetTable.h"

namespace {

using host::DipoleFormat;
using host::ForeignFormat;

constexpr int rows = DipoleTable::capacity;
constexpr int rounds = 11;
constexpr double mostTimes = 3.0;
constexpr double leastTimesOfMne = 5.0;

const host::Fiducials points{{4, 92, -8}, {-74, -6, -3}, {76, 5, 1}};

std::unique_ptr<CDipoleFace9File> fullSet() {
  DipoleText made;
  makeDipolesFile(rows, made);
  const TemporaryFile file("dipole_bench.dip", made.text);
  const SilentOperator silent(file.path());
  return std::move(host::importFile(file.path(), DipoleFormat::ctf).set);
}

struct Format {
  const char* ending;
  DipoleFormat in;  // of those that are read; else any
  bool isRead;
  std::function<std::string()> write;
};

constexpr std::size_t neuromagFormat = 4;  // of those below

std::vector<Format> formatsOf(const CDipoleFace9File& set) {
  static const host::UnknownValues unknown;
  static const host::KnownHead head{points, {}};
  const auto foreign = [&set](ForeignFormat format) {
    return [&set, format] { return foreignFile(format, set, unknown, head).bytes; };
  };
  return {{"csv", DipoleFormat::csv, true, [&set] { return tableOf(set, unknown, true, ','); }},
          {"tsv", DipoleFormat::tsv, true, [&set] { return tableOf(set, unknown, true, '\t'); }},
          {"json", DipoleFormat::json, true,
           [&set] {
             return setJson(set, unknown, {{}, {}, {}, true});
           }},
          {"dip", DipoleFormat::ctf, true, foreign(ForeignFormat::ctf)},
          {"neuromag.dip", DipoleFormat::neuromag, true, foreign(ForeignFormat::neuromag)},
          {"mrk.json", DipoleFormat::json, false, foreign(ForeignFormat::slicer)},
          {"arrows.mrk.json", DipoleFormat::json, false, foreign(ForeignFormat::slicerArrows)},
          {"vtp", DipoleFormat::csv, false, foreign(ForeignFormat::vtp)}};
}

bool compareWriting(const std::vector<Format>& formats) {
  bool allMet = true;
  for (std::size_t i = 1; i < formats.size(); ++i) {
    allMet &= compare(std::string(formats[i].ending) + " out, " + std::to_string(rows) + " dipoles",
                      {{formats[i].ending, {}, [&] { keep(formats[i].write()); }},
                       {"csv", {}, [&] { keep(formats[0].write()); }}},
                      {{1, mostTimes, false}}, rounds);
  }
  return allMet;
}

void import(const CString& path, DipoleFormat format) {
  const host::ImportedFile imported = host::importFile(path, format, {}, {}, points);
  if (!imported.failure.empty() || imported.dipoles() != rows) {
    std::printf("  not %d dipoles: %d, %s\n", rows, imported.dipoles(), imported.failure.c_str());
  }
}

bool compareReading(const std::vector<Format>& formats) {
  const TemporaryFile csv("dipole_bench.csv", formats[0].write());
  const SilentOperator silent(csv.path());
  bool allMet = true;
  for (std::size_t i = 1; i < formats.size(); ++i) {
    if (formats[i].isRead) {
      const TemporaryFile file((std::string("dipole_bench.") + formats[i].ending).c_str(),
                               formats[i].write());
      const SilentOperator chooser(file.path());
      allMet &= compare(std::string(formats[i].ending) + " in, " + std::to_string(rows) + " dipoles",
                        {{formats[i].ending, {}, [&] { import(file.path(), formats[i].in); }},
                         {"csv", {}, [&] { import(csv.path(), DipoleFormat::csv); }}},
                        {{1, mostTimes, false}}, rounds);
    }
  }
  return allMet;
}

// The same file, each in a process of its own that has started before.
bool compareWithMne(const Format& neuromag) {
  const TemporaryFile file("dipole_bench_mne.dip", neuromag.write());
  const SilentOperator silent(file.path());
  const std::string command =
      std::string(BENCH_PYTHON " " BENCH_FOLDER "/host/mne_reads.py ") + toUtf8(file.path()) + " 11";
  FILE* const python = popen(command.c_str(), "r");
  double theirs = 0.0;
  const bool isThere = python != nullptr && std::fscanf(python, "%lf", &theirs) == 1;
  if (python == nullptr || pclose(python) != 0 || !isThere) {
    std::printf("\nMNE-Python is not there to compare with\n");
    return true;
  }
  std::vector<double> times;
  for (int round = 0; round < rounds; ++round) {
    const std::clock_t start = std::clock();
    import(file.path(), DipoleFormat::neuromag);
    times.push_back(static_cast<double>(std::clock() - start) * 1e3 / CLOCKS_PER_SEC);
  }
  std::sort(times.begin(), times.end());
  const double ours = times[times.size() / 2];
  const bool isMet = theirs >= ours * leastTimesOfMne;
  std::printf("\nneuromag.dip in: %.3f ms, MNE-Python %.3f ms: %.2f times, wanted at least %.1f: %s\n", ours,
              theirs, theirs / ours, leastTimesOfMne, isMet ? "met" : "MISSED");
  return isMet;
}

}  // namespace

bool benchFormats() {
  const std::unique_ptr<CDipoleFace9File> set = fullSet();
  const std::vector<Format> formats = formatsOf(*set);
  const bool isWritingMet = compareWriting(formats);
  const bool isReadingMet = compareReading(formats);
  return compareWithMne(formats[neuromagFormat]) && isReadingMet && isWritingMet;
}
