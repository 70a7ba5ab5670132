// Which of a set's columns a table has, and how a dipole is made of one of its lines. Both formats, text with
// a separator and JSON, are read by these rules.
#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>

#include "host/exchange/DipoleFields.h"

namespace host {

// The place of a column's title, the moment's with or without nAm; nothing for any other title.
std::optional<std::size_t> placeOfTitle(std::string_view title);

// Why such a title is refused, to stand behind it: it is of an atlas, or it is no column.
const char* notReadBack(std::string_view title);

// A number of text, as the writers write it: nothing when it is none, or beyond what `Number` holds.
template <typename Number>
std::optional<Number> numberOf(std::string_view text);

// What is wrong about a value, and where it stands.
struct FieldFault {
  std::size_t place = 0;
  std::string what;
};

// The values of one dipole, by the places of their columns; nothing: the column is not there.
using DipoleRow = std::array<std::optional<FieldValue>, fieldCount>;

// Why a set of columns makes no dipole; nothing when it does. `has` says which are there.
std::optional<std::string> whatIsMissing(const std::array<bool, fieldCount>& has);

// Makes `dipole`, which is new, what the row says. The result is the sum of the DipoleValues that it leaves
// unknown, unless there is a fault.
struct MadeDipole {
  std::uint8_t unknown = 0;
  std::optional<FieldFault> fault;
};
MadeDipole makeDipole(const DipoleRow& row, CDipoleszq& dipole);

}  // namespace host
