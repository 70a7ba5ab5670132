#include "tool/FilterOptions.h"

#include <stdexcept>
#include <string_view>

#include "host/text/Numbers.h"
#include "tool/ArgumentCheck.h"

namespace tool {
namespace {

// Of a fit error: poor fits of files that count otherwise are more than 100.
constexpr double mostPercent = 1e6;
constexpr double wholePercent = 100.0;

[[noreturn]] void fail(const std::string& text, const std::string& cause) {
  throw std::invalid_argument("\"" + text + "\": " + cause);
}

std::optional<double> limitOf(const std::string& text, std::string_view part) {
  if (part.empty()) {
    return std::nullopt;
  }
  const std::optional<double> value = host::numberOf(part);
  if (!value) {
    fail(text, "write LEAST:MOST, such as 10:50, 10: or :50");
  }
  return value;
}

}  // namespace

host::ValueLimits parseLimits(const std::string& text) {
  const std::size_t colon = text.find(':');
  if (colon == std::string::npos || text.size() == 1) {
    fail(text, "write LEAST:MOST, such as 10:50, 10: or :50");
  }
  const std::string_view all = text;
  const host::ValueLimits limits{limitOf(text, all.substr(0, colon)), limitOf(text, all.substr(colon + 1))};
  if (limits.least && limits.most && *limits.least > *limits.most) {
    fail(text, "the first number is the smaller one");
  }
  return limits;
}

void FilterOptions::addTo(CLI::App& command) {
  const auto add = [&](const std::string& name, auto& value, const char* type, const char* text) {
    return command.add_option(name, value, text)->type_name(type);
  };
  CLI::Option* error =
      add("--max-error", m_maxError, "PERCENT", "Only dipoles with a fit error of at most PERCENT")
          ->check(numberBetween(0.0, mostPercent));
  add("--min-goodness", m_minGoodness, "PERCENT",
      "Only dipoles with a goodness of fit, 100 minus the fit error, of at least PERCENT")
      ->check(numberBetween(0.0, wholePercent))
      ->excludes(error);
  add("--moment", m_moment, "A:B", "Only dipoles with a moment from A to B; its sign counts")
      ->check(argumentCheck(parseLimits));
  add("--latency", m_latency, "A:B", "Only dipoles from A to B ms")->check(argumentCheck(parseLimits));
}

host::DipoleFilter FilterOptions::filter() const {
  host::DipoleFilter filter;
  filter.fitError.most = m_minGoodness ? wholePercent - *m_minGoodness : m_maxError;
  if (!m_moment.empty()) {
    filter.moment = parseLimits(m_moment);
  }
  if (!m_latency.empty()) {
    filter.latency = parseLimits(m_latency);
  }
  return filter;
}

}  // namespace tool
