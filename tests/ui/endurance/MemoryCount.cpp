#include "tests/ui/endurance/MemoryCount.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <psapi.h>
namespace {

void add(HANDLE heap, HeapUse& use) {
  if (::HeapLock(heap) == FALSE) {
    return;
  }
  PROCESS_HEAP_ENTRY entry = {};
  while (::HeapWalk(heap, &entry) != FALSE) {
    if ((entry.wFlags & PROCESS_HEAP_ENTRY_BUSY) != 0) {
      ++use.blocks;
      use.bytes += entry.cbData;
    }
  }
  ::HeapUnlock(heap);
}

}  // namespace

HeapUse heapUse() {
  std::array<HANDLE, 100> heaps = {};
  const DWORD count = ::GetProcessHeaps(static_cast<DWORD>(heaps.size()), heaps.data());
  HeapUse use = {};
  for (DWORD i = 0; i < count && i < heaps.size(); ++i) {
    add(heaps[i], use);
  }
  return use;
}

std::size_t privateBytes() {
  PROCESS_MEMORY_COUNTERS_EX memory = {};
  memory.cb = sizeof memory;
  ::GetProcessMemoryInfo(::GetCurrentProcess(), reinterpret_cast<PROCESS_MEMORY_COUNTERS*>(&memory),
                         sizeof memory);
  // Wine tells neither of the first two.
  const std::size_t known[] = {memory.PrivateUsage, memory.PagefileUsage, memory.WorkingSetSize};
  return *std::find_if(std::begin(known), std::end(known) - 1, [](std::size_t bytes) { return bytes != 0; });
}
