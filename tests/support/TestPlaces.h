// Where tests find files that belong to them: UTF-8 and absolute, folders with a separator at the end. Under
// Wine they stand on drive Z.
#pragma once

#include <string>

std::string testFolder();      // tests/
std::string examplesFolder();  // examples/
std::string exampleHead();     // a T1 head, the file itself
