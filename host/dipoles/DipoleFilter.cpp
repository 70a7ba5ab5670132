#include "host/dipoles/DipoleFilter.h"

namespace host {

// Asked so that every comparison with what is not a number fails.
bool ValueLimits::pass(double value) const {
  return (!least || value >= *least) && (!most || value <= *most);
}

bool DipoleFilter::passes(const CDipoles& dipole, std::uint8_t unknown) const {
  if (!isSet()) {
    return true;
  }
  const auto pass = [unknown](const ValueLimits& limits, double value, DipoleValue kind) {
    const bool isUnknown = (unknown & static_cast<std::uint8_t>(kind)) != 0;
    return isUnknown ? !limits.isSet() : limits.pass(value);
  };
  return pass(fitError, dipole.m_fitError, DipoleValue::fitError) &&
         pass(moment, dipole.m_moment, DipoleValue::moment) &&
         pass(latency, dipole.m_latency, DipoleValue::latency);
}

}  // namespace host
