// Two families of programs write files that end in .dip: those of CTF sections in braces, Neuromag's (Xfit)
// and MNE rows of numbers below a heading. What a file is stands in it.
#pragma once

#include <afx.h>

#include <cstddef>
#include <string_view>

namespace host {

enum class DipContent {
  ctf,       // a brace alone on a line, or the name of a section that holds dipoles
  neuromag,  // a heading of Neuromag's columns, or the line that names the coordinate system
  rows,      // rows of ten numbers or more, without a heading: Neuromag's too, but it does not say so
  other      // nothing of that: no file of dipoles that is known
};

// How much of a file is looked at.
inline constexpr std::size_t dipContentBytes = 65536;

// `start`: of the file, as 8-bit text.
DipContent dipContentOf(std::string_view start);

// `other` when it cannot be read.
DipContent dipContentOfFile(const CString& path);

constexpr bool isNeuromag(DipContent content) {
  return content == DipContent::neuromag || content == DipContent::rows;
}

}  // namespace host
