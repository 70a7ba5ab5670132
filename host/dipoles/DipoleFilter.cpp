#include "host/dipoles/DipoleFilter.h"

namespace host {

// Asked so that every comparison with what is not a number fails.
bool ValueLimits::pass(double value) const {
  return (!least || value >= *least) && (!most || value <= *most);
}

std::optional<DipoleValue> DipoleFilter::removedBy(const CDipoles& dipole, std::uint8_t unknown) const {
  const auto pass = [unknown](const ValueLimits& limits, double value, DipoleValue kind) {
    const bool isUnknown = (unknown & static_cast<std::uint8_t>(kind)) != 0;
    return isUnknown ? !limits.isSet() : limits.pass(value);
  };
  if (!pass(fitError, dipole.m_fitError, DipoleValue::fitError)) {
    return DipoleValue::fitError;
  }
  if (!pass(moment, dipole.m_moment, DipoleValue::moment)) {
    return DipoleValue::moment;
  }
  if (!pass(latency, dipole.m_latency, DipoleValue::latency)) {
    return DipoleValue::latency;
  }
  return std::nullopt;
}

}  // namespace host
