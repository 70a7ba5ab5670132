// Where the program meets the system's console: what it is called with, what people read and type.
//
// Arguments and all texts are UTF-8. Standard input, output and error are bytes, also where the system knows
// streams of text.
#pragma once

namespace tool {

enum class Stream { input, output, error };

// Before anything is read or written.
void prepareConsole();

// Until the person at the terminal presses Return, or asks for the program's end: where signals do that they
// have to be held back meanwhile (host/text/EndingHeldBack.h), and take effect behind that.
void waitForReturn();

// Whether a person sits at the stream.
bool isTerminal(Stream stream);

}  // namespace tool
