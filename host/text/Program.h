// Running another program, without a shell.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace host {

// Where a program of that name (without its system's ending) lies: in the first folder of PATH that has it.
// Folders that PATH names relative to the current one are left out, so that no program comes from among
// files that are only looked at. Empty when there is none.
std::filesystem::path programNamed(const std::string& name);

// The folder that this program itself stands in. Throws std::filesystem::filesystem_error when the system
// does not tell.
std::filesystem::path ownFolder();

struct ProgramEnd {
  int code = 0;        // what it returned
  std::string ending;  // UTF-8: how else it ended, "signal 9"; empty when it returned
  std::string said;    // its output and error output, in order, of which it may be as long as it likes
};

// Runs it with the arguments as they are, no input, and waits. What a user's signal ends in between (see
// host/text/EndingHeldBack.h) ends it too. Throws std::runtime_error when it cannot be started.
ProgramEnd runProgram(const std::filesystem::path& program,
                      const std::vector<std::filesystem::path>& arguments);

}  // namespace host
