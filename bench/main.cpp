// dipole_bench [NAME...]: the module's speed and memory, as ratios to yardsticks measured in the same run, of
// all or of those named. Exits with 1 when a ratio is not as wanted, with 2 for a name that there is not.
#include <algorithm>
#include <cstdio>
#include <iterator>
#include <malloc.h>
#include <string_view>

#include "bench/Benchmarks.h"

namespace {

struct Benchmark {
  std::string_view name;
  bool (*run)();
};

constexpr Benchmark benchmarks[] = {{"dipoles", benchDipolesImport},
                                    {"fit-results", benchFitResultsImport},
                                    {"msi", benchMsiImport},
                                    {"draw", benchSliceDrawing},
                                    {"sort", benchSort},
                                    {"view3d", benchView3D},
                                    {"archive", benchArchive},
                                    {"scene", benchScene},
                                    {"memory", benchMemory},
                                    {"history", benchHistory},
                                    {"panes", benchPanes},
                                    {"heads", benchHeads},
                                    {"audit", benchAudits},
                                    {"formats", benchFormats},
                                    {"clusters", benchClusters}};

bool isBenchmark(std::string_view name) {
  return std::any_of(std::begin(benchmarks), std::end(benchmarks),
                     [&](const Benchmark& benchmark) { return benchmark.name == name; });
}

}  // namespace

int main(int argc, char** argv) {
  // Memory that a round gave back stays with the process: what is measured is the module, not the system
  // clearing pages.
  mallopt(M_TRIM_THRESHOLD, 1 << 30);
  mallopt(M_MMAP_THRESHOLD, 1 << 30);
  if (!std::all_of(argv + 1, argv + argc, isBenchmark)) {
    std::fprintf(stderr, "no such benchmark; there are:");
    for (const Benchmark& benchmark : benchmarks) {
      std::fprintf(stderr, " %s", benchmark.name.data());
    }
    std::fprintf(stderr, "\n");
    return 2;
  }
  bool allMet = true;
  for (const Benchmark& benchmark : benchmarks) {
    if (argc == 1 || std::find(argv + 1, argv + argc, benchmark.name) != argv + argc) {
      allMet &= benchmark.run();
    }
  }
  return allMet ? 0 : 1;
}
