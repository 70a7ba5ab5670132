// How an import ends when something fails.
#pragma once

#include <afx.h>

#include <new>

// Runs an import so that no exception leaves the module: a file fault is reported by the framework's own box,
// exhausted memory ends the import silently.
template <typename Work>
void guardImport(Work work) {
  try {
    work();
  } catch (CFileException* exception) {
    exception->ReportError();
    exception->Delete();
  } catch (CMemoryException* exception) {
    exception->Delete();
  } catch (const std::bad_alloc&) {
  }
}
