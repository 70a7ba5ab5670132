#include "host/dipoles/DipoleVisibility.h"

#include "host/dipoles/DipoleScene.h"

namespace host {

namespace {

bool isInLatencyWindow(const CDipoleFace3On3DView& set, const CDipoleszq& dipole, bool isLatencyUnknown,
                       const ViewSettings& settings) {
  return set.m_showDipoleLatencySelected == 0 ||
         (!isLatencyUnknown && dipole.m_latency >= settings.latency.from &&
          dipole.m_latency <= settings.latency.to);
}

}  // namespace

Visibility visibilityOf(const CDipoleFace3On3DView& set, int slot, const CDipoleszq& dipole,
                        const ViewSettings& settings) {
  if (dipole.m_display != 1 || !isSwitchedOn(set, slot, dipole)) {
    return Visibility::switchedOff;
  }
  const std::uint8_t unknown = settings.unknown == nullptr ? std::uint8_t{0} : settings.unknown->of(dipole);
  const bool isLatencyUnknown = (unknown & static_cast<std::uint8_t>(DipoleValue::latency)) != 0;
  if (!settings.filter.passes(dipole, unknown) ||
      !isInLatencyWindow(set, dipole, isLatencyUnknown, settings)) {
    return Visibility::filtered;
  }
  return isPlace(placeOf(dipole)) ? Visibility::shown : Visibility::nowhere;
}

void VisibleCount::add(Visibility visibility) {
  ++total;
  switch (visibility) {
    case Visibility::shown:
      ++shown;
      return;
    case Visibility::switchedOff:
      ++switchedOff;
      return;
    case Visibility::filtered:
      ++filtered;
      return;
    case Visibility::nowhere:
      ++nowhere;
      return;
  }
}

VisibleCount countVisible(const CDipoleFace3On3DView& set, const ViewSettings& settings) {
  VisibleCount count;
  for (int slot = 0; slot < set.m_totalDipoles; ++slot) {
    if (const CDipoleszq* dipole = set.m_dipoles[slot]) {
      count.add(visibilityOf(set, slot, *dipole, settings));
    }
  }
  return count;
}

}  // namespace host
