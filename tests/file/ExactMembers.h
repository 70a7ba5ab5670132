// Every member of a dipole or of a collection as lines of text, "name value", exact to the bit.
//
// Numbers with a fraction are the hexadecimal digits of their bits; of a text, what is not plain ASCII stands
// as \uXXXX, one UTF-16 unit each. make_archives.py lists what its archives hold in the same form.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "collection/DipoleFace.h"

using Lines = std::vector<std::string>;

Lines linesOf(const CDipoles& dipole);

// Slots in use and slots behind the count that hold something: "slot 3 m_fitError ..." or "slot 3 empty".
Lines linesOf(const CDipoleFace& face);

// Gives every set-wide member, not the slots, a value that is neither its initial one nor another member's.
void fillMembers(CDipoleFace& face);

// Lines with a word and a blank in front of each.
Lines prefixed(const std::string& prefix, const Lines& lines);

// The lines that one of the two holds more often than the other: "- " only in `before`, "+ " only in `after`.
Lines differences(Lines before, Lines after);

// The files beside make_archives.py.
std::string archiveBytes(const std::string& name);
Lines archiveLines(const std::string& name);
