#include "host/dipoles/DipoleFilter.h"

namespace host {

// Asked so that every comparison with what is not a number fails.
bool ValueLimits::pass(double value) const {
  return (!least || value >= *least) && (!most || value <= *most);
}

bool DipoleFilter::passes(const CDipoles& dipole) const {
  return fitError.pass(dipole.m_fitError) && moment.pass(dipole.m_moment) && latency.pass(dipole.m_latency);
}

std::vector<int> passingSlots(const CDipoleFace& set, const DipoleFilter& filter) {
  std::vector<int> slots;
  for (int slot = 0; slot < set.m_totalDipoles; ++slot) {
    const CDipoleszq* dipole = set.m_dipoles[slot];
    if (dipole != nullptr && filter.passes(*dipole))
      slots.push_back(slot);
  }
  return slots;
}

}  // namespace host
