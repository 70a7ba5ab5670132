// How much memory this process holds: to prove that nothing stays behind.
#pragma once

#include <cstddef>
#include <windows.h>

// Blocks in use, in every heap of the process, and the bytes in them.
struct HeapUse {
  long long blocks;
  long long bytes;
};
HeapUse heapUse();

// What the system has given to this process alone, bytes; where it does not tell, what is in physical memory.
std::size_t privateBytes();
