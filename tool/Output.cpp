#include "tool/Output.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <stdexcept>

#include "host/text/Numbers.h"
#include "tool/Text.h"

namespace tool {

void writeResult(const std::string& text) {
  const bool isWritten = std::fwrite(text.data(), 1, text.size(), stdout) == text.size();
  if (!isWritten || std::fflush(stdout) != 0) {
    throw std::runtime_error(std::string("cannot write the result: ") + std::strerror(errno));
  }
}

void writeResult(const Json& json) {
  constexpr int indent = 2;
  writeResult(printableJson(json.dump(indent, ' ', false, Json::error_handler_t::replace)) + "\n");
}

Json jsonNumber(double value) {
  return host::withShortestDigits(value);
}

Json jsonText(const std::string& text) {
  return text.empty() ? Json(nullptr) : Json(text);
}

}  // namespace tool
