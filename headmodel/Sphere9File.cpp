#include "headmodel/Sphere9File.h"

#include "headmodel/ArchiveTransfer.h"

CSphere9File::CSphere9File() = default;
CSphere9File::CSphere9File(const CSphere9File&) = default;
CSphere9File& CSphere9File::operator=(const CSphere9File&) = default;
CSphere9File::CSphere9File(CSphere9File&&) noexcept = default;
CSphere9File& CSphere9File::operator=(CSphere9File&&) noexcept = default;
CSphere9File::~CSphere9File() = default;

int CSphere9File::serialize(CArchive& archive) {
  const ArchiveTransfer transfer(archive);
  transfer(m_center, m_radius, m_auxInt, m_auxText);
  return 1;
}
