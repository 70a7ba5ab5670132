#include "host/text/Numbers.h"

#include <array>
#include <charconv>
#include <cmath>
#include <limits>
#include <system_error>

namespace host {
namespace {

constexpr double largestFixed = 1e9;

bool isSinglePrecision(double value) {
  constexpr double largest = std::numeric_limits<float>::max();
  return std::abs(value) <= largest && static_cast<double>(static_cast<float>(value)) == value;
}

template <class Number>
std::string toText(Number value) {
  std::array<char, 64> buffer{};
  const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value).ptr;
  return {buffer.data(), end};
}

bool isZero(std::string_view digits) {
  return digits.find_first_not_of("-0.") == std::string_view::npos;
}

}  // namespace

std::string fixed(double value, int decimals) {
  if (!(std::abs(value) < largestFixed)) {
    return shortest(value);
  }
  std::array<char, 64> buffer{};
  const auto end =
      std::to_chars(buffer.data(), buffer.data() + buffer.size(), value, std::chars_format::fixed, decimals)
          .ptr;
  const std::string_view digits(buffer.data(), static_cast<std::size_t>(end - buffer.data()));
  const bool isMinusZero = digits.front() == '-' && isZero(digits);
  return std::string(isMinusZero ? digits.substr(1) : digits);
}

std::string shortest(double value) {
  if (std::isnan(value)) {
    return "nan";
  }
  return isSinglePrecision(value) ? toText(static_cast<float>(value)) : toText(value);
}

std::string exact(double value) {
  return std::isnan(value) ? "nan" : toText(value);
}

double withShortestDigits(double value) {
  const std::string digits = shortest(value);
  double result = value;
  if (std::isfinite(value)) {
    (void)std::from_chars(digits.data(), digits.data() + digits.size(), result);
  }
  return result;
}

std::optional<double> numberOf(std::string_view text) {
  if (text.starts_with('+') && !text.starts_with("+-")) {
    text.remove_prefix(1);
  }
  double value = 0.0;
  const auto result = std::from_chars(text.data(), text.data() + text.size(), value);
  const bool isWhole = result.ec == std::errc() && result.ptr == text.data() + text.size();
  return isWhole && std::isfinite(value) ? std::optional(value) : std::nullopt;
}

}  // namespace host
