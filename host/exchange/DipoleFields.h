// The columns of a set's table, the same ones in every format: what they are called, what they hold, and how
// a dipole's member becomes a value and a value a member.
//
// Names carry their units: mm in the host's head frame (x to the left ear, y up, z to the nose), ms, percent.
// Every member that has a column survives the way out and back bit by bit, but for the payload and the sign
// of what is not a number, and for the halves of surrogate pairs in a label, which become U+FFFD.
//
// Members without a column, which a table loses: m_extraFlag, m_extraValue, m_segments, m_scale,
// m_orientationScale, m_orientationLength, m_dimX, m_dimY, m_dimZ, m_importTag1, m_importTag2, m_listItemId,
// m_rawLocation, m_rawOrientation.
#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <variant>

#include "host/dipoles/UnknownValues.h"
#include "module/dipole.h"

namespace host {

// Nothing: the value is unknown.
using FieldValue = std::variant<std::monostate, bool, int, float, double, std::string>;

enum class FieldKind {
  whole,  // int
  flag,   // bool, or int for a member that is neither 0 nor 1
  single,
  real,
  text,   // UTF-8
  colour  // a text: #rrggbb, or #xxrrggbb when the member has bits beyond
};

struct DipoleField {
  const char* name;
  FieldKind kind;
  // The value that may be unknown.
  std::optional<DipoleValue> unknown;
  FieldValue (*get)(const CDipoleszq& dipole);
  // `value` has the kind's type. False: it says what cannot be.
  bool (*set)(CDipoleszq& dipole, const FieldValue& value);
};

enum FieldPlace : std::size_t {
  fieldNumber,
  fieldId,
  fieldFitTag,
  fieldLabel,
  fieldX,
  fieldY,
  fieldZ,
  fieldOrientationX,
  fieldOrientationY,
  fieldOrientationZ,
  fieldMoment,
  fieldLatency,
  fieldFitError,
  fieldColor,
  fieldRed3D,
  fieldGreen3D,
  fieldBlue3D,
  fieldShown,
  fieldOrientationShown,
  fieldDisplay,
  fieldShownOnSlices,  // says nothing beyond fieldDisplay, for readers who do not know its numbers
  fieldSelected,
  fieldGlyphSize,
  fieldCount
};

// In the order of the columns.
std::span<const DipoleField, fieldCount> dipoleFields();

// The column of the moment says nAm only when it is.
const char* fieldTitle(std::size_t place, bool isMomentInNAm);

// What place and orientation are called when they are told in another frame (host/exchange/SetFrame.h); empty
// for the host's own.
using FrameTitles = std::array<std::string, 6>;
std::string titleIn(std::size_t place, bool isMomentInNAm, const FrameTitles& titles);

// Nothing when the value is unknown.
FieldValue fieldValue(std::size_t place, const CDipoleszq& dipole, std::uint8_t unknown);

}  // namespace host
