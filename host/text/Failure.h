// How the viewer's operations fail: with a std::runtime_error whose text (UTF-8) a user can read, whatever
// the framework or the standard library threw.
#pragma once

#include <afx.h>

#include <memory>
#include <new>
#include <string>

namespace host {

// Ends an exception of the framework.
struct ExceptionDeleter {
  void operator()(CException* exception) const { exception->Delete(); }
};

// What the framework says about a fault, such as "Access denied"; empty when it says nothing.
[[nodiscard]] std::string causeOf(const CException& exception);

// std::runtime_error "not enough memory", which itself asks for none.
[[noreturn]] void throwNoMemory();

// Throws "cannot `doing` the file: cause", such as "cannot write /home/a/set.dipset: No space left".
[[noreturn]] void throwFileFailure(const char* doing, const CString& path, const std::string& cause);

// Runs a piece of work; exhausted memory becomes that exception.
template <typename Work>
auto withinMemory(Work work) {
  try {
    return work();
  } catch (CMemoryException* exception) {
    exception->Delete();
  } catch (const std::bad_alloc&) {
  }
  throwNoMemory();
}

// Runs a piece of work on a file, and tells what the framework throws in it as throwFileFailure does.
template <typename Work>
auto withFile(const char* doing, const CString& path, Work work) {
  return withinMemory([&] {
    try {
      return work();
    } catch (CMemoryException*) {
      throw;
    } catch (CException* exception) {
      const std::unique_ptr<CException, ExceptionDeleter> caught(exception);
      throwFileFailure(doing, path, causeOf(*caught));
    }
  });
}

}  // namespace host
