// Writes the manual page and the completions of the program into a folder: dipole.1, dipole.bash, _dipole.

#include <cstdlib>
#include <exception>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <stdexcept>

#include "tool/Program.h"
#include "tool/manual/Completion.h"
#include "tool/manual/ManPage.h"

namespace {

void write(const std::filesystem::path& path, const std::string& text) {
  std::ofstream file(path, std::ios::binary);
  if (!(file << text) || !file.flush()) {
    throw std::runtime_error("cannot write " + path.string());
  }
}

}  // namespace

int main(int argc, char** argv) {
  try {
    if (argc != 2) {
      throw std::runtime_error("needs the folder to write to");
    }
    const std::filesystem::path folder = argv[1];
    const tool::Program program;
    write(folder / "dipole.1", tool::manPage(program.app()));
    write(folder / "dipole.bash", tool::bashCompletion(program.app()));
    write(folder / "_dipole", tool::zshCompletion(program.app()));
    return EXIT_SUCCESS;
  } catch (const std::exception& error) {
    std::cerr << "dipole_manual: " << error.what() << '\n';
    return EXIT_FAILURE;
  }
}
