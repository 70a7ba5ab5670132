// How the viewer's operations fail: with a std::runtime_error whose text (UTF-8) a user can read, whatever
// the framework or the standard library threw.
#pragma once

#include <afx.h>

#include <cstddef>
#include <memory>
#include <new>
#include <stdexcept>
#include <string>

namespace host {

// Ends an exception of the framework.
struct ExceptionDeleter {
  void operator()(CException* exception) const { exception->Delete(); }
};

// What the framework says about a fault, such as "Access denied"; empty when it says nothing.
std::string causeOf(const CException& exception);

// std::runtime_error "not enough memory", which itself asks for none.
[[noreturn]] void throwNoMemory();

// What could not be done with a file, and why.
class FileFailure : public std::runtime_error {
 public:
  FileFailure(const std::string& doing, const std::string& cause)
      : std::runtime_error(doing + cause), m_causeAt(doing.size()) {}
  // The end of what(), without what was being done.
  const char* cause() const { return what() + m_causeAt; }

 private:
  std::size_t m_causeAt;
};

// Throws the FileFailure "cannot `doing` the file: cause", such as "cannot write /home/a/set.dipset: No
// space left".
[[noreturn]] void throwFileFailure(const char* doing, const CString& path, const std::string& cause);

// Runs a piece of work; false when memory ran out in it.
template <typename Work>
bool hasMemoryFor(Work work) {
  try {
    work();
    return true;
  } catch (CMemoryException* exception) {
    exception->Delete();
  } catch (const std::bad_alloc&) {
  }
  return false;
}

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
