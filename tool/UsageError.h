// Arguments that the parser takes and a command cannot follow.
#pragma once

#include <stdexcept>

namespace tool {

class UsageError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

}  // namespace tool
