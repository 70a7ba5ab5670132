#include "host/dipoles/ValueColors.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>

namespace host {

namespace {

bool isUnknown(const UnknownDipoles* unknown, const CDipoles& dipole, DipoleValue value) {
  return unknown != nullptr && unknown->isUnknown(dipole, value);
}

std::vector<double> valuesOf(const CDipoleFace& set, DipoleValue value, const UnknownDipoles* unknown) {
  std::vector<double> values;
  for (int slot = 0; slot < set.m_totalDipoles; ++slot) {
    if (const CDipoleszq* dipole = set.m_dipoles[slot];
        dipole != nullptr && !isUnknown(unknown, *dipole, value)) {
      values.push_back(valueOf(*dipole, value));
    }
  }
  return values;
}

}  // namespace

double valueOf(const CDipoles& dipole, DipoleValue value) {
  switch (value) {
    case DipoleValue::latency:
      return dipole.m_latency;
    case DipoleValue::fitError:
      return dipole.m_fitError;
    case DipoleValue::moment:
      return dipole.m_moment;
    case DipoleValue::orientation:
    case DipoleValue::label:
      break;
  }
  return std::numeric_limits<double>::quiet_NaN();
}

std::string titleOf(DipoleValue value, const CDipoleFace& set) {
  switch (value) {
    case DipoleValue::latency:
      return "latency (ms)";
    case DipoleValue::fitError:
      return "fit error (%)";
    case DipoleValue::moment:
      return set.m_momentInNAm == 1 ? "moment (nAm)" : "moment";
    case DipoleValue::orientation:
      return "orientation";
    case DipoleValue::label:
      break;
  }
  return "label";
}

std::optional<ValueRange> robustRange(std::vector<double> values) {
  std::erase_if(values, [](double value) { return !std::isfinite(value); });
  if (values.empty()) {
    return std::nullopt;
  }
  std::sort(values.begin(), values.end());
  const std::size_t cut = (values.size() - 1) / 50;  // whole dipoles within two of a hundred
  const double low = values[cut];
  const double high = values[values.size() - 1 - cut];
  return ValueRange{low, high, values.front() < low, values.back() > high};
}

ValueColors::ValueColors(const CDipoleFace& set, DipoleValue value, const UnknownDipoles* unknown)
    : ValueColors(value, titleOf(value, set), robustRange(valuesOf(set, value, unknown))) {
  m_unknown = unknown;
}

Rgb ValueColors::colorOf(const CDipoles& dipole) const {
  return isUnknown(m_unknown, dipole, m_value) ? noValueColor : colorOf(valueOf(dipole, m_value));
}

Rgb ValueColors::colorOf(double value) const {
  if (!m_range) {
    return noValueColor;
  }
  if (m_range->low == m_range->high && value == m_range->low) {
    return scaleColor(0.5);
  }
  // By halves, because the width of the range may be beyond the largest number.
  const double width = m_range->high / 2.0 - m_range->low / 2.0;
  if (value <= m_range->low) {
    return scaleColor(0.0);
  }
  if (value >= m_range->high) {
    return scaleColor(1.0);
  }
  return scaleColor((value / 2.0 - m_range->low / 2.0) / width);
}

}  // namespace host
