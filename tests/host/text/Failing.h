// What an operation of the viewer threw.
#pragma once

#include <stdexcept>
#include <string>

// The text of the std::runtime_error or std::invalid_argument that `work` threw, empty when it threw nothing.
template <typename Work>
std::string failureOf(Work work) {
  try {
    work();
  } catch (const std::runtime_error& error) {
    return error.what();
  } catch (const std::invalid_argument& error) {
    return error.what();
  }
  return {};
}
