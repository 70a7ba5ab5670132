// The memory of a full collection, as the heap counts it.
#include <cstdio>
#include <malloc.h>
#include <memory>

#include "bench/Benchmarks.h"
#include "module/dipole.h"

namespace {

double heapMegabytes() {
  const struct mallinfo2 heap = mallinfo2();
  return static_cast<double>(heap.uordblks + heap.hblkhd) / (1024.0 * 1024.0);
}

}  // namespace

bool benchMemory() {
  constexpr double limit = 32.0;
  const double before = heapMegabytes();
  auto face = std::make_unique<CDipoleFace8Import01_CTF>();
  CString label;
  for (int i = 0; i < DipoleTable::capacity; ++i) {
    face->addDipole();
    label.Format(_T("left temporal spike %d"), i);
    face->setDipoleName(-1, label);
  }
  const double used = heapMegabytes() - before;
  const bool isMet = used <= limit;
  std::printf(
      "\nA full collection of %d dipoles with labels of 25 characters: %.1f MB, wanted at most %.0f MB: %s\n",
      face->m_totalDipoles, used, limit, isMet ? "met" : "MISSED");
  return isMet;
}
