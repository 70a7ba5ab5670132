#include "tests/host/audit/Audited.h"

#include "host/text/PathText.h"

std::string Audited::label(int slot) const {
  return host::utf8Of(dipole(slot).m_label);
}
