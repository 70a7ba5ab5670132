#include "headmodel/FiduciaryPt9File.h"

CFiduciaryPt9File::CFiduciaryPt9File() = default;
CFiduciaryPt9File::CFiduciaryPt9File(const CFiduciaryPt9File&) = default;
CFiduciaryPt9File& CFiduciaryPt9File::operator=(const CFiduciaryPt9File&) = default;
CFiduciaryPt9File::CFiduciaryPt9File(CFiduciaryPt9File&&) noexcept = default;
CFiduciaryPt9File& CFiduciaryPt9File::operator=(CFiduciaryPt9File&&) noexcept = default;
CFiduciaryPt9File::~CFiduciaryPt9File() = default;

int CFiduciaryPt9File::serialize(CArchive& archive) {
  if (archive.IsStoring()) {
    for (const double value : m_values) {
      archive << value;
    }
    archive << m_value16 << m_value17;
    for (const double value : m_values2) {
      archive << value;
    }
    archive << m_int0 << m_int1 << m_int2 << m_value18 << m_int3 << m_label;
  } else {
    for (double& value : m_values) {
      archive >> value;
    }
    archive >> m_value16 >> m_value17;
    for (double& value : m_values2) {
      archive >> value;
    }
    archive >> m_int0 >> m_int1 >> m_int2 >> m_value18 >> m_int3 >> m_label;
  }
  return 1;
}
