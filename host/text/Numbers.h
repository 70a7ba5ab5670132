// Numbers as text, and text as numbers. Always with a point, whatever the locale of the process says.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace host {

// A fixed number of decimals; never "-0.00". Very large values come as shortest() gives them.
std::string fixed(double value, int decimals);

// As few digits as give the value back. Values that were read in single precision are written as the
// single-precision number that they are: 96.2, not 96.19999694824219.
std::string shortest(double value);

// As few digits as give this very double back, with nothing said about single precision; nan, inf or -inf.
std::string exact(double value);

// The double that shortest() writes, for writers that format doubles themselves.
double withShortestDigits(double value);

// The finite number that a text is as a whole, with or without a sign; nothing when it is none.
std::optional<double> numberOf(std::string_view text);

}  // namespace host
