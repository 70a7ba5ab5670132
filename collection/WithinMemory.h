// How the module finds out that memory is exhausted: the framework throws its own exception for it, the
// standard library another one.
#pragma once

#include <afx.h>

#include <new>

// Runs a piece of work. Returns false when memory ran out in it; other exceptions pass.
template <typename Work>
bool isWithinMemory(Work work) {
  try {
    work();
    return true;
  } catch (CMemoryException* exception) {
    exception->Delete();
  } catch (const std::bad_alloc&) {
  }
  return false;
}
