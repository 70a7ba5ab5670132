// A dipole file that a user named, and the format it is read as.
#pragma once

#include <filesystem>
#include <memory>
#include <string>

#include "host/exchange/FileKind.h"
#include "host/text/TemporaryFolder.h"

namespace tool {

struct InputFile {
  std::string name;  // as the user wrote it; "-" is standard input
  host::DipoleFormat format = host::DipoleFormat::ctf;
  // Where the bytes stand that can be read only once; null: in the file of that name.
  std::shared_ptr<const host::TemporaryFolder> copy;

  // Where to read it.
  std::filesystem::path path() const;
};

// Copies what can be read only once, such as standard input and pipes, and leaves other files where they are.
// Throws std::runtime_error when there is more than 256 MiB of it.
void copyStream(InputFile& file);

}  // namespace tool
