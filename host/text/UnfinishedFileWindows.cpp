#include <system_error>
#include <utility>

#include "host/text/UnfinishedFile.h"

namespace host {

namespace {

namespace fs = std::filesystem;

}  // namespace

UnfinishedFile::UnfinishedFile(fs::path path) : m_path(std::move(path)) {}

UnfinishedFile::~UnfinishedFile() {
  std::error_code error;
  if (!m_isKept) {
    fs::remove(m_path, error);
  }
}

void UnfinishedFile::become(const fs::path& target) {
  const fs::file_status old = fs::status(target);
  if (fs::exists(old)) {
    fs::permissions(m_path, old.permissions());
  }
  fs::rename(m_path, target);
  m_isKept = true;
}

std::string whyReadOnly(const fs::path& /*path*/) {
  return {};
}

std::string unfinishedPrefix() {
  return "dipole-";
}

}  // namespace host
