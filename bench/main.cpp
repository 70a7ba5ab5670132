// dipole_bench: the module's speed and memory, as ratios to yardsticks measured in the same run. Exits with 1
// when a ratio is not as wanted.
#include "bench/Benchmarks.h"

int main() {
  bool allMet = benchDipolesImport();
  allMet &= benchFitResultsImport();
  allMet &= benchSliceDrawing();
  allMet &= benchMemory();
  return allMet ? 0 : 1;
}
