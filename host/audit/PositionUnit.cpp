#include "host/audit/PositionUnit.h"

namespace host {

namespace {

// Numbers that are small enough for cm are doubted when they are called mm: a program may write one for the
// other.
bool canBeOfAHead(ColumnUnit unit, float largest) {
  constexpr float largestInMetre = 0.3F;
  switch (unit) {
    case ColumnUnit::centimetre:
      return true;
    case ColumnUnit::millimetre:
      return largest > largestInCentimetre;
    case ColumnUnit::metre:
      return largest <= largestInMetre;
    default:
      return false;
  }
}

}  // namespace

PositionUnit::PositionUnit(ColumnUnit stated, float largest, std::optional<LengthUnit> said)
    : m_stated(stated), m_isCertain(canBeOfAHead(stated, largest)) {
  if (said) {
    m_said = *said == LengthUnit::centimetre ? ColumnUnit::centimetre : ColumnUnit::millimetre;
  }
}

std::optional<float> PositionUnit::factor() const {
  const std::optional<ColumnUnit> unit = m_isCertain ? m_stated : m_said;
  if (!unit) {
    return std::nullopt;
  }
  return *unit == ColumnUnit::metre ? 1000.0F : *unit == ColumnUnit::centimetre ? 10.0F : 1.0F;
}

std::string_view nameOf(ColumnUnit unit) {
  switch (unit) {
    case ColumnUnit::centimetre:
      return "cm";
    case ColumnUnit::millimetre:
      return "mm";
    case ColumnUnit::metre:
      return "m";
    default:
      return {};
  }
}

}  // namespace host
