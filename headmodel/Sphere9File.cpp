#include "headmodel/Sphere9File.h"

CSphere9File::CSphere9File() = default;
CSphere9File::CSphere9File(const CSphere9File&) = default;
CSphere9File& CSphere9File::operator=(const CSphere9File&) = default;
CSphere9File::CSphere9File(CSphere9File&&) noexcept = default;
CSphere9File& CSphere9File::operator=(CSphere9File&&) noexcept = default;
CSphere9File::~CSphere9File() = default;

int CSphere9File::serialize(CArchive& archive) {
  if (archive.IsStoring()) {
    for (const double coordinate : m_center) {
      archive << coordinate;
    }
    archive << m_radius << m_auxInt[0] << m_auxInt[1] << m_auxText;
  } else {
    for (double& coordinate : m_center) {
      archive >> coordinate;
    }
    archive >> m_radius >> m_auxInt[0] >> m_auxInt[1] >> m_auxText;
  }
  return 1;
}
