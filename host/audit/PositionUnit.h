// The unit in which a file gives its positions.
#pragma once

#include <optional>
#include <string_view>

#include "host/audit/FileAudit.h"
#include "host/audit/Heading.h"

namespace host {

// What the file states counts, as long as a head can be meant; else what the user says.
class PositionUnit {
 public:
  PositionUnit() = default;
  // `largest` of the coordinates as they are written, without their signs.
  PositionUnit(ColumnUnit stated, float largest, std::optional<LengthUnit> said);

  // Whether the file states it and its positions can be those of a head.
  bool isCertain() const { return m_isCertain; }
  ColumnUnit stated() const { return m_stated; }
  // What makes mm of a coordinate: of the certain unit, or of the one that the user said; else nothing.
  std::optional<float> factor() const;
  // Whether the user said another unit than the certain one.
  bool isContradicted() const { return m_isCertain && m_said && *m_said != m_stated; }

 private:
  ColumnUnit m_stated = ColumnUnit::none;
  std::optional<ColumnUnit> m_said;
  bool m_isCertain = false;
};

// The largest coordinate that may be cm: beyond, no head is that large.
inline constexpr float largestInCentimetre = 15.0F;

std::string_view nameOf(ColumnUnit unit);  // "cm", "mm", "m"; empty for others

}  // namespace host
