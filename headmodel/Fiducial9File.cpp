#include "headmodel/Fiducial9File.h"

#include "headmodel/ArchiveTransfer.h"

CFiducial9File::CFiducial9File() = default;
CFiducial9File::CFiducial9File(const CFiducial9File&) = default;
CFiducial9File& CFiducial9File::operator=(const CFiducial9File&) = default;
CFiducial9File::CFiducial9File(CFiducial9File&&) noexcept = default;
CFiducial9File& CFiducial9File::operator=(CFiducial9File&&) noexcept = default;
CFiducial9File::~CFiducial9File() = default;

int CFiducial9File::serialize(CArchive& archive) {
  for (CFiduciaryPtzq& point : m_points) {
    point.serialize(archive);
  }
  const ArchiveTransfer transfer(archive);
  transfer(m_ints, m_tail);
  return 1;
}
