#include "host/picture/NiceTicks.h"

#include <array>
#include <charconv>
#include <cmath>

namespace host {

namespace {

struct Step {
  int digit;  // 1, 2 or 5
  int exponent;

  Step next() const {
    if (digit == 1) {
      return {2, exponent};
    }
    return digit == 2 ? Step{5, exponent} : Step{1, exponent + 1};
  }

  // Nearest to the decimal number: a power of ten below 1 has no exact one of its own.
  double times(double count) const {
    const double power = std::pow(10.0, std::abs(exponent));
    return exponent < 0 ? count * digit / power : count * digit * power;
  }
};

// How many multiples lie in low .. high. The smallest part of a step is forgiven at both ends.
struct Multiples {
  double first;
  double last;

  Multiples(const Step& step, double low, double high) {
    constexpr double forgiven = 1e-9;
    const double width = step.times(1.0);
    first = std::ceil(low / width - forgiven);
    last = std::floor(high / width + forgiven);
  }
  double count() const { return last - first + 1.0; }
};

template <typename... Form>
std::string textOf(double value, Form... form) {
  std::array<char, 400> text{};
  const auto end = std::to_chars(text.data(), text.data() + text.size(), value + 0.0, form...);
  return {text.data(), end.ptr};
}

std::string textOf(double value, const Step& step) {
  constexpr int mostDigits = 6;  // what is larger or smaller is told in the shortest way that is exact
  if (step.exponent < -mostDigits || std::fabs(value) >= 1e7) {
    return textOf(value);
  }
  return textOf(value, std::chars_format::fixed, step.exponent < 0 ? -step.exponent : 0);
}

}  // namespace

std::vector<Tick> niceTicks(double low, double high, int most) {
  if (!std::isfinite(low) || !std::isfinite(high - low) || high < low) {
    return {};
  }
  constexpr double leastWidth = 1e-300;  // below it a step would have no exact power of ten
  if (high - low < leastWidth) {
    return {{low, textOf(low)}};
  }
  Step step{1, static_cast<int>(std::floor(std::log10((high - low) / most)))};
  while (Multiples(step, low, high).count() > most) {
    step = step.next();
  }
  const Multiples multiples(step, low, high);
  std::vector<Tick> ticks;
  const auto count = static_cast<int>(multiples.count());
  for (int i = 0; i < count; ++i) {
    const double value = step.times(multiples.first + i) + 0.0;
    ticks.push_back({value, textOf(value, step)});
  }
  return ticks;
}

}  // namespace host
