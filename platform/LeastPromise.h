// A switch for tests: the MFC names then do the least that MFC's documentation promises, as far as this
// project knows how to do less (docs/platform.md says where). Not an MFC name. What passes with it on and off
// does not lean on more than MFC gives.
//
// It is off, unless the environment of the process holds PLATFORM_LEAST_PROMISE with any text but an empty
// one.
#pragma once

#include <cstddef>

// Whether it is on.
bool isLeastPromised();

// Turns it for the process and returns what it was. Objects keep what they took over while it was different.
bool promiseLeast(bool least);

// Fills memory whose content MFC leaves open. Nothing happens while the switch is off.
void spoil(void* memory, std::size_t bytes);

// Ends the program, after a line on the standard error stream: something was done that MFC's documentation
// does not allow. Only called while the switch is on.
[[noreturn]] void endUnpromised(const char* what);
