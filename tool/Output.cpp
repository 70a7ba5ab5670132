#include "tool/Output.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <stdexcept>

#include "tool/Console.h"
#include "tool/Text.h"

namespace tool {

void writeResult(const std::string& text) {
  const bool isWritten = std::fwrite(text.data(), 1, text.size(), stdout) == text.size();
  if (!isWritten || std::fflush(stdout) != 0) {
    throw std::runtime_error(std::string("cannot write the result: ") + std::strerror(errno));
  }
}

void writeResult(const Json& json) {
  writeResult(printableLines(host::indented(json)));
}

bool isResultOnTerminal() {
  return isTerminal(Stream::output);
}

}  // namespace tool
