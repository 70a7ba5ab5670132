#include "host/panes/ShownDipoles.h"

#include <algorithm>
#include <cmath>

#include "host/dipoles/DipoleScene.h"
#include "host/dipoles/DipoleVisibility.h"
#include "host/head/HeadBoxOf.h"
#include "host/head/Limits.h"
#include "host/panes/SliceRule.h"
#include "host/picture/SliceCaption.h"
#include "host/text/Numbers.h"

namespace host {

namespace {

Vector3 middleOf(const PaneContents& contents) {
  if (contents.head.isRegistered()) {
    const HeadBox box = headBoxOf(contents.head);
    return (box.low + box.high) * 0.5;
  }
  const double(&centre)[3] = contents.dipoles.m_sphereCtf.m_center;
  const Vector3 place{centre[0], centre[1], centre[2]};
  return isPlace(place) ? place : Vector3{};
}

}  // namespace

std::vector<int> shownSlots(const PaneContents& contents) {
  std::vector<int> slots;
  for (int slot = 0; slot < contents.dipoles.m_totalDipoles; ++slot) {
    const CDipoleszq* dipole = contents.dipoles.m_dipoles[slot];
    if (dipole != nullptr &&
        visibilityOf(contents.dipoles, slot, *dipole, contents.settings) == Visibility::shown) {
      slots.push_back(slot);
    }
  }
  return slots;
}

int strongestSlot(const PaneContents& contents) {
  int strongest = -1;
  double most = -1.0;
  for (const int slot : shownSlots(contents)) {
    const Vector3 place = placeOf(*contents.dipoles.m_dipoles[slot]);
    if ((std::max)({std::abs(place.x), std::abs(place.y), std::abs(place.z)}) > headReach) {
      continue;
    }
    const double moment = contents.dipoles.m_dipoles[slot]->m_moment;
    const double strength = std::isfinite(moment) ? std::abs(moment) : 0.0;
    if (strength > most) {
      most = strength;
      strongest = slot;
    }
  }
  return strongest;
}

ViewAngles sideOfDipoles(const PaneContents& contents) {
  constexpr double clearly = 15.0;  // mm from the middle
  constexpr ViewAngles leftFront{35.0, 20.0};
  const std::vector<int> slots = shownSlots(contents);
  if (slots.empty()) {
    return leftFront;
  }
  Vector3 sum;
  for (const int slot : slots) {
    sum = sum + placeOf(*contents.dipoles.m_dipoles[slot]);
  }
  const Vector3 aside = sum * (1.0 / static_cast<double>(slots.size())) - middleOf(contents);
  if (std::hypot(aside.x, aside.z) < clearly) {
    return leftFront;
  }
  if (std::abs(aside.x) >= std::abs(aside.z)) {
    return anglesOf(aside.x > 0.0 ? Standpoint::left : Standpoint::right);
  }
  return anglesOf(aside.z > 0.0 ? Standpoint::front : Standpoint::back);
}

std::string toleranceText(const PaneContents& contents) {
  const double tolerance = toleranceOf(contents);
  const std::string text = std::isfinite(tolerance)
                               ? "dipoles within " + formatMm(tolerance) + " mm of the slices"
                               : "dipoles at any distance from the slices";
  return text + (contents.settings.moduleSlab
                     ? "; on axial ones all from the level of the ears up to the slice"
                     : "");
}

std::vector<std::string> filterTexts(const PaneContents& contents) {
  std::vector<std::string> texts = filterTexts(contents.settings.filter, contents.dipoles.m_momentInNAm != 0);
  if (contents.dipoles.m_showDipoleLatencySelected != 0) {
    const LatencyWindow& window = contents.settings.latency;
    texts.push_back(limitText("latency", " ms", {window.from, window.to}));
  }
  return texts;
}

}  // namespace host
