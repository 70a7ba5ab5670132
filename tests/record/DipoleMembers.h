// Every member of a dipole by name: for filling one with values that are all different, and for comparing
// two.
#pragma once

#include <map>
#include <string>

#include "record/Dipoles.h"

// Values as text that tells any two apart; numbers that are none compare equal to themselves.
using MemberValues = std::map<std::string, std::string>;

MemberValues membersOf(const CDipoles& dipole);

// Gives every member a value that is neither its initial one nor another member's.
void fillMembers(CDipoles& dipole);
