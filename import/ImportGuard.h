// How an import ends when something fails.
#pragma once

#include <afx.h>

#include <memory>

#include "collection/WithinMemory.h"

struct DeleteException {
  void operator()(CException* exception) const { exception->Delete(); }
};

// Runs a piece of work and reports its file fault by the framework's own box, which may run out of memory.
template <typename Work>
void reportFileFaults(Work work) {
  try {
    work();
  } catch (CFileException* exception) {
    const std::unique_ptr<CFileException, DeleteException> caught(exception);
    caught->ReportError();
  }
}

// Runs an import so that no exception leaves the module: a file fault is reported by the framework's own box,
// exhausted memory ends the import silently.
template <typename Work>
void guardImport(Work work) {
  isWithinMemory([&] { reportFileFaults(work); });
}
