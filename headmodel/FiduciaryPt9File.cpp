#include "headmodel/FiduciaryPt9File.h"

#include "headmodel/ArchiveTransfer.h"

CFiduciaryPt9File::CFiduciaryPt9File() = default;
CFiduciaryPt9File::CFiduciaryPt9File(const CFiduciaryPt9File&) = default;
CFiduciaryPt9File& CFiduciaryPt9File::operator=(const CFiduciaryPt9File&) = default;
CFiduciaryPt9File::CFiduciaryPt9File(CFiduciaryPt9File&&) noexcept = default;
CFiduciaryPt9File& CFiduciaryPt9File::operator=(CFiduciaryPt9File&&) noexcept = default;
CFiduciaryPt9File::~CFiduciaryPt9File() = default;

int CFiduciaryPt9File::serialize(CArchive& archive) {
  const ArchiveTransfer transfer(archive);
  transfer(m_values, m_value16, m_value17, m_values2, m_int0, m_int1, m_int2, m_value18, m_int3, m_label);
  return 1;
}
