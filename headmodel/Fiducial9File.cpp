#include "headmodel/Fiducial9File.h"

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
  if (archive.IsStoring()) {
    for (const int value : m_ints) {
      archive << value;
    }
    for (const LONGLONG value : m_tail) {
      archive << value;
    }
  } else {
    for (int& value : m_ints) {
      archive >> value;
    }
    for (LONGLONG& value : m_tail) {
      archive >> value;
    }
  }
  return 1;
}
