// Where the program starts.

#include <string>
#include <vector>

#include "tool/Console.h"
#include "tool/Program.h"

int main(int argc, char** argv) {
  tool::prepareConsole();
  return tool::runProgram(std::vector<std::string>(argv + (argc > 0 ? 1 : 0), argv + argc));
}
