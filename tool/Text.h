// Text of unknown origin, made fit for the terminal. All of it is UTF-8 (see platform/Utf.h).
#pragma once

#include <afx.h>

#include <string>
#include <string_view>

namespace tool {

// The same text with every character that a terminal could act upon (control characters, marks that change
// the reading direction) and every byte that is not UTF-8 as an escape such as \u001b or \xff.
std::string printable(std::string_view text);

// The same for JSON that is already written: its line ends stay, and the escapes are JSON's own.
std::string printableJson(std::string_view json);

// A text that the module took from the line of a keyword ("PATIENT:") in a file's header. The module cuts as
// many characters off the line's front as the keyword has, so an indented keyword leaves its end there; that
// goes, and blanks around. Empty when the file gave none (the module then says "non").
std::string headerText(const CString& text, std::string_view keyword);

}  // namespace tool
