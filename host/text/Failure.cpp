#include "host/text/Failure.h"

#include <iterator>

#include "host/text/PathText.h"

namespace host {

namespace {

const std::runtime_error noMemory("not enough memory");  // copies share its text

}  // namespace

std::string causeOf(const CException& exception) {
  TCHAR text[1024] = {};
  (void)exception.GetErrorMessage(text, static_cast<UINT>(std::size(text)));
  return utf8Of(text);
}

void throwNoMemory() {
  throw std::runtime_error(noMemory);
}

void throwFileFailure(const char* doing, const CString& path, const std::string& cause) {
  const char* const told = cause.empty() ? "the reason is not known" : cause.c_str();
  throw FileFailure(std::string("cannot ") + doing + " " + utf8Of(path) + ": ", told);
}

}  // namespace host
