// A film in pictures: the pointer rests on the manager's rows, and nothing happens.
#pragma once

#include <string>

#include "tests/ui/screens/Album.h"

// Takes resting-opened, resting-chosen, resting-typing, and of each what is there two seconds later, as
// "...-later"; the pointer is in the pictures. `set` is the path of a CTF file with six dipoles or more.
void filmRestingPointer(Album& album, const std::string& set);
