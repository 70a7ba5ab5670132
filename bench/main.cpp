// dipole_bench: the module's speed and memory, as ratios to yardsticks measured in the same run. Exits with 1
// when a ratio is not as wanted.
#include <malloc.h>

#include "bench/Benchmarks.h"

int main() {
  // Memory that a round gave back stays with the process: what is measured is the module, not the system
  // clearing pages.
  mallopt(M_TRIM_THRESHOLD, 1 << 30);
  mallopt(M_MMAP_THRESHOLD, 1 << 30);
  bool allMet = benchDipolesImport();
  allMet &= benchFitResultsImport();
  allMet &= benchMsiImport();
  allMet &= benchSliceDrawing();
  allMet &= benchSort();
  allMet &= benchView3D();
  allMet &= benchArchive();
  allMet &= benchScene();
  allMet &= benchMemory();
  allMet &= benchHistory();
  allMet &= benchPanes();
  return allMet ? 0 : 1;
}
