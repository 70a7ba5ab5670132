// Which dipoles pass limits of fit error, moment and latency.
//
// Limits are set or not; both ends of a window pass. A value that is not a number passes no limit that is
// set, and a limit that is not a number lets nothing pass: what cannot be judged is not shown as if it were
// within the limits.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "host/dipoles/UnknownValues.h"
#include "module/dipole.h"

namespace host {

struct ValueLimits {
  std::optional<double> least;
  std::optional<double> most;

  bool isSet() const { return least.has_value() || most.has_value(); }
  bool pass(double value) const;

  friend bool operator==(const ValueLimits&, const ValueLimits&) = default;
};

struct DipoleFilter {
  ValueLimits fitError;  // percent
  ValueLimits moment;    // nAm, or the unit of the set's file; its sign counts
  ValueLimits latency;   // ms

  bool isSet() const { return fitError.isSet() || moment.isSet() || latency.isSet(); }
  // `unknown`: a sum of DipoleValues; what is unknown passes no limit that is set.
  bool passes(const CDipoles& dipole, std::uint8_t unknown = 0) const {
    return !removedBy(dipole, unknown).has_value();
  }
  // The first limit, in the order above, that the dipole does not pass; nothing when it passes all.
  std::optional<DipoleValue> removedBy(const CDipoles& dipole, std::uint8_t unknown = 0) const;

  friend bool operator==(const DipoleFilter&, const DipoleFilter&) = default;
};

// "latency 80 to 120 ms", "fit error at most 10 %"; empty when the limits are not set. `unit` begins with its
// blank.
std::string limitText(const std::string& name, const std::string& unit, const ValueLimits& limits);
// One for each limit that is set.
std::vector<std::string> filterTexts(const DipoleFilter& filter, bool isMomentInNAm);

}  // namespace host
