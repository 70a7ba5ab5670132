#include "host/dipoles/DipoleFilter.h"

#include "host/text/Numbers.h"

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

std::string limitText(const std::string& name, const std::string& unit, const ValueLimits& limits) {
  if (limits.least && limits.most) {
    return name + " " + shortest(*limits.least) + " to " + shortest(*limits.most) + unit;
  }
  if (limits.least) {
    return name + " at least " + shortest(*limits.least) + unit;
  }
  return limits.most ? name + " at most " + shortest(*limits.most) + unit : std::string();
}

std::vector<std::string> filterTexts(const DipoleFilter& filter, bool isMomentInNAm) {
  std::vector<std::string> texts = {limitText("fit error", " %", filter.fitError),
                                    limitText("moment", isMomentInNAm ? " nAm" : "", filter.moment),
                                    limitText("latency", " ms", filter.latency)};
  std::erase(texts, "");
  return texts;
}

}  // namespace host
